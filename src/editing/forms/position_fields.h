#pragma once

#include <cstdint>

#include "base/text.h"
#include <QWidget>

#include "editing/range_position.h"
#include "song/time_map_record.h"

class QLabel;
class QToolButton;

namespace tracksmith::forms {

class NumberField;

/// A place in the song as measure and beat, with a button that takes it from the music's place.
class PositionFields : public QWidget {
    Q_OBJECT

public:
    /// The parts are named after `name`: "SourceFrom" makes "E_SourceFromMeasure",
    /// "E_SourceFromBeat" and "Btn_SourceFromPlayhead".
    PositionFields(const char* name, const tracksmith::Text& caption, QWidget* parent);

    editing::PositionText Text() const;
    /// Shows what was typed elsewhere.
    void SetText(const editing::PositionText& text);
    /// Shows the beat in which `tick` lies.
    void ShowTick(const song::TimeMap& map, std::int64_t tick);
    /// Moves the place by measures or beats; an unreadable one becomes the first of the song.
    void Step(const song::TimeMap& map, int measures, int beats);
    /// Marks the fields as faulty.
    void SetFaulty(bool faulty);
    void Retranslate(Language language);

signals:
    void Edited();
    void Stepped(int measures, int beats);
    void PlayheadPressed();

private:
    void TakeWhole();

    tracksmith::Text text_;
    QLabel* caption_;
    NumberField* measure_;
    NumberField* beat_;
    QToolButton* playhead_;
};

} // namespace tracksmith::forms
