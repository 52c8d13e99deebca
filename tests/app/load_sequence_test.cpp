#include "app/load_sequence.h"

#include <functional>
#include <future>
#include <gtest/gtest.h>

#include "base/system/file_io.h"
#include "support/song_assert.h"
#include "support/temporary_folder.h"

#include "app/save_song.h"

namespace tracksmith::app {
namespace {

using namespace test;

Bytes SmallSong() {
    return MidiFileBuilder()
        .Track(TrackBuilder().Tempo(0, 400'000).Tempo(960, 500'000).End())
        .Track(TrackBuilder().Text(0, 3, "Piano").Note(480, 0, 60, 1).Note(1440, 0, 60, 0).End())
        .Build();
}

/// A session with a song that has been loaded and edited.
class LoadSequenceTest : public testing::Test {
protected:
    void SetUp() override {
        PutFile(folder_ / "old.mid", SmallSong());
        OpenMidiFile(session_, folder_ / "old.mid", host_);
        session_.MarkModified();
    }
    /// Runs `load` and returns its error, which must have been shown.
    template <typename Load>
    std::string ErrorOf(Language language, Load&& load) {
        RecordingMessageHost host(language);
        try {
            load(host);
        } catch (const EMidiError& error) {
            EXPECT_EQ(host.messages, std::vector<std::string>{error.what()});
            return error.what();
        }
        ADD_FAILURE() << "no error";
        return {};
    }
    std::string OpenError(const std::filesystem::path& file, Language language) {
        return ErrorOf(language, [&](MessageHost& host) { OpenMidiFile(session_, file, host); });
    }
    void ExpectOldSong() {
        EXPECT_TRUE(session_.Work().hasSong);
        EXPECT_TRUE(session_.Modified());
        EXPECT_EQ(session_.Work().file.name, folder_ / "old.mid");
        EXPECT_EQ(song::CheckSong(session_.Work().song), "");
        EXPECT_EQ(session_.Work().song.trackCount, 2);
    }

