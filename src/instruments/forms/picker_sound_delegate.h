#pragma once

#include "base/text.h"
#include <QString>
#include <QStyledItemDelegate>

namespace tracksmith::forms {

/// Paints the rows of a picker's voices: the star of favourites, the name with what was searched
/// underlined, a remark behind it, and which channels of the song play the voice.
class PickerSoundDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    PickerSoundDelegate(Language language, QObject* parent)
        : QStyledItemDelegate(parent), language_(language) {}

    /// What is underlined in names; several words are looked for one by one.
    void SetSearch(const QString& words) { words_ = words; }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

signals:
    /// The star of a row was clicked.
    void StarClicked(int row);

protected:
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override;

private:
    void PaintName(QPainter& painter, const QStyleOptionViewItem& option,
                   const QModelIndex& index) const;
    void Underline(QPainter& painter, const QRect& place, const QString& name) const;
    int PaintChannels(QPainter& painter, const QStyleOptionViewItem& option,
                      const QString& channels) const;

    Language language_;
    QString words_;
};

} // namespace tracksmith::forms
