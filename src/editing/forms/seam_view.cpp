#include "editing/forms/seam_view.h"

#include <algorithm>
#include <utility>

#include "base/forms/theme.h"
#include <QPainter>

#include "editing/forms/range_colours.h"
#include "song/song_position.h"

namespace tracksmith::forms {
namespace {

QString MeasureText(const song::TimeMap& map, std::int32_t tick) {
    return QStringLiteral("%1").arg(song::GetMeasureBeatFromSongPos(map, tick).measure, 3, 10,
                                    QLatin1Char('0'));
}

} // namespace

SeamView::SeamView(ChannelName nameOf, QWidget* parent)
    : QWidget(parent), nameOf_(std::move(nameOf)) {
    setObjectName(QStringLiteral("SeamView"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void SeamView::ShowSeam(editing::SeamPicture picture, const song::TimeMap& map, const QString& note,
                        const QColor& colour) {
    picture_ = std::move(picture);
    colour_ = colour;
    before_ = MeasureText(map, picture_.from);
    at_ = MeasureText(map, picture_.seam) + u' ' + note;
    rows_.clear();
    for (std::size_t index = 0; index < picture_.notes.size(); ++index) {
        const int channel = picture_.notes[index].channel;
        if (rows_.empty() || rows_.back().channel != channel) {
            rows_.push_back({channel, nameOf_(static_cast<std::size_t>(channel)), index, 0});
        }
        ++rows_.back().notes;
    }
    beats_.clear();
    const auto& zone = map.timeZones.at(song::ZoneOfTick(map, picture_.from));
    const std::int32_t beat = song::TicksPerBeat(map, zone);
    for (std::int32_t tick = picture_.from; tick < picture_.to; tick += beat) {
        beats_.push_back(tick);
    }
    update();
}

void SeamView::Clear() {
    picture_ = {};
    rows_.clear();
    beats_.clear();
    update();
}

void SeamView::ShowPlace(std::int32_t tick) {
    if (tick != place_) {
        place_ = tick;
        update();
    }
}

QSize SeamView::sizeHint() const {
    return {fontMetrics().averageCharWidth() * 60, fontMetrics().height() * 12};
}

QSize SeamView::minimumSizeHint() const {
    return {fontMetrics().averageCharWidth() * 40, fontMetrics().height() * 6};
}

QRectF SeamView::Area() const {
    const double line = fontMetrics().height() * 1.4;
    const double names = fontMetrics().averageCharWidth() * 22.0;
    return QRectF(rect()).adjusted(names, line, -Gap(), -Gap() / 2.0);
}

double SeamView::X(std::int32_t tick) const {
    const QRectF area = Area();
    const double length = std::max(1, picture_.to - picture_.from);
    return area.left() + area.width() * (tick - picture_.from) / length;
}

void SeamView::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Border(palette()));
    painter.setBrush(palette().base());
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), CornerRadius(),
                            CornerRadius());
    painter.setRenderHint(QPainter::Antialiasing, false);
    if (picture_.to <= picture_.from) {
        return;
    }
    const QRectF area = Area();
    const double most = fontMetrics().height() * 2.0;
    const double height =
        std::min(most, area.height() / std::max<double>(1, static_cast<double>(rows_.size())));
    for (const std::int32_t beat : beats_) {
        painter.fillRect(QRectF(X(beat), area.top(), 1, area.height()), Border(palette()));
    }
    for (std::size_t index = 0; index < rows_.size(); ++index) {
        PaintRow(
            painter, rows_[index],
            {area.left(), area.top() + static_cast<double>(index) * height, area.width(), height});
    }
    PaintRuler(painter);
}

void SeamView::PaintRow(QPainter& painter, const Row& row, const QRectF& area) const {
    const double left = Gap();
    const QRectF number(left, area.top() + 2, fontMetrics().averageCharWidth() * 3.5,
                        std::max(2.0, area.height() - 4));
    const QColor colour = ChannelColour(row.channel, palette());
    painter.fillRect(number, colour);
    if (area.height() >= fontMetrics().height()) {
        painter.setPen(palette().color(QPalette::Base));
        painter.drawText(number, Qt::AlignCenter, QString::number(row.channel + 1));
        painter.setPen(palette().color(QPalette::Text));
        const QRectF name(number.right() + Gap() / 2.0, area.top(),
                          area.left() - number.right() - Gap(), area.height());
        painter.drawText(
            name, Qt::AlignVCenter | Qt::AlignLeft,
            fontMetrics().elidedText(row.name, Qt::ElideRight, static_cast<int>(name.width())));
    }
    for (std::size_t index = 0; index < row.notes; ++index) {
        PaintNote(painter, picture_.notes[row.firstNote + index], area);
    }
}

void SeamView::PaintNote(QPainter& painter, const editing::SeamNote& note,
                         const QRectF& area) const {
    constexpr double kBar = 3;
    const double left = std::max(X(note.start), area.left());
    const double right = std::min(X(note.end), area.right());
    const double inset = std::max(1.0, area.height() * 0.25);
    const QRectF body(left, area.top() + inset, std::max(2.0, right - left - 1),
                      std::max(1.0, area.height() - 2 * inset));
    QColor colour = ChannelColour(note.channel, palette());
    colour.setAlphaF(0.8F);
    painter.fillRect(body, colour);
    if (note.ended) {
        painter.fillRect(
            QRectF(body.right() - kBar, area.top() + inset / 2, kBar, area.height() - inset),
            AmberColour(palette()));
    }
    if (note.begunAgain) {
        const double half = body.height() / 2 + 2;
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(GreenColour(palette()));
        painter.drawPolygon(QPolygonF{{left, body.center().y() - half},
                                      {left + half, body.center().y()},
                                      {left, body.center().y() + half}});
        painter.setRenderHint(QPainter::Antialiasing, false);
    }
}

void SeamView::PaintRuler(QPainter& painter) const {
    const QRectF area = Area();
    const double seam = X(picture_.seam);
    painter.setPen(DimText(palette()));
    painter.drawText(QRectF(area.left() + 3, 0, seam - area.left(), area.top()),
                     Qt::AlignVCenter | Qt::AlignLeft, before_);
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(QRectF(seam + Gap(), 0, area.right() - seam, area.top()),
                     Qt::AlignVCenter | Qt::AlignLeft, at_);
    painter.fillRect(QRectF(seam - 1, 2, 2, area.bottom()), colour_);
    if (place_ >= picture_.from && place_ < picture_.to) {
        painter.fillRect(QRectF(X(place_), area.top(), 2, area.height()),
                         palette().color(QPalette::BrightText));
    }
}

} // namespace tracksmith::forms
