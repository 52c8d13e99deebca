#include "editing/undo.h"

#include <array>
#include <cstddef>
#include <memory>
#include <new>
#include <stdexcept>

#include "support/failing_allocation.h"

#include "app/session/session_fixture.h"

namespace tracksmith::editing {
namespace {

using namespace test;

class UndoTest : public SessionFixture {
protected:
    // Lengthens the song too, which undoing has to take back.
    bool Edit(UndoTool tool, std::size_t channel = 0) {
        return undo.Run(
            tool, host,
            [](session::Workspace& work) {
                for (song::Track& track : work.song.tracks) {
                    song::InsertAfter(track, track.last->prev,
                                      song::NewShortEvent(work.song.pool, 5'000, 0xB0, 7, 9));
                    track.last->tick = 5'010;
                }
                work.song.songLength = 5'010;
                return true;
            },
            channel);
    }

    Undo undo{session};
};

TEST_F(UndoTest, BringsBackTheSongBeforeTheLastCommand) {
    struct Case {
        UndoTool tool;
        const char* english;
        const char* question;
        const char* german;
    };
    for (const Case& each :
         {Case{UndoTool::CopyRange, "Undo - copy range", "Undo the command \"copy range\"?",
               "Soll der Befehl \"Bereich kopieren\" rückgängig gemacht werden?"},
          Case{UndoTool::DeleteRange, "Undo - delete range", "Undo the command \"delete range\"?",
               "Soll der Befehl \"Bereich löschen\" rückgängig gemacht werden?"},
          Case{UndoTool::FadeOut, "Undo - Fade out", "Undo the command \"Fade out\"?",
               "Soll der Befehl \"Fade-Out\" rückgängig gemacht werden?"},
          Case{UndoTool::TransposeRange, "Undo - transpose range",
               "Undo the command \"transpose range\"?",
               "Soll der Befehl \"Bereich transponieren\" rückgängig gemacht werden?"},
          Case{UndoTool::Recording, "Undo - Recording on midi channel 4",
               "Undo the command \"Recording on midi channel 4\"?",
               "Soll der Befehl \"Aufnahme auf MIDI Kanal 4\" rückgängig gemacht werden?"}}) {
        SCOPED_TRACE(each.english);
        Open(ThreeNotes());
        EXPECT_EQ(undo.Caption(Language::English), "Undo");
        EXPECT_FALSE(undo.MME_UndoClick(host)); // nothing to undo
        const Bytes before = Saved();
        ASSERT_TRUE(Edit(each.tool, 3));
        EXPECT_FALSE(session.LastChange().Available());
        const Bytes edited = Saved();
        EXPECT_EQ(undo.Caption(Language::English), each.english);

        RecordingMessageHost german(Language::German);
        EXPECT_FALSE(undo.PMC_UndoClick(german)); // answered No
        EXPECT_EQ(german.questions, std::vector<std::string>{each.german});
        EXPECT_EQ(Saved(), edited);
        EXPECT_EQ(undo.Tag(), each.tool);

        session.Controls().MoveToTick(4'000); // behind the end of what comes back
        RecordingMessageHost english;
        english.answer = true;
        EXPECT_TRUE(undo.MME_UndoClick(english));
        EXPECT_EQ(english.questions, std::vector<std::string>{each.question});
        EXPECT_EQ(Saved(), before);
        EXPECT_EQ(session.Controls().Tick(), 0);
        EXPECT_EQ(song::CheckSong(session.Song()), "");
        EXPECT_EQ(undo.Caption(Language::German), "Rückgängig");
        EXPECT_FALSE(undo.Enabled());
        session.TakeBackLastChange(host);
        EXPECT_EQ(Saved(), edited);
    }
}

TEST_F(UndoTest, FailedAndRefusedCommandsLeaveWhatCouldBeUndone) {
    Open(ThreeNotes());
    ASSERT_TRUE(Edit(UndoTool::CopyRange));
    const Bytes edited = Saved();
    EXPECT_FALSE(undo.Run(UndoTool::DeleteRange, host, [](auto&) { return false; }));
    const auto fail = [this](auto throwIt) {
        undo.Run(UndoTool::DeleteRange, host, [&](session::Workspace& work) {
            Raise(work);
            throwIt();
            return true;
        });
    };
    EXPECT_THROW(fail([] { throw std::runtime_error("refused"); }), std::runtime_error);
    EXPECT_THROW(fail([] { throw std::bad_alloc(); }), EMidiError);
    EXPECT_EQ(host.messages, std::vector<std::string>{"Error allocating memory!"});
    int failures = 0;
    for (bool done = false; !done; ++failures) {
        try {
            const FailingAllocation failing(failures); // also while the session finishes the change
            undo.Run(UndoTool::DeleteRange, host, Raise);
            done = true;
        } catch (const EMidiError& error) {
            EXPECT_STREQ(error.what(), "Error allocating memory!");
        } catch (const std::bad_alloc&) { // for the message itself
        }
        ASSERT_EQ(Saved() == edited, !done) << failures;
        ASSERT_EQ(undo.Tag(), done ? UndoTool::DeleteRange : UndoTool::CopyRange) << failures;
    }
    EXPECT_GT(failures, 1);
    host.answer = true;
    EXPECT_TRUE(undo.MME_UndoClick(host));
    EXPECT_EQ(Saved(), edited);
}

// Windows come and go while the session stays.
TEST_F(UndoTest, WhatHasEndedIsToldNothing) {
    Open(ThreeNotes());
    alignas(Undo) std::array<std::byte, sizeof(Undo)> place{};
    std::destroy_at(new (place.data()) Undo(session));
    place.fill(std::byte{0}); // a call would end the program
    ASSERT_TRUE(Edit(UndoTool::CopyRange));
    EXPECT_TRUE(undo.Enabled());
}

TEST_F(UndoTest, ASongEndsWithoutMemory) {
    auto song = std::make_unique<song::Song>();
    for (int i = 0; i < 20'000; ++i) { // several chunks
        song->pool.NewEvent();
    }
    const FailingAllocation failing(0);
    song.reset();
}

TEST_F(UndoTest, KeepsTracksThatCameLaterAndForgetsOtherSongs) {
    Open(ThreeNotes());
    ASSERT_TRUE(Edit(UndoTool::DeleteRange));
    session.Change(kSmallEdit, host, [](session::Workspace& work) {
        song::Song& song = work.song;
        song.tracks.emplace_back();
        song::InitTrack(song, song.tracks.back());
        song::AppendEvent(song.tracks.back(), song::NewShortEvent(song.pool, 4'000, 0xC1, 5, 0));
        song::AppendEvent(song.tracks.back(), song::NewMetaEvent(song.pool, 5'010, 0x2F, {}));
        song.keySignatures.emplace_back();
        song.trackCount = 3;
        return true;
    });
    host.answer = true;
    EXPECT_TRUE(undo.MME_UndoClick(host));
    EXPECT_EQ(song::CheckSong(session.Song()), "");
    EXPECT_EQ(session.Song().tracks[0].eventCount, 3); // without what the command had put in
    ASSERT_EQ(session.Song().tracks.size(), 3U);
    EXPECT_EQ(Listing(session.Song().tracks[2]), "4000 C105");

    ASSERT_TRUE(Edit(UndoTool::DeleteRange));
    Open(ThreeNotes(70));
    EXPECT_FALSE(undo.Enabled());
    undo.Arm(UndoTool::Recording, 8); // without a copy
    const Bytes now = Saved();
    EXPECT_FALSE(undo.MME_UndoClick(host));
    EXPECT_EQ(host.messages.size(), 1U);
    EXPECT_EQ(Saved(), now);
}

} // namespace
} // namespace tracksmith::editing
