#include <algorithm>
#include <cstdint>
#include <string>

#include "base/forms/qt_text.h"
#include "base/system/file_io.h"
#include <QCheckBox>
#include <QLabel>
#include <QTreeView>

#include "app/diff/difference_json.h"
#include "app/forms/changes/changes_form.h"
#include "app/forms/changes/changes_watch.h"
#include "app/forms/changes/texts.h"
#include "app/forms/overview/overview_widget.h"
#include "app/forms/settings/file_chooser.h"
#include "app/forms/transport/session_signals.h"
#include "song/song_position.h"

// What the window of the changes does.

namespace tracksmith::forms {

using diff::Difference;

void ChangesForm::GoThere() {
    if (const Difference* row = Chosen()) {
        session_.MoveToTick(row->tickAfter);
    }
}

// The first row with a mark in the measure from `tick` on.
void ChangesForm::ChooseAt(std::int32_t tick) {
    const song::Song& song = session_.Session().Song();
    const std::int64_t end =
        tick + overview_->MeasuresPerColumn() * song::TicksInMeasureAtPos(song, tick);
    for (const Difference* row : model_->Shown()) {
        const auto mark = std::ranges::lower_bound(row->ticks, tick);
        if (mark != row->ticks.end() && *mark < end) {
            tree_->setCurrentIndex(model_->IndexOf(*row));
            return;
        }
    }
}

void ChangesForm::SetLoopHere(bool on) {
    session::Transport& controls = session_.Controls();
    if (!on) {
        if (formerLoop_.endTick > formerLoop_.startTick) {
            controls.SetLoop(formerLoop_.startTick, formerLoop_.endTick);
        }
        controls.SetLooping(formerLoop_.on);
        formerLoop_ = {};
        return;
    }
    const Difference* row = Chosen();
    if (row == nullptr) {
        return;
    }
    if (sender() == loopHere_) {
        formerLoop_ = controls.Loop().value_or(session::Transport::LoopRange{});
    }
    const song::Song& song = session_.Session().Song();
    const auto measure =
        static_cast<std::int32_t>(song::GetMeasureBeatFromSongPos(song, row->tickAfter).measure);
    const std::int32_t start = song::MTCToSongPosition(song, measure, 1, 0);
    const std::int32_t end = song::MTCToSongPosition(song, measure + 2, 1, 0);
    controls.SetLoop(start, std::min(end, song.songLength));
}

// The same as the command line prints.
void ChangesForm::Save(FileKind kind) {
    const auto file = actions_.chooseSave(this, kind);
    const auto result = watch_.Result(); // the file dialog may have let time pass
    if (!file || !result) {
        return;
    }
    const session::FileState& state = session_.Session().Work().file;
    const diff::Wording wording{language_, actions_.voiceName, actions_.doneBy};
    const std::string text =
        kind == FileKind::ChangesText
            ? diff::DifferencesText(result->differences, result->beforeMap, result->afterMap,
                                    wording)
            : diff::DifferencesJson(
                  result->differences, result->beforeMap, result->afterMap,
                  system::PathText(state.source),
                  system::PathText(state.name.empty() ? state.source : state.name), wording) +
                  "\n";
    if (actions_.write(*file, text)) {
        summary_->setText(Say(changes_texts::kSaved).arg(ShownFileName(*file)));
    }
}

} // namespace tracksmith::forms
