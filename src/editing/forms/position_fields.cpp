#include "editing/forms/position_fields.h"

#include <algorithm>
#include <string>
#include <utility>

#include "base/forms/labels.h"
#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QToolButton>
#include <QVBoxLayout>

#include "editing/forms/number_field.h"
#include "editing/forms/texts.h"
#include "mixer/forms/strip_colours.h"
#include "song/song_position.h"

namespace tracksmith::forms {
namespace {

// The music's place: a handle with a line.
QIcon PlayheadIcon(const QPalette& palette) {
    constexpr int kSide = 64;
    QPixmap pixmap(kSide, kSide);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath path;
    path.addPolygon(QPolygonF{{14, 8}, {50, 8}, {50, 18}, {36, 32}, {28, 32}, {14, 18}});
    path.addRect(29, 28, 6, 30);
    path.setFillRule(Qt::WindingFill);
    painter.fillPath(path, palette.color(QPalette::ButtonText));
    return {pixmap};
}

std::int64_t BeatsIn(const song::TimeMap& map, std::int64_t tick) {
    const auto& zone = map.timeZones.at(song::ZoneOfTick(map, tick));
    return std::max<std::int64_t>(
        1, song::TicksInMeasureAtPos(map, tick) / song::TicksPerBeat(map, zone));
}

} // namespace

PositionFields::PositionFields(const char* name, const tracksmith::Text& caption, QWidget* parent)
    : QWidget(parent), text_(caption), caption_(NewCaption(name, this)) {
    const QString stem = QLatin1String(name);
    caption_->setObjectName(QStringLiteral("Lbl_") + stem);
    measure_ = new NumberField(QStringLiteral("E_") + stem + QStringLiteral("Measure"), 1, this);
    beat_ = new NumberField(QStringLiteral("E_") + stem + QStringLiteral("Beat"), 2, this);
    playhead_ = new QToolButton(this);
    playhead_->setObjectName(QStringLiteral("Btn_") + stem + QStringLiteral("Playhead"));
    playhead_->setIcon(PlayheadIcon(palette()));
    playhead_->setFocusPolicy(Qt::StrongFocus);
    auto* fields = new QHBoxLayout;
    fields->setSpacing(Gap() / 2);
    fields->addWidget(measure_);
    fields->addWidget(new QLabel(QStringLiteral(":")));
    fields->addWidget(beat_);
    fields->addWidget(playhead_);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Gap() / 2);
    column->addWidget(caption_);
    column->addLayout(fields);
    for (NumberField* field : {measure_, beat_}) {
        connect(field, &NumberField::Edited, this, &PositionFields::TakeWhole);
    }
    connect(measure_, &NumberField::Stepped, this, [this](int steps) { emit Stepped(steps, 0); });
    connect(beat_, &NumberField::Stepped, this, [this](int steps) { emit Stepped(0, steps); });
    connect(playhead_, &QToolButton::clicked, this, &PositionFields::PlayheadPressed);
}

// "8:04" typed or pasted into the first field fills both.
void PositionFields::TakeWhole() {
    const std::string typed = measure_->Text().toStdString();
    if (typed.find_first_of(":.") != std::string::npos) {
        editing::PositionText text = editing::SplitPosition(typed);
        if (text.beat.empty()) {
            text.beat = beat_->Text().toStdString(); // still to be typed
        }
        SetText(text);
        beat_->setFocus();
        beat_->selectAll();
    }
    emit Edited();
}

editing::PositionText PositionFields::Text() const {
    return {measure_->Text().toStdString(), beat_->Text().toStdString()};
}

void PositionFields::SetText(const editing::PositionText& text) {
    measure_->SetText(ToQString(text.measure));
    beat_->SetText(ToQString(text.beat));
}

void PositionFields::ShowTick(const song::TimeMap& map, std::int64_t tick) {
    const auto place = song::GetMeasureBeatFromSongPos(map, tick);
    measure_->SetNumber(place.measure);
    beat_->SetNumber(place.beat);
}

void PositionFields::Step(const song::TimeMap& map, int measures, int beats) {
    const editing::PositionText text = Text();
    std::int64_t measure = editing::FieldNumber(text.measure).value_or(1) + measures;
    std::int64_t beat = editing::FieldNumber(text.beat).value_or(1) + beats;
    measure = std::clamp<std::int64_t>(measure, 1, map.lengthMeasure);
    const auto startOf = [&](std::int64_t number) {
        return std::max(song::MTCToSongPosition(map, static_cast<std::int32_t>(number), 1, 0), 0);
    };
    if (beat < 1 && measure == 1) {
        beat = 1;
    } else if (beat < 1) {
        --measure;
        beat = BeatsIn(map, startOf(measure));
    } else if (beat > BeatsIn(map, startOf(measure))) {
        measure += beats > 0 ? 1 : 0;
        beat = beats > 0 ? 1 : BeatsIn(map, startOf(measure));
    }
    measure_->SetNumber(measure);
    beat_->SetNumber(beat);
    emit Edited();
}

void PositionFields::SetFaulty(bool faulty) {
    QPalette marked = palette();
    if (faulty) {
        marked.setColor(QPalette::Text, MuteColour(marked));
    }
    measure_->setPalette(marked);
    beat_->setPalette(marked);
}

void PositionFields::Retranslate(Language language) {
    const QString caption = InLanguage(text_, language);
    caption_->setText(caption);
    const QString plain = PlainMenuText(caption);
    measure_->setAccessibleName(range_texts::MeasureField(plain, language));
    beat_->setAccessibleName(range_texts::BeatField(plain, language));
    playhead_->setAccessibleName(range_texts::PlayheadButton(plain, language));
    playhead_->setToolTip(InLanguage(range_texts::kPlayheadHint, language));
}

} // namespace tracksmith::forms
