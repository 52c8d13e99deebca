#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "base/errors.h"
#include "base/recording_message_host.h"

#include "app/load_sequence.h"
#include "app/prepare_song.h"
#include "app/save_song.h"
#include "editing/range_tools.h"
#include "editing/transpose_range.h"
#include "mixer/mixer.h"
#include "song/check_song.h"

namespace tracksmith::test {

/// Tools, undoing, taking back, transposing, sliders, preparing, saving and loading of a session's
/// song in any order. What can be undone must come back byte by byte, whatever has happened since;
/// a refused command changes nothing; a plain list of the notes tells where a cut or a copy leaves
/// them; the song is sound after every step.
class SessionWalk {
public:
    /// A number from 0 to below `sides`.
    using Choose = std::function<int(int sides)>;
    using Fail = std::function<void(const std::string& fault)>;

    SessionWalk(session::Session& session, RecordingMessageHost& host, Choose choose, Fail fail)
        : session_(session), host_(host), choose_(std::move(choose)), fail_(std::move(fail)) {
        host_.answer = true;
        session_.Options().sysexOptions.automatic = false;
    }

    void Step() {
        const std::array<void (SessionWalk::*)(), 11> steps{
            &SessionWalk::RunTool,      &SessionWalk::RunTool,    &SessionWalk::RunTool,
            &SessionWalk::RunTool,      &SessionWalk::UndoIt,     &SessionWalk::UndoIt,
            &SessionWalk::TransposeAll, &SessionWalk::MoveSlider, &SessionWalk::TakeBack,
            &SessionWalk::Prepare,      &SessionWalk::SaveAndLoad};
        (this->*steps.at(static_cast<std::size_t>(choose_(static_cast<int>(steps.size())))))();
        const std::string fault = song::CheckSong(session_.Song());
        Require(fault.empty(), fault);
        host_.messages.clear();
        host_.questions.clear();
    }

private:
    using Bytes = std::vector<std::uint8_t>;

    struct Note {
        std::size_t track = 0;
        std::int64_t tick = 0;
        std::uint8_t status = 0;
        std::uint8_t key = 0;
        std::uint8_t velocity = 0;
        auto Values() const { return std::tie(track, tick, status, key, velocity); }
        friend bool operator<(const Note& a, const Note& b) { return a.Values() < b.Values(); }
        friend bool operator==(const Note& a, const Note& b) { return a.Values() == b.Values(); }
    };
    using Notes = std::vector<Note>;

    void Require(bool good, const std::string& fault) const {
        if (!good) {
            fail_(fault);
        }
    }
    Bytes Saved() {
        const auto bytes = app::EncodeSong(session_, app::SaveFormat::AsSong, host_);
        return {bytes.begin(), bytes.end()};
    }
    // The song without what the mixer moves.
    Bytes Stored() {
        const int moved = mixer_.Transposing().song;
        TransposeTo(0);
        Bytes bytes = Saved();
        TransposeTo(moved);
        return bytes;
    }
    Notes AllNotes() const { return NotesBy(&song::MidiEvent::data1); }
    // At the pitches that would be saved.
    Notes StoredNotes() const { return NotesBy(&song::MidiEvent::origData1); }
    Notes NotesBy(std::uint8_t song::MidiEvent::*pitch) const {
        Notes notes;
        for (std::size_t track = 0; track < session_.Song().tracks.size(); ++track) {
            for (song::ConstEventLink event = session_.Song().tracks[track].first; event;
                 event = event->next) {
                if (event->IsNoteOn() && event->length > 0) {
                    notes.push_back(
                        {track, event->tick, event->status, (*event).*pitch, event->data2});
                }
            }
        }
        return notes;
    }
    static void MoveFrom(Notes& notes, std::int64_t tick, std::int64_t by) {
        for (Note& note : notes) {
            note.tick += note.tick >= tick ? by : 0;
        }
    }
    // What a tool leaves; notes directly at its seams may be ended, joined and begun again.
    void ExpectNotes(Notes wanted, const std::vector<std::int64_t>& seams, const char* what) const {
        Notes found = AllNotes();
        for (Notes* notes : {&wanted, &found}) {
            std::erase_if(*notes, [&](const Note& note) {
                return std::ranges::any_of(seams, [&](std::int64_t seam) {
                    return note.tick >= seam - 2 && note.tick <= seam + 1;
                });
            });
            std::ranges::sort(*notes, std::less<>());
        }
        Require(wanted == found, std::string("other notes behind a ") + what);
    }

