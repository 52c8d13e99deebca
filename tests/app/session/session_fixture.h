#pragma once

#include <future>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "base/errors.h"
#include "base/system/message_poster.h"
#include "support/scratch_settings.h"
#include "support/session_edit.h"
#include "support/song_assert.h"

#include "app/session/session.h"
#include "player/fake_stopwatch.h"
#include "player/recording_driver.h"

namespace tracksmith::test {

/// Changes of the song as the tests make them.
inline constexpr session::ChangeKind kWholeEdit{
    .name = Text{De{"Probe"}, En{"Trial"}}, .takeBack = true, .playsOn = true};
inline constexpr session::ChangeKind kSmallEdit{.name = Text{De{"Klein"}, En{"Small"}}};

/// A session with a player, a fake clock and one recording device. The song has one tick per
/// millisecond: notes of 100 ms at 0, 1,000 and 2,000 ms.
class SessionFixture : public testing::Test, protected session::SessionListener {
protected:
    SessionFixture() {
        auto stopwatch = std::make_unique<FakeStopwatch>();
        clock = stopwatch.get();
        driver.clock = [this] { return clock->ElapsedUs(); };
        session.StartPlayer({{{&driver, false}}, nullptr, "", host}, &settings.Store(),
                            std::move(stopwatch));
        session.AddListener(*this);
        clock->awaitSending = [this] { AwaitSending(); };
    }
    ~SessionFixture() override { session.EndPlayer(); }

    static Bytes ThreeNotes(int key = 60) {
        TrackBuilder notes;
        for (int i = 0; i < 3; ++i) {
            notes.Note(i == 0 ? 0 : 900, 0, key, 90).NoteOff(100, 0, key);
        }
        return MidiFileBuilder(1, 500)
            .Track(TrackBuilder().Tempo(0, 500'000).End())
            .Track(notes.End())
            .Build();
    }
    /// Puts a song into memory, as loading does.
    void Open(const Bytes& file) {
        session.Change(session::kReplaceSong, host, [&](session::Workspace& work) {
            Decode(work, file);
            work.file = session::LoadedFile("start.mid", false);
            return true;
        });
        told.clear();
    }
    static void Decode(session::Workspace& work, const Bytes& file) {
        RecordingMessageHost silent;
        song::ClearSong(work.song);
        song::DecodeMidiData(work.song, file, {}, silent);
        song::UpdateTimeZoneData(work.song);
        work.hasSong = true;
        work.modified = false;
    }
    /// Lets `ms` milliseconds pass and returns the keys of the notes that have begun.
    std::vector<int> Hear(std::int64_t ms) {
        clock->RunUntil(clock->ElapsedUs() + ms * 1000);
        AwaitSending();
        system::DispatchMessages();
        std::vector<int> keys;
        for (const Received& message : driver.Take()) {
            if ((message.bytes[0] & 0xF0) == 0x90) {
                keys.push_back(message.bytes[1]);
            }
        }
        return keys;
    }
    void AwaitSending() {
        EXPECT_TRUE(session.Controls().Player().WaitUntilSent(std::chrono::seconds(20)));
    }
    Bytes Saved() {
        const auto bytes = session.Encoder().Format1(session.Song(), {}, host);
        return {bytes.begin(), bytes.end()};
    }
    /// Moves all notes by a semitone.
    static bool Raise(session::Workspace& work) {
        for (song::EventLink event = work.song.tracks[1].first; event; event = event->next) {
            if (event->Command() == song::kNoteOn || event->Command() == song::kNoteOff) {
                ++event->data1;
            }
        }
        return true;
    }
    bool ChangeWhole() { return session.Change(kWholeEdit, host, Raise); }

    void OnSongChanged(const session::ChangeKind& kind) override {
        told.push_back("song " + std::string(kind.name.english));
    }
    void OnPlaying(bool playing) override { told.push_back(playing ? "play" : "stop"); }

    ScratchSettings settings;
    RecordingMessageHost host;
    RecordingDriver driver;
    FakeStopwatch* clock = nullptr;
    session::Session session;
    std::vector<std::string> told;
};

} // namespace tracksmith::test
