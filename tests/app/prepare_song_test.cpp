#include "app/prepare_song.h"

#include <gtest/gtest.h>

#include "base/data_folders.h"
#include "base/recording_message_host.h"
#include "support/scratch_settings.h"
#include "support/session_edit.h"
#include "support/song_assert.h"

#include "app/channel_voices.h"
#include "app/kept_words.h"
#include "app/load_sequence.h"
#include "app/preparation_words.h"
#include "app/save_song.h"
#include "instruments/catalogue.h"

namespace tracksmith::app {
namespace {

using namespace test;

// A GM song of format 1 with notes at once and a tempo change within its first measure.
Bytes GmSong() {
    return MidiFileBuilder()
        .Track(TrackBuilder()
                   .Tempo(0, 400'000)
                   .Sysex(0, {0x7E, 0x7F, 0x09, 0x01, 0xF7})
                   .Tempo(240, 700'000)
                   .End())
        .Track(TrackBuilder().Text(0, 3, "Piano").Note(480, 0, 60, 90).NoteOff(480, 0, 60).End())
        .Build();
}

class PrepareSongTest : public testing::Test {
protected:
    void Load(const char* instrument, bool automatic = true) {
        session_.Options().outputs.outputs.front().SetName(instrument);
        session_.Options().sysexOptions.automatic = automatic;
        OpenMidiData(session_, GmSong(), "song.mid", host_);
        ASSERT_EQ(song::CheckSong(session_.Work().song), "");
    }
    /// Clock times of all events, for comparing them with what a full computation gives.
    std::vector<std::int32_t> Times() const {
        std::vector<std::int32_t> times;
        for (const song::Track& track : session_.Work().song.tracks) {
            for (song::ConstEventLink event = track.first; event; event = event->next) {
                times.push_back(event->timeMs);
            }
        }
        return times;
    }
    std::string Line(Language language = Language::English) const {
        return PreparationLine(session_.Work().preparation, language);
    }

    session::Session session_;
    RecordingMessageHost host_;
};

TEST_F(PrepareSongTest, PreparesWhileLoadingAndLeavesTheTimesRight) {
    Load("Roland SC-88Pro");
    EXPECT_EQ(Line(), "Prepared for Roland SC-88Pro: −1 GM System On, +1 GS Reset, device 10");
    EXPECT_FALSE(session_.Modified());
    const std::vector<std::int32_t> times = Times();
    EditSession(session_, [](session::Workspace& work) { song::SetTimePositions(work.song); });
    EXPECT_EQ(Times(), times);

    const std::vector<PreparationRow> rows =
        PreparationRows(session_.Work().preparation, session_.Work().song, Language::German);
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0].what, "entfernt");
    EXPECT_EQ(rows[1].bytes, "F0 41 10 42 12 40 00 7F 00 41 F7");
    EXPECT_EQ(rows[1].track, 1);
    EXPECT_EQ(rows[1].position, "001.01.002");
}

TEST_F(PrepareSongTest, LeavesTheSongAloneWhenNothingIsToBeDone) {
    Load("Roland SC-88Pro", false);
    EXPECT_FALSE(session_.Work().preparation.prepared);
    EXPECT_EQ(Line(), "");
    Load("GM Soundset");
    EXPECT_EQ(Line(Language::German), "Vorbereitet für GM Soundset: alles war schon da");
}

TEST_F(PrepareSongTest, PreparesAgainForAnotherInstrumentAndStaysStable) {
    Load("GM Soundset");
    session_.Options().outputs.outputs.front().SetName("Yamaha Genos");
    PrepareSong(session_, host_);
    EXPECT_TRUE(session_.Modified());
    EXPECT_EQ(Line(), "Prepared for Yamaha Genos: −1 GM System On, +1 XG System On");
    EXPECT_EQ(song::CheckSong(session_.Work().song), "");
    const auto encoded = EncodeSong(session_, SaveFormat::AsSong, host_);
    const Bytes saved(encoded.begin(), encoded.end());
    session_.MarkSaved("saved.mid", SaveFormat::AsSong);
    PrepareSong(session_, host_);
    EXPECT_FALSE(session_.Modified());
    OpenMidiData(session_, saved, "again.mid", host_);
    EXPECT_EQ(session_.Work().preparation.inserted + session_.Work().preparation.removed, 0);
    const auto again = EncodeSong(session_, SaveFormat::AsSong, host_);
    EXPECT_EQ(Bytes(again.begin(), again.end()), saved);
}

// A GS song makes channel 11 drums by a message, not by a bank.
TEST_F(PrepareSongTest, NamesADrumPartOfAGsSongAsAKit) {
    const Bytes file =
        MidiFileBuilder()
            .Track(TrackBuilder()
                       .Sysex(0, {0x41, 0x10, 0x42, 0x12, 0x40, 0x00, 0x7F, 0x00, 0x41, 0xF7})
                       .Sysex(60, {0x41, 0x10, 0x42, 0x12, 0x40, 0x1A, 0x15, 0x02, 0x0F, 0xF7})
                       .End())
            .Track(TrackBuilder().Program(480, 10, 8).Note(0, 10, 38, 90).End(480))
            .Build();
    session_.Options().outputs.outputs.front().SetName("Roland SC-88Pro");
    session_.Options().sysexOptions.automatic = true;
    OpenMidiData(session_, file, "song.mid", host_);
    const SongDescription song = DescribeSong(session_.Work());
    ASSERT_EQ(song.channels.size(), 1U);
    const instruments::VoiceTables tables(VoiceFolders());
    EXPECT_TRUE(FirstVoiceOf(tables, song.channels[0],
                             instruments::FindInstrument("Roland SC-88Pro")->id, {})
                    .drums);
}

TEST_F(PrepareSongTest, NewSongHasATrackForEachChannelAndIsPrepared) {
    NewSong(session_, host_);
    const song::Song& song = session_.Work().song;
    EXPECT_EQ(song::CheckSong(song), "");
    ASSERT_EQ(song.trackCount, 17);
    EXPECT_EQ(song.division, 480);
    EXPECT_EQ(song.tracks[10].channel, 9);
    EXPECT_EQ(session_.Work().loadReport.Kinds(), 0U);
    EXPECT_EQ(Listing(song.tracks[0]),
              "0 FF03 " + Hex(BytesOf("New Song")) + "; 0 FF51 07A120; 0 FF58 04021808");
    EXPECT_EQ(Listing(song.tracks[16]),
              "0 FF03 " + Hex(BytesOf("Channel 16")) +
                  "; 240 BF0000; 240 BF2000; 240 CF00; 240 BF0764; 240 BF0A40; 240 BF0B7F; "
                  "240 BF5B28; 240 BF5D00");
    session_.Options().outputs.outputs.front().SetName("GM2 Soundset");
    session_.Options().sysexOptions.automatic = true;
    NewSong(session_, host_);
    EXPECT_TRUE(session_.Work().file.name.empty());
    EXPECT_EQ(Line(), "Prepared for GM2 Soundset: +1 GM2 System On");
}

TEST(KeptWordsTest, TellHowOftenAndOnWhichChannels) {
    instruments::PreparationReport report;
    EXPECT_TRUE(KeptLines(report, Language::English).empty());
    report.channels[0].earlyNotes = 2;
    report.channels[9].earlyNotes = 1;
    report.channels[9].partKept = true;
    report.channels[15].moved = 1;
    report.movedMessages = 3;
    EXPECT_EQ(
        KeptLines(report, Language::English),
        (std::vector<std::string>{"3 notes begin before the instrument is ready (channels 1, 10)",
                                  "1 setting stands behind the reset now (channel 16)",
                                  "1 channel stays drums or melody as before (channel 10)",
                                  "3 set-up messages stand behind the reset now"}));
    EXPECT_EQ(KeptName(KeptKind::EarlyNotes), "earlyNotes");
}

TEST_F(PrepareSongTest, TakesInstrumentsFromTheSettings) {
    ScratchSettings scratch;
    instruments::InstrumentSettings settings(scratch.Store());
    TakeInstrument(session_.Options(), settings);
    EXPECT_FALSE(session_.Work().sysexOptions.automatic); // nobody has said what the songs are for
    settings.WriteInstrument("Yamaha Tyros 5");
    settings.WriteInstrumentOf("USB", "Korg Pa1000 (Musikant)");
    TakeInstrument(session_.Options(), settings);
    EXPECT_TRUE(session_.Work().sysexOptions.automatic);
    std::array<std::string, 16> outputs;
    outputs[2] = outputs[5] = "USB";
    TakeOtherOutputs(session_.Options(), settings, outputs);
    EXPECT_EQ(session_.Work().outputs.outputs.size(), 2U);
    EXPECT_EQ(session_.Work().outputs.InstrumentOfChannel(0), 74);
    EXPECT_EQ(session_.Work().outputs.InstrumentOfChannel(5), 91);
}

} // namespace
} // namespace tracksmith::app