    editing::PositionText Position() {
        return editing::SplitPosition(std::to_string(1 + choose_(12)) + ":" +
                                      std::to_string(1 + choose_(4)));
    }
    void RunTool() {
        const editing::RangeWish wish{editing::RangeTool::Copy, Position(), Position(), Position()};
        const Bytes former = Stored();
        const editing::UndoTool tag = undo_.Tag();
        try {
            Apply(wish);
            before_ = former;
        } catch (const EMidiError&) {
            Require(Stored() == former, "a refused tool has changed the song");
            Require(undo_.Tag() == tag, "a refused tool has changed what can be undone");
        }
    }
    void Apply(editing::RangeWish wish) {
        const int tool = choose_(3);
        wish.tool = std::array{editing::RangeTool::Delete, editing::RangeTool::Copy,
                               editing::RangeTool::Transpose}
                        .at(static_cast<std::size_t>(tool));
        const auto range = editing::ReadRange(session_.Song(), wish, host_.CurrentLanguage()).range;
        const std::int64_t length = range.Length();
        Notes notes = AllNotes();
        if (tool == 0) {
            tools_.Delete(wish);
            std::erase_if(notes, [&](const Note& note) {
                return note.tick >= range.start && note.tick < range.end;
            });
            MoveFrom(notes, range.end, -length);
            ExpectNotes(notes, {range.start}, "cut");
        } else if (tool == 1) {
            tools_.Copy(wish, choose_(2) == 0);
            Notes block = notes;
            std::erase_if(block, [&](const Note& note) {
                return note.tick < range.start || note.tick >= range.end;
            });
            MoveFrom(block, 0, range.destination - range.start);
            MoveFrom(notes, range.destination, length);
            notes.insert(notes.end(), block.begin(), block.end());
            ExpectNotes(notes, {range.destination, range.destination + length}, "copy");
        } else {
            TransposeRange(wish, range, choose_(30) - 15);
        }
    }
    void TransposeRange(const editing::RangeWish& wish, const editing::TickRange& range,
                        int semitones) {
        const auto melody = editing::MelodyChannels(session_.Song());
        Notes wanted = StoredNotes();
        for (Note& note : wanted) {
            if (melody[note.status & 0x0FU] && note.tick >= range.start && note.tick < range.end) {
                note.key = editing::TransposedPitch(note.key, semitones, false);
            }
        }
        tools_.Transpose(wish, {std::to_string(semitones), {}, "", mixer_.Transposing(), {}});
        Require(StoredNotes() == wanted, "other notes were transposed");
    }
    void UndoIt() {
        if (undo_.MME_UndoClick(host_)) {
            Require(Stored() == before_, "undoing does not bring the song back");
            session_.TakeBackLastChange(host_);
            session_.TakeBackLastChange(host_);
            Require(Stored() == before_, "taking back twice changes the song");
        }
    }
    void TransposeAll() { TransposeTo(choose_(7) - 3); }
    void TransposeTo(int semitones) {
        Require(mixer_.TransposeChange(semitones), "the song cannot be transposed");
    }
    void MoveSlider() {
        mixer_.Move(static_cast<std::size_t>(choose_(16)), mixer::Control::Volume, choose_(128));
    }
    void TakeBack() {
        const Bytes former = Stored();
        session_.TakeBackLastChange(host_);
        session_.TakeBackLastChange(host_);
        Require(Stored() == former, "taking back twice changes the song");
    }
    void Prepare() {
        constexpr std::array kNames{"Roland SC-88Pro", "Yamaha Genos", "Korg PA4X"};
        session_.Options().outputs.outputs.front().SetName(
            kNames.at(static_cast<std::size_t>(choose_(kNames.size()))));
        app::PrepareSong(session_, host_);
        const Bytes once = Stored();
        app::PrepareSong(session_, host_);
        Require(Stored() == once, "preparing again changes the song");
    }
    // From the second generation on the bytes stay the same.
    void SaveAndLoad() {
        app::OpenMidiData(session_, Saved(), "walk.mid", host_);
        Require(!undo_.Enabled(), "another song can be undone");
        const Bytes second = Saved();
        app::OpenMidiData(session_, second, "walk.mid", host_);
        Require(Saved() == second, "loading what was saved changes it");
    }

    session::Session& session_;
    RecordingMessageHost& host_;
    Choose choose_;
    Fail fail_;
    mixer::Mixer mixer_{session_};
    editing::Undo undo_{session_};
    editing::RangeTools tools_{session_, undo_, host_};
    Bytes before_;
};

} // namespace tracksmith::test
