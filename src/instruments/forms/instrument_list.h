#pragma once

#include <functional>
#include <string_view>

#include "base/text.h"
#include <QWidget>

#include "instruments/catalogue.h"

class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;

namespace tracksmith::forms {

/// The catalogue by maker and model with a line to search it. The arrow keys and Enter work from
/// the search line too.
class InstrumentList : public QWidget {
    Q_OBJECT

public:
    /// What is shown beside an instrument, for example how many voices are known.
    using Remark = std::function<QString(const instruments::Instrument&)>;

    /// `treeName` becomes the list's object name.
    InstrumentList(const char* treeName, const Remark& remark, Language language,
                   QWidget* parent = nullptr);

    /// Chooses and shows the instrument of this name; none when the catalogue lacks it.
    void SetInstrument(std::string_view name);
    /// The chosen instrument, null for none.
    const instruments::Instrument* Instrument() const;

signals:
    /// The user has chosen another instrument.
    void InstrumentChanged();
    /// The user wants the chosen instrument: Enter or a double click.
    void InstrumentAccepted();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void AddInstruments(const Remark& remark);
    void Search(const QString& words);
    void MoveBy(int rows);
    void Choose(QTreeWidgetItem* item);

    QLineEdit* search_;
    QTreeWidget* tree_;
};

} // namespace tracksmith::forms