    TemporaryFolder folder_;
    session::Session session_;
    RecordingMessageHost host_;
};

TEST_F(LoadSequenceTest, BuildsEverything) {
    const song::Song& song = session_.Work().song;
    EXPECT_TRUE(host_.messages.empty());
    EXPECT_EQ(song::CheckSong(song), "");
    EXPECT_EQ(song.timeZoneCount, 3);
    EXPECT_EQ(song.lengthText, "201010");
    EXPECT_EQ(song.tracks[1].last->prev->timeMs, 800 + 1000);
    EXPECT_EQ(song.tracks[1].name, "Piano");
    EXPECT_EQ(session_.Work().loadReport[song::LoadChange::NoteOnVelocityZero], 1);
    OpenMidiFile(session_, folder_ / "old.mid", host_);
    EXPECT_FALSE(session_.Modified());
    EXPECT_EQ(session_.Work().loadReport[song::LoadChange::NoteOnVelocityZero], 1);
}

TEST_F(LoadSequenceTest, TheSameFileCanBeLoadedAgainByItsOwnName) {
    OpenMidiFile(session_, session_.Work().file.name, host_);
    EXPECT_EQ(session_.Work().file.name, folder_ / "old.mid");
    EXPECT_TRUE(session_.Work().hasSong);
}

TEST_F(LoadSequenceTest, AnotherSongEndsWhatCanBeTakenBack) {
    LoadWatch watch;
    const std::vector<std::function<void()>> others{
        [&] { OpenMidiFile(session_, folder_ / "old.mid", host_); },
        [&] {
            const LoadOrder order{.file = folder_ / "old.mid", .options = session_.Options()};
            TakeLoaded(session_, *PrepareLoad(order, watch), host_);
        },
        [&] { ClearMidiMemory(session_, host_); }};
    for (const auto& other : others) {
        session_.Change(session::kPrepareSong, host_, [](session::Workspace&) { return true; });
        ASSERT_TRUE(session_.LastChange().Available());
        other();
        EXPECT_FALSE(session_.LastChange().Available());
        EXPECT_FALSE(session_.Modified());
    }
    EXPECT_FALSE(session_.HasSong());
    others[1]();
    EXPECT_TRUE(session_.HasSong());
}

TEST_F(LoadSequenceTest, AFileThatCannotBeReadLeavesTheOldSong) {
    for (const char* name : {"missing.mid", ""}) {
        const std::string text = system::PathText(folder_ / name);
        EXPECT_EQ(OpenError(folder_ / name, Language::German),
                  "Fehler beim Zugriff auf der Datei: \"" + text + "\"");
        EXPECT_EQ(OpenError(folder_ / name, Language::English),
                  "Error opening the midi file: \"" + text + "\"");
        ExpectOldSong();
    }
}

TEST_F(LoadSequenceTest, ATooShortFileLeavesTheOldSong) {
    for (const std::size_t size : {0U, 23U}) {
        PutFile(folder_ / "short.mid", Bytes(size, 'M'));
        EXPECT_EQ(OpenError(folder_ / "short.mid", Language::German),
                  "Fehler in der Mididatei: Datei zu kurz!");
        EXPECT_EQ(OpenError(folder_ / "short.mid", Language::English),
                  "Error in midifile: file too short!");
        ExpectOldSong();
    }
    PutFile(folder_ / "short.mid", Bytes(24, 'M'));
    EXPECT_EQ(OpenError(folder_ / "short.mid", Language::English),
              "Error in midi file header - 1!");
}

TEST_F(LoadSequenceTest, AFaultInTheFileLeavesNoSongAndNoNameToSaveOver) {
    Bytes broken = SmallSong();
    broken.erase(broken.end() - 3, broken.end());
    PutFile(folder_ / "broken.mid", broken);
    EXPECT_NE(OpenError(folder_ / "broken.mid", Language::English), "");
    EXPECT_FALSE(session_.Work().hasSong);
    EXPECT_FALSE(session_.Modified());
    EXPECT_TRUE(session_.Work().file.name.empty());
    EXPECT_TRUE(session_.Work().balanced);
    EXPECT_TRUE(session_.Work().song.tracks.empty());
    EXPECT_EQ(session_.Work().song.timeZoneCount, 0);
    OpenMidiFile(session_, folder_ / "old.mid", host_);
    EXPECT_TRUE(session_.Work().hasSong);
    EXPECT_EQ(song::CheckSong(session_.Work().song), "");
}

TEST_F(LoadSequenceTest, OptionsOutliveClearing) {
    session_.Options().decodeOptions.splitFormat0 = true;
    session_.Options().runningStatusAcrossSysex = true;
    const Bytes file = MidiFileBuilder(0)
                           .Track(TrackBuilder().Note(0, 2, 60, 1).Raw(0, {0xF8}).Raw(0, {61, 1}))
                           .Build();
    OpenMidiData(session_, file, "memory.mid", host_);
    EXPECT_EQ(session_.Work().song.trackCount, 17);
    EXPECT_EQ(Listing(session_.Work().song.tracks[3]), "0 923C01; 0 923D01");
    EXPECT_EQ(session_.Work().file.name, "memory.mid");
}

TEST_F(LoadSequenceTest, TemposOfOtherTracksCountAtOnce) {
    const Bytes file = MidiFileBuilder()
                           .Track(TrackBuilder().Note(960, 0, 60, 1).End())
                           .Track(TrackBuilder().Tempo(480, 250'000).End())
                           .Build();
    OpenMidiData(session_, file, "x.mid", host_);
    EXPECT_EQ(session_.Work().song.tracks[0].last->prev->timeMs, 750);
}

TEST_F(LoadSequenceTest, ShortNotesAreLengthenedAsChosenAndCounted) {
    const auto file = std::make_shared<const Bytes>(
        MidiFileBuilder()
            .Track(TrackBuilder()
                       .Note(0, 0, 60, 9)
                       .NoteOff(4, 0, 60)
                       .Note(6, 0, 60, 9)
                       .NoteOff(99, 0, 60))
            .Track(TrackBuilder().Note(0, 9, 36, 9).NoteOff(1, 9, 36).NoteOff(1, 9, 36))
            .Build());
    const auto load = [&](const song::NoteLengthOptions& length) {
        session_.Options().noteLength = length;
        OpenMidiData(session_, file, "short.mid", host_);
        EXPECT_EQ(song::CheckSong(session_.Song()), "");
        EXPECT_FALSE(session_.Modified());
        EXPECT_FALSE(session_.Work().balanced);
        std::string ticks;
        for (const song::Track& track : session_.Song().tracks) {
            for (song::ConstEventLink event = track.first; event; event = event->next) {
                ticks += event->noteOnLink ? std::to_string(event->tick) + " " : "";
            }
        }
        return ticks +
               std::to_string(session_.Work().loadReport[song::LoadChange::NotesLengthened]);
    };
    EXPECT_EQ(load({20}), "10 109 20 2");
    EXPECT_EQ(load({20, true}), "10 109 1 1");
    EXPECT_EQ(load({}), "4 109 1 0");
    EXPECT_TRUE(host_.messages.empty());
    session_.Options().skipNoteCheck = true;
    OpenMidiData(session_, file, "short.mid", host_);
    EXPECT_TRUE(session_.Work().balanced);
}

/// How songs are loaded beside the one in memory, on a thread of their own.
class LoadBesideTest : public LoadSequenceTest {
protected:
    LoadOrder Order(const std::filesystem::path& file) {
        session_.Options().outputs.outputs.front().SetName("Yamaha Genos2");
        session_.Options().sysexOptions.automatic = true;
        return {.file = file, .options = session_.Options()};
    }
    /// Loads `order` while this thread reads the song in memory.
    std::unique_ptr<LoadedSong> Prepare(const LoadOrder& order) {
        auto result = std::async(std::launch::async, [&] { return PrepareLoad(order, watch_); });
        do {
            ExpectOldSong();
        } while (result.wait_for(std::chrono::seconds(0)) != std::future_status::ready);
        return result.get();
    }
    static std::string Content(const session::Session& session) {
        std::string text;
        for (const song::Track& track : session.Song().tracks) {
            text += track.name + ": " + Listing(track) + "\n";
        }
        return text + std::to_string(session.Song().timeZoneCount) + session.Song().lengthText;
    }

    LoadWatch watch_;
};

TEST_F(LoadBesideTest, IsTheSameSongAsLoadedInPlace) {
    const auto file = folder_ / "new.mid";
    Bytes bytes = RandomFile(11, 1);
    bytes.resize(bytes.size() + 1'000'000); // bytes behind the last track are dropped
    PutFile(file, bytes);
    const LoadOrder order = Order(file);
    const auto loaded = Prepare(order);
    const std::uint64_t revision = session_.Revision();
    TakeLoaded(session_, *loaded, host_);
    EXPECT_GT(session_.Revision(), revision);
    EXPECT_EQ(loaded->work.song.trackCount, 2); // the old song
    EXPECT_EQ(watch_.read, bytes.size());
    EXPECT_EQ(watch_.size, bytes.size());
    watch_.stop.request_stop();
    EXPECT_EQ(ReadWatchedFile(file, watch_), std::nullopt);

    session::Session other;
    other.Options() = session_.Options();
    OpenMidiFile(other, file, host_);
    EXPECT_EQ(song::CheckSong(session_.Song()), "");
    EXPECT_EQ(Content(session_), Content(other));
    const session::Workspace& work = session_.Work();
    EXPECT_EQ(work.file.name, file);
    EXPECT_EQ(work.file.stamp, other.Work().file.stamp);
    EXPECT_EQ(*work.loaded.bytes, *other.Work().loaded.bytes);
    EXPECT_TRUE(work.preparation.Changed());
    EXPECT_EQ(work.balanced, other.Work().balanced);
    EXPECT_FALSE(session_.Modified());
    EXPECT_TRUE(host_.messages.empty());
}

TEST_F(LoadBesideTest, AFaultEndsAsInPlace) {
    Bytes broken = SmallSong();
    broken.erase(broken.end() - 3, broken.end());
    PutFile(folder_ / "broken.mid", broken);
    PutFile(folder_ / "short.mid", Bytes(23, 'M'));
    for (const char* name : {"missing.mid", "short.mid", "broken.mid"}) {
        LoadOrder order = Order(folder_ / name);
        order.language = Language::German;
        const auto loaded = Prepare(order);
        EXPECT_NE(loaded->advice.german, "");
        ExpectOldSong();
        const std::string text = ErrorOf(
            Language::German, [&](MessageHost& host) { TakeLoaded(session_, *loaded, host); });
        if (order.file.stem() != "broken") {
            ExpectOldSong();
            EXPECT_EQ(text, OpenError(order.file, Language::German));
        } else {
            EXPECT_FALSE(session_.HasSong());
            EXPECT_TRUE(session_.Work().file.name.empty());
        }
    }
}

TEST_F(LoadBesideTest, AStopEndsItAndTheEndOfMemoryIsTold) {
    watch_.stop.request_stop();
    EXPECT_FALSE(Prepare(Order(folder_ / "old.mid"))->work.hasSong);
    LoadOrder order = Order(folder_ / "old.mid");
    order.reader = [](const std::filesystem::path&,
                      LoadWatch&) -> std::optional<std::vector<std::uint8_t>> {
        throw std::bad_alloc();
    };
    EXPECT_EQ(Prepare(order)->fault, "Error allocating memory!");
    EXPECT_FALSE(watch_.reading);
}

} // namespace
} // namespace tracksmith::app
