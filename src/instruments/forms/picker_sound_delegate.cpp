#include "instruments/forms/picker_sound_delegate.h"

#include <cmath>

#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QMouseEvent>
#include <QPainter>

#include "instruments/forms/picker_sounds.h"
#include "instruments/forms/picker_texts.h"

namespace tracksmith::forms {
namespace {

constexpr double kRemarkSize = 0.88;
// A colour that stands for favourites on dark and on light ground.
constexpr QRgb kStarColour = 0xFFE6B450;
constexpr QRgb kStarColourOnLight = 0xFF8A5A00;

bool IsSelected(const QStyleOptionViewItem& option) {
    return (option.state & QStyle::State_Selected) != 0;
}

QColor TextColour(const QStyleOptionViewItem& option, bool dim) {
    if (IsSelected(option)) {
        return option.palette.color(QPalette::HighlightedText);
    }
    return dim ? DimText(option.palette) : option.palette.color(QPalette::Text);
}

QPolygonF StarShape(const QRectF& place) {
    constexpr int kPoints = 10;
    constexpr double kInner = 0.42;
    constexpr double kTurn = 0.62831853071795865; // a tenth of a circle
    QPolygonF shape;
    const double radius = place.height() / 2;
    for (int i = 0; i < kPoints; ++i) {
        const double length = radius * (i % 2 == 0 ? 1 : kInner);
        const double angle = kTurn * i;
        shape << place.center() + QPointF(std::sin(angle), -std::cos(angle)) * length;
    }
    return shape;
}

void PaintStar(QPainter& painter, const QStyleOptionViewItem& option, bool filled) {
    const double size = option.fontMetrics.height() * 0.8;
    QRectF place(0, 0, size, size);
    place.moveCenter(QRectF(option.rect).center());
    const QColor star = IsSelected(option)       ? TextColour(option, false)
                        : IsDark(option.palette) ? QColor::fromRgba(kStarColour)
                                                 : QColor::fromRgba(kStarColourOnLight);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(filled ? star : TextColour(option, true), 1));
    painter.setBrush(filled ? QBrush(star) : QBrush(Qt::NoBrush));
    painter.drawPolygon(StarShape(place));
}

} // namespace

void PickerSoundDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                const QModelIndex& index) const {
    if (index.column() != PickerSounds::Star && index.column() != PickerSounds::Name) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    painter->save();
    const auto ground = IsSelected(option) ? QPalette::Highlight
                        : (option.features & QStyleOptionViewItem::Alternate) != 0
                            ? QPalette::AlternateBase
                            : QPalette::Base;
    painter->fillRect(option.rect, option.palette.color(ground));
    if (index.column() == PickerSounds::Star) {
        PaintStar(*painter, option, index.data(PickerSounds::FavouriteRole).toBool());
    } else {
        PaintName(*painter, option, index);
    }
    painter->restore();
}

void PickerSoundDelegate::PaintName(QPainter& painter, const QStyleOptionViewItem& option,
                                    const QModelIndex& index) const {
    QRect place = option.rect.adjusted(Gap() / 2, 0, -Gap() / 2, 0);
    const QString channels = index.data(PickerSounds::ChannelsRole).toString();
    if (!channels.isEmpty()) {
        place.setRight(PaintChannels(painter, option, channels) - Gap() / 2);
    }
    const QString name =
        option.fontMetrics.elidedText(index.data().toString(), Qt::ElideRight, place.width());
    painter.setFont(option.font);
    painter.setPen(TextColour(option, false));
    painter.drawText(place, Qt::AlignVCenter, name);
    Underline(painter, place, name);
    place.setLeft(place.left() + option.fontMetrics.horizontalAdvance(name) + Gap() / 2);
    const QFont small = ScaledFont(option.font, kRemarkSize);
    painter.setFont(small);
    painter.setPen(TextColour(option, true));
    painter.drawText(place, Qt::AlignVCenter,
                     QFontMetrics(small).elidedText(index.data(PickerSounds::RemarkRole).toString(),
                                                    Qt::ElideRight, place.width()));
}

void PickerSoundDelegate::Underline(QPainter& painter, const QRect& place,
                                    const QString& name) const {
    const QFontMetrics metrics(painter.font());
    const int y = place.center().y() + metrics.height() / 2;
    painter.setPen(QPen(painter.pen().color(), 2));
    for (const QString& word : words_.split(u' ', Qt::SkipEmptyParts)) {
        const auto at = name.indexOf(word, 0, Qt::CaseInsensitive);
        if (at >= 0) {
            const int from = place.left() + metrics.horizontalAdvance(name.left(at));
            painter.drawLine(from, y, from + metrics.horizontalAdvance(name.mid(at, word.size())),
                             y);
        }
    }
}

// Returns the left edge of what was painted at the right.
int PickerSoundDelegate::PaintChannels(QPainter& painter, const QStyleOptionViewItem& option,
                                       const QString& channels) const {
    const QString text = InLanguage(picker_texts::kInSong, language_).arg(channels);
    const QFont small = ScaledFont(option.font, kRemarkSize);
    const int width = QFontMetrics(small).horizontalAdvance(text);
    painter.setFont(small);
    painter.setPen(IsSelected(option) ? TextColour(option, false) : Accent(option.palette));
    painter.drawText(option.rect.adjusted(0, 0, -Gap() / 2, 0), Qt::AlignVCenter | Qt::AlignRight,
                     text);
    return option.rect.right() - Gap() / 2 - width;
}

bool PickerSoundDelegate::editorEvent(QEvent* event, QAbstractItemModel* model,
                                      const QStyleOptionViewItem& option,
                                      const QModelIndex& index) {
    if (index.column() == PickerSounds::Star && event->type() == QEvent::MouseButtonRelease) {
        emit StarClicked(index.row());
        return true;
    }
    return QStyledItemDelegate::editorEvent(event, model, option, index);
}

} // namespace tracksmith::forms
