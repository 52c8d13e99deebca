#include <algorithm>
#include <string_view>

#include "base/forms/qt_text.h"

#include "app/forms/main_form.h"
#include "app/forms/notices/notice_bar.h"
#include "app/forms/notices/status_line.h"
#include "app/forms/song/song_view.h"
#include "app/forms/texts.h"
#include "app/forms/transport/session_signals.h"
#include "editing/forms/copy_range_form.h"
#include "editing/forms/delete_range_form.h"
#include "editing/forms/texts.h"
#include "editing/forms/transpose_range_form.h"
#include "editing/range_tools.h"
#include "editing/undo.h"
#include "instruments/voices/voice_lookup.h"
#include "mixer/mixer.h"
#include "song/song_position.h"

// Editing ranges of measures, and undoing it.

namespace tracksmith::forms {
namespace {

using editing::RangeTool;
using Field = editing::RangeReading::Field;

/// How many measures the windows propose.
constexpr std::int32_t kProposedMeasures = 4;

editing::PositionText TextAt(const song::TimeMap& map, std::int32_t tick) {
    const auto place = song::GetMeasureBeatFromSongPos(map, tick);
    return {std::to_string(place.measure), "0" + std::to_string(place.beat)};
}

// The loop, or some measures from the music's place on; the first measure of all is never proposed.
editing::RangeWish ProposedRange(const session::Session& session) {
    const song::TimeMap& map = session.Song();
    const std::int32_t last = std::max(map.songLength - 1, 0);
    if (const auto& loop = session.Controls().Loop()) {
        return {RangeTool::Delete,
                TextAt(map, loop->startTick),
                TextAt(map, std::min(loop->endTick, last)),
                {}};
    }
    const auto place = song::GetMeasureBeatFromSongPos(map, session.Controls().Tick());
    const auto from = std::max<std::int32_t>(2, static_cast<std::int32_t>(place.measure));
    const auto to = std::max(from + 1, std::min(from + kProposedMeasures, map.lengthMeasure));
    return {RangeTool::Delete, {std::to_string(from), "01"}, {std::to_string(to), "01"}, {}};
}

} // namespace

RangeFormActions TMainForm::RangeActions() {
    return {.run =
                [this](const std::function<void()>& edit) {
                    if (!Run(edit)) {
                        return false;
                    }
                    ShowChanges();
                    return true;
                },
            .open = [this](RangeTool tool,
                           const editing::RangeWish& wish) { ShowRangeForm(tool, wish); },
            .voiceName =
                [this](std::size_t channel) {
                    return songView_->VoiceOf(static_cast<int>(channel)).name;
                },
            .nameVoice = VoiceNamer(),
            .songName = [this] { return SongFileName(); },
            .tell =
                [this](const Text& done, std::int64_t number) {
                    status_->ShowStatus(done, NumberText(number, host_.CurrentLanguage()));
                },
            .completeTransposing =
                [this](editing::Transposing& transposing) {
                    transposing.live = mixer_->Transposing();
                    const auto& output = session_.Work().outputs.outputs.front();
                    transposing.isMegaVoice =
                        [this, id = output.id](const instruments::VoiceNumbers& numbers) {
                            const auto found =
                                instruments::FindVoice(voices_.Tables(), id, false, numbers);
                            return found.voice != nullptr &&
                                   found.voice->name.find("MegaVoice") != std::string_view::npos;
                        };
                }};
}

void TMainForm::ShowRangeForm(RangeTool tool, const editing::RangeWish& wish) {
    if (rangeForm_ != nullptr) {
        rangeForm_->disconnect(this);
        rangeForm_->close();
    }
    switch (tool) {
        case RangeTool::Delete:
            rangeForm_ =
                new TDeleteRangeForm(session_, *rangeTools_, host_, RangeActions(), wish, this);
            break;
        case RangeTool::Copy:
            rangeForm_ =
                new TCopyRangeForm(session_, *rangeTools_, host_, RangeActions(), wish, this);
            break;
        case RangeTool::Transpose:
            rangeForm_ =
                new TTransposeRangeForm(session_, *rangeTools_, host_, RangeActions(), wish, this);
    }
    connect(signals_.get(), &SessionSignals::PlaceChanged, rangeForm_, &RangeForm::ShowPlace);
    connect(signals_.get(), &SessionSignals::SongChanged, rangeForm_, [this](bool replaced) {
        replaced ? rangeForm_->Btn_CancelClick() : rangeForm_->ShowSong();
    });
    connect(signals_.get(), &SessionSignals::PlayingChanged, rangeForm_, &RangeForm::ShowPlaying);
    rangeForm_->show();
}

void TMainForm::OpenRangeTool(RangeTool tool) {
    if (rangeForm_ != nullptr && rangeForm_->Tool() == tool) {
        rangeForm_->raise();
        rangeForm_->activateWindow();
        return;
    }
    ShowRangeForm(tool, rangeForm_ != nullptr ? rangeForm_->Wish() : ProposedRange(session_));
}

void TMainForm::MME_RangeDeleteClick() {
    OpenRangeTool(RangeTool::Delete);
}

void TMainForm::MME_RangeCopyClick() {
    OpenRangeTool(RangeTool::Copy);
}

void TMainForm::MME_RangeTransposeClick() {
    OpenRangeTool(RangeTool::Transpose);
}

// The music's place goes into a field of the tool's window, which opens where it is not.
void TMainForm::TakePosition(RangeTool tool, Field field) {
    if (rangeForm_ != nullptr && rangeForm_->Tool() == RangeTool::Transpose) {
        host_.ShowMessage(range_texts::kCloseTranspose.In(host_.CurrentLanguage()));
        return;
    }
    OpenRangeTool(tool);
    rangeForm_->TakePlayhead(field);
}

void TMainForm::PMC_CopyStartPositionClick() {
    TakePosition(RangeTool::Copy, Field::From);
}

void TMainForm::PMC_CopyEndPositionClick() {
    TakePosition(RangeTool::Copy, Field::To);
}

void TMainForm::PMC_CopyDestPositionClick() {
    TakePosition(RangeTool::Copy, Field::Destination);
}

void TMainForm::PMC_DeleteStartPositionClick() {
    TakePosition(RangeTool::Delete, Field::From);
}

void TMainForm::PMC_DeleteEndPositionClick() {
    TakePosition(RangeTool::Delete, Field::To);
}

void TMainForm::MME_UndoClick() {
    bool done = false;
    if (Run([&] { done = undo_->MME_UndoClick(host_); }) && done) {
        ShowChanges();
    }
}

void TMainForm::PMC_UndoClick() {
    MME_UndoClick();
}

} // namespace tracksmith::forms
