#include "editing/range_tools.h"

#include <memory>
#include <string>

#include "editing/texts.h"
#include "song/note_names.h"
#include "song/song_position.h"

namespace tracksmith::editing {
namespace {

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
    const TickRange range =
        RangeOrError(CheckDelete(session_.Song(), wish, host_.CurrentLanguage()), host_);
    SeamReport report;
    undo_.Run(UndoTool::DeleteRange, host_, [&](session::Workspace& work) {
        report = DeleteRange(work.song, range, Questions(false));
        return true;
    });
    return report;
}

SeamReport RangeTools::Copy(const RangeWish& wish, bool bringState) {
    const TickRange range =
        RangeOrError(CheckCopy(session_.Song(), wish, host_.CurrentLanguage()), host_);
    SeamReport report;
    undo_.Run(UndoTool::CopyRange, host_, [&](session::Workspace& work) {
        report = CopyRange(work.song, range, bringState, Questions(false));
        return true;
    });
    return report;
}

std::int64_t RangeTools::Transpose(const RangeWish& wish, const Transposing& transposing) {
    const TransposeCheck check =
        CheckTranspose(session_.Song(), wish, transposing, host_.CurrentLanguage());
    static_cast<void>(RangeOrError(check.reading, host_));
    std::int64_t moved = 0;
    undo_.Run(UndoTool::TransposeRange, host_, [&](session::Workspace& work) {
        moved = TransposeRange(work.song, check.wish, Questions(true));
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
