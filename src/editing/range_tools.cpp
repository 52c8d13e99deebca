#include "editing/range_tools.h"

#include <charconv>
#include <memory>
#include <optional>
#include <string_view>

#include "editing/texts.h"
#include "song/note_names.h"
#include "song/song_position.h"

namespace tracksmith::editing {
namespace {

std::optional<int> SemitonesOf(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
    }
    int value = 0;
    const char* const end = text.data() + text.size();
    const auto [behind, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && behind == end ? std::optional(value) : std::nullopt;
}

std::string QuestionAbout(const Text& fault, const song::MidiEvent& event, const song::TimeMap& map,
                          Language language) {
    std::string question(fault.In(language));
    question += "\n";
    question += texts::kChannelWord.In(language);
    question += std::to_string(event.Channel() + 1);
    question += texts::kNoteWord.In(language);
    question += song::NoteName(event.data1) + ", " + song::SongPositionToMTC(map, event.tick);
    question += "\n";
    question += texts::kContinueToShow.In(language);
    return question;
}

} // namespace

SeamReport RangeTools::Delete(const RangeWish& wish) {
    const TickRange range = RangeOrError(session_.Song(), wish, host_);
    if (!MayDelete(session_.Song(), range)) {
        RaiseMidiError(host_, texts::kLeadIn);
    }
    SeamReport report;
    undo_.Run(UndoTool::DeleteRange, host_, [&](session::Workspace& work) {
        report = DeleteRange(work.song, range, Questions(false));
        return true;
    });
    return report;
}

SeamReport RangeTools::Copy(const RangeWish& wish, bool bringState) {
    const TickRange range = RangeOrError(session_.Song(), wish, host_);
    if (!HasRoomFor(session_.Song(), range)) {
        RaiseMidiError(host_, texts::kTooLong);
    }
    SeamReport report;
    undo_.Run(UndoTool::CopyRange, host_, [&](session::Workspace& work) {
        report = CopyRange(work.song, range, bringState, Questions(false));
        return true;
    });
    return report;
}

std::int64_t RangeTools::Transpose(const RangeWish& wish, const Transposing& transposing) {
    const std::optional<int> semitones = SemitonesOf(transposing.semitones);
    if (!semitones) {
        RaiseMidiError(host_, texts::kNoSemitones);
    }
    TransposeWish edit{{}, *semitones, {}, transposing.live, transposing.isMegaVoice};
    if (!transposing.channel) {
        edit.channels = MelodyChannels(session_.Song());
    } else if (ChannelsWithNotes(session_.Song())[*transposing.channel]) {
        edit.channels.set(*transposing.channel);
    } else {
        const std::string number = std::to_string(*transposing.channel + 1);
        RaiseMidiError(
            host_, texts::CannotTranspose(host_.CurrentLanguage(),
                                          transposing.label.empty() ? number : transposing.label));
    }
    edit.range = RangeOrError(session_.Song(), wish, host_);
    std::int64_t moved = 0;
    undo_.Run(UndoTool::TransposeRange, host_, [&](session::Workspace& work) {
        moved = TransposeRange(work.song, edit, Questions(true));
        return true;
    });
    return moved;
}

// Asks about each fault until the user has had enough. Transposing needs note-ons only.
NoteFaultListener RangeTools::Questions(bool transposing) {
    const auto silent = std::make_shared<bool>(false);
    return [this, silent, transposing](NoteFault fault, const song::MidiEvent& event) {
        const bool on = fault == NoteFault::DoubleNoteOn;
        if (*silent || (on && transposing)) {
            return;
        }
        const Text& text = transposing ? texts::kMissingNoteOn
                           : on        ? texts::kDoubleNoteOn
                                       : texts::kDoubleNoteOff;
        *silent =
            !host_.AskYesNo(QuestionAbout(text, event, session_.Song(), host_.CurrentLanguage()));
    };
}

} // namespace tracksmith::editing
