#include <algorithm>
#include <gtest/gtest.h>
#include <optional>

#include "support/song_assert.h"

namespace tracksmith::song {
namespace {

using namespace test;

struct EventRule {
    const char* name;
    Bytes event;
    // What the track holds afterwards, with the event at tick 5.
    std::string listing;
    std::optional<LoadChange> change;
};

class EventRuleTest : public testing::TestWithParam<EventRule> {
protected:
    Bytes File() const {
        return MidiFileBuilder()
            .Track(TrackBuilder().Raw(5, GetParam().event).End(3000))
            .Track(TrackBuilder().End(3000))
            .Build();
    }
};

TEST_P(EventRuleTest, KeepsOrDropsAndReports) {
    const DecodedSong decoded(File());
    EXPECT_EQ(decoded.List(0), GetParam().listing);
    LoadReport expected;
    expected.Add(LoadChange::EndOfTrackMoved, 2);
    if (GetParam().change) {
        expected.Add(*GetParam().change);
    }
    EXPECT_EQ(decoded.result.report.counts, expected.counts);
}

using C = LoadChange;

INSTANTIATE_TEST_SUITE_P(
    Events, EventRuleTest,
    testing::Values(EventRule{"NoteOff", {0x85, 60, 3}, "5 853C03", {}},
                    EventRule{"NoteOn", {0x9F, 60, 3}, "5 9F3C03", {}},
                    EventRule{"NoteOnVelocity0", {0x93, 60, 0}, "5 833C11", C::NoteOnVelocityZero},
                    EventRule{"PolyPressure", {0xA1, 60, 0}, "5 A13C00", {}},
                    EventRule{"Control", {0xB2, 7, 127}, "5 B2077F", {}},
                    EventRule{"Program", {0xC3, 127}, "5 C37F", {}},
                    EventRule{"ChannelPressure", {0xD4, 0}, "5 D400", {}},
                    EventRule{"PitchBend", {0xE5, 1, 2}, "5 E50102", {}},
                    EventRule{"SecondByteOver127", {0xB0, 7, 200}, "5 B007C8", C::DataByteTooLarge},
                    EventRule{"Sysex", {0xF0, 2, 0x43, 0xF7}, "5 F0 43F7", {}},
                    EventRule{"EmptySysex", {0xF0, 0}, "", C::EmptySysexDropped},
                    EventRule{"Escape", {0xF7, 2, 0xFE, 0xF1}, "", C::EscapeDropped},
                    EventRule{"Clock", {0xF8}, "", C::SystemDropped},
                    EventRule{"Stop", {0xFC}, "", C::SystemDropped},
                    EventRule{"SequenceNumber", {0xFF, 0, 2, 0, 1}, "5 FF00 0001", {}},
                    EventRule{"SequenceNumberEmpty", {0xFF, 0, 0}, "", C::SequenceNumberDropped},
                    EventRule{"Text", {0xFF, 1, 2, 'H', 'i'}, "5 FF01 4869", {}},
                    EventRule{"EmptyText", {0xFF, 1, 0}, "5 FF01", {}},
                    EventRule{"Text9", {0xFF, 9, 1, 'x'}, "5 FF09 78", {}},
                    EventRule{"Text0A", {0xFF, 0x0A, 1, 'x'}, "", C::UnknownMetaDropped},
                    EventRule{"Meta1F", {0xFF, 0x1F, 0}, "", C::UnknownMetaDropped},
                    EventRule{"ChannelPrefix", {0xFF, 0x20, 1, 3}, "", C::ChannelPrefixDropped},
                    EventRule{"Port", {0xFF, 0x21, 1, 3}, "", C::PortEventDropped},
                    EventRule{"Meta4B", {0xFF, 0x4B, 1, 3}, "5 FF4B 03", {}},
                    EventRule{"Meta4BEmpty", {0xFF, 0x4B, 0}, "", C::UnknownMetaDropped},
                    EventRule{"Tempo", {0xFF, 0x51, 3, 7, 0xA1, 0x20}, "5 FF51 07A120", {}},
                    EventRule{"Smpte", {0xFF, 0x54, 5, 1, 2, 3, 4, 5}, "5 FF54 0102030405", {}},
                    EventRule{"TimeSignature", {0xFF, 0x58, 4, 3, 2, 24, 8}, "5 FF58 03021808", {}},
                    EventRule{"Key", {0xFF, 0x59, 2, 0xFF, 1}, "5 FF59 FF01", {}},
                    EventRule{"SequencerSpecific", {0xFF, 0x7F, 1, 0x43}, "5 FF7F 43", {}},
                    EventRule{"Meta60", {0xFF, 0x60, 1, 1}, "", C::UnknownMetaDropped},
                    EventRule{"MetaFF", {0xFF, 0xFF, 0}, "", C::UnknownMetaDropped}),
    [](const auto& rule) { return std::string(rule.param.name); });

TEST(ReaderEvents, RunningStatusStaysNoteOnBehindVelocity0) {
    const DecodedSong decoded(MidiFileBuilder()
                                  .Track(TrackBuilder()
                                             .Note(1, 2, 60, 0)
                                             .Raw(1, {61, 5})
                                             .Raw(1, {61, 0})
                                             .Program(1, 4, 9)
                                             .Raw(1, {10})
                                             .End())
                                  .Build());
    EXPECT_EQ(decoded.List(0), "1 823C11; 2 923D05; 3 823D11; 4 C409; 5 C40A");
    EXPECT_EQ(decoded.result.report[C::NoteOnVelocityZero], 2);
}

TEST(ReaderEvents, RunningStatusSurvivesOthersOnlyByOption) {
    const std::vector<Bytes> between = {
        {0xF0, 1, 0xF7}, {0xF7, 0}, {0xF8}, {0xFF, 1, 0}, {0xFF, 0x60, 0}};
    for (const Bytes& bytes : between) {
        const Bytes file =
            MidiFileBuilder()
                .Track(TrackBuilder().Note(0, 0, 60, 1).Raw(0, bytes).Raw(4, {62, 3}))
                .Build();
        EXPECT_NE(DecodeError(file, Language::English), "") << Hex(bytes);
        Song song;
        song.runningStatusAcrossSysex = 1;
        RecordingMessageHost host;
        DecodeMidiData(song, file, {}, host);
        EXPECT_EQ(EventText(*song.tracks[0].last->prev), "4 903E03") << Hex(bytes);
    }
}

TEST(ReaderEvents, RecordsCarryTheirFields) {
    const DecodedSong decoded(MidiFileBuilder()
                                  .Track(TrackBuilder()
                                             .Text(0, 3, "Piano")
                                             .Note(3, 9, 60, 0)
                                             .Program(0, 8, 5)
                                             .Sysex(2, {0x43, 0xF7})
                                             .End())
                                  .Track(TrackBuilder().End())
                                  .Build());
    const Track& track = decoded.song.tracks[0];
    EXPECT_EQ(EventText(*track.first), "0 FF21 00");
    EXPECT_EQ(track.eventCount, 6);
    EXPECT_EQ(track.channel, 9);
    EXPECT_EQ(track.name, "Piano");
    EXPECT_EQ(track.trackFlags, 1);
    EXPECT_EQ(track.trackMark, 0xFF);
    EXPECT_EQ(track.cursor, track.first);
    EXPECT_EQ(decoded.song.tracks[1].channel, 0xFF);
    EXPECT_EQ(decoded.song.tracks[1].eventCount, 2);
    const MidiEvent& note = *track.first->next->next;
    EXPECT_EQ(note.length, 3);
    EXPECT_EQ(note.metaType, 0xFF);
    EXPECT_EQ(note.origData1, 60);
    EXPECT_EQ(note.origData2, note.data2);
    EXPECT_FALSE(note.pairLink);
    EXPECT_FALSE(note.noteOnLink);
    const MidiEvent& sysex = *track.last->prev;
    EXPECT_EQ(sysex.kind, kLongMessage);
    EXPECT_EQ(sysex.length, 2);
    EXPECT_EQ(sysex.metaType, 0xFF);
}

struct LengthRow {
    const char* name;
    TrackBuilder track;
    int songLength;
};

class SongLengthTest : public testing::TestWithParam<LengthRow> {};

TEST_P(SongLengthTest, FollowsFromTheLastCountedEvent) {
    const DecodedSong decoded(
        MidiFileBuilder().Track(GetParam().track).Track(TrackBuilder().Text(20, 1, "x")).Build());
    EXPECT_EQ(decoded.song.songLength, GetParam().songLength);
    EXPECT_EQ(decoded.song.tracks[0].last->tick, GetParam().songLength);
    EXPECT_EQ(decoded.song.tracks[1].last->tick, GetParam().songLength);
    EXPECT_EQ(decoded.song.tracks[1].eventCount, 3);
    EXPECT_EQ(decoded.result.report[C::EndOfTrackAdded], 1);
}

INSTANTIATE_TEST_SUITE_P(
    Files, SongLengthTest,
    testing::Values(LengthRow{"Tick5", TrackBuilder().Note(5, 0, 60, 1).End(), 999},
                    LengthRow{"Tick989", TrackBuilder().Note(989, 0, 60, 1).End(), 999},
                    LengthRow{"Tick990", TrackBuilder().Note(990, 0, 60, 1).End(), 1000},
                    LengthRow{"Tick2000", TrackBuilder().Note(2000, 0, 60, 1).End(7000), 2010},
                    LengthRow{"Text", TrackBuilder().Text(2000, 1, "x").End(), 2010},
                    LengthRow{"DroppedPrefix", TrackBuilder().Meta(2000, 0x20, {1}).End(), 2010},
                    LengthRow{"DroppedClock", TrackBuilder().Raw(2000, {0xF8}).End(), 2010},
                    LengthRow{"EmptySysex", TrackBuilder().Sysex(2000, {}).End(), 2010},
                    LengthRow{"Tempo", TrackBuilder().Tempo(2000, 1).End(), 999},
                    LengthRow{"Meta4B", TrackBuilder().Meta(2000, 0x4B, {1}).End(), 999},
                    LengthRow{"Key", TrackBuilder().Meta(2000, 0x59, {1, 0}).End(), 999}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(ReaderEvents, BytesBehindEndOfTrackAndLastTrackAreIgnored) {
    const DecodedSong decoded(
        MidiFileBuilder()
            .Track(TrackBuilder().Note(0, 0, 60, 1).End().Loose({0xFE, 0xFE, 0xFE}))
            .Track(TrackBuilder().Note(7, 1, 61, 1).End())
            .Loose(BytesOf("XTra"))
            .Build());
    EXPECT_EQ(decoded.List(1), "7 913D01");
    EXPECT_EQ(decoded.result.report[C::BytesAfterEndOfTrack], 3);
    EXPECT_EQ(decoded.result.report[C::BytesAfterLastTrack], 4);
}

TEST(ReaderEvents, AnEventMayReachBeyondItsChunk) {
    TrackBuilder track;
    track.Note(0, 0, 60, 1).Note(9, 0, 61, 1);
    Bytes chunk = track.Chunk();
    chunk[7] = static_cast<std::uint8_t>(chunk[7] - 2); // the declared length ends in the event
    const DecodedSong decoded(MidiFileBuilder()
                                  .Loose(chunk)
                                  .Track(TrackBuilder().Note(1, 1, 62, 1).End())
                                  .Promise(2)
                                  .Build());
    EXPECT_EQ(decoded.List(0), "0 903C01; 9 903D01");
    EXPECT_EQ(decoded.List(1), "1 913E01");
}

TEST(ReaderEvents, OnlyTheFirstNameCountsAndOnTrack0OnlyItIsSaved) {
    const TrackBuilder names = TrackBuilder().Text(0, 3, "One").Text(4, 3, "Two").End();
    const DecodedSong decoded(MidiFileBuilder().Track(names).Track(names).Build());
    EXPECT_EQ(decoded.song.tracks[0].name, "One");
    EXPECT_EQ(decoded.song.tracks[1].name, "One");
    EXPECT_EQ(decoded.List(0), "0 FF03 4F6E65; 4 FF03");
    EXPECT_EQ(decoded.List(1), "0 FF03 4F6E65; 4 FF03 54776F");
    EXPECT_EQ(decoded.song.tracks[0].last->prev->length, 0);
    EXPECT_EQ(decoded.result.report[C::NameBlanked], 1);
}

TEST(ReaderEvents, TracksAreIgnoredByNameOnlyByOption) {
    const Bytes file = MidiFileBuilder()
                           .Track(TrackBuilder().Text(0, 3, "Drums").End())
                           .Track(TrackBuilder().Text(0, 3, "my zel_ignore part").End())
                           .Track(TrackBuilder().Text(0, 1, "zel_ignore").End())
                           .Build();
    DecodeOptions options;
    const DecodedSong all(file, options);
    options.honourZelIgnore = true;
    const DecodedSong some(file, options);
    const std::vector<int> expected = {0, 1, 0};
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(all.song.tracks[i].ignored, 0);
        EXPECT_EQ(some.song.tracks[i].ignored, expected[i]) << i;
    }
    EXPECT_EQ(all.result.report[C::TrackIgnored], 0);
    EXPECT_EQ(some.result.report[C::TrackIgnored], 1);
}

TEST(ReaderEvents, TemposAndTimeSignaturesComeFromTheFirstTrackOnly) {
    const DecodedSong decoded(MidiFileBuilder()
                                  .Track(TrackBuilder()
                                             .Tempo(0, 0)
                                             .Tempo(10, 400'000)
                                             .Meta(10, 0x51, {0x07, 0xA1})
                                             .TimeSignature(0, 6, 3)
                                             .Meta(5, 0x58, {3})
                                             .End())
                                  .Track(TrackBuilder().Tempo(7, 1).TimeSignature(0, 1, 1).End())
                                  .Build());
    const auto& tempos = decoded.song.tempos;
    ASSERT_EQ(decoded.song.tempoCount, 4); // with the spare one
    EXPECT_EQ(tempos[0].tempo, kDefaultTempo);
    EXPECT_EQ(tempos[0].bpm, 120);
    EXPECT_EQ(tempos[1].fileTempo, 400'000);
    EXPECT_EQ(tempos[1].savedTempo, 400'000);
    EXPECT_EQ(tempos[1].bpm, 150);
    EXPECT_EQ(tempos[1].tick, 10);
    EXPECT_EQ(tempos[2].tempo, 0x07A100);
    EXPECT_EQ(decoded.List(0).substr(0, 13), "0 FF51 000000");
    EXPECT_EQ(decoded.result.report[C::TempoZeroReplaced], 1);
    EXPECT_FALSE(decoded.result.tempoMapInFirstTrack);
    const auto& timeSignatures = decoded.song.timeSignatures;
    ASSERT_EQ(decoded.song.timeSignatureCount, 3);
    EXPECT_EQ(timeSignatures[0].numerator, 6);
    EXPECT_EQ(timeSignatures[0].denominator, 8);
    EXPECT_EQ(timeSignatures[0].clocksPerClick, 24);
    EXPECT_EQ(timeSignatures[0].thirtySecondsPerQuarter, 8);
    EXPECT_EQ(timeSignatures[0].tick, 20);
    EXPECT_EQ(timeSignatures[1].denominator, 1); // missing bytes count as 0
    EXPECT_EQ(timeSignatures[1].tick, 25);
}

TEST(ReaderEvents, ASongWithoutTempoHasOneUsableTempo) {
    const DecodedSong decoded(MidiFileBuilder().Track(TrackBuilder().End()).Build());
    ASSERT_EQ(decoded.song.tempoCount, 2);
    EXPECT_EQ(decoded.song.tempos[0].tick, 0);
    EXPECT_EQ(decoded.song.tempos[0].tempo, 500'000);
    EXPECT_EQ(decoded.song.tempos[0].bpm, 120);
}

TEST(ReaderEvents, KeySignaturesAreListedByTrack) {
    const DecodedSong decoded(
        MidiFileBuilder()
            .Track(TrackBuilder().End())
            .Track(TrackBuilder().Meta(3, 0x59, {0xFD, 1}).Meta(4, 0x59, {2}).End())
            .Build());
    EXPECT_TRUE(decoded.song.keySignatures[0].empty());
    ASSERT_EQ(decoded.song.keySignatures[1].size(), 2U);
    EXPECT_EQ(decoded.song.keySignatures[1][0].sharps, -3);
    EXPECT_EQ(decoded.song.keySignatures[1][0].minor, 1);
    EXPECT_EQ(decoded.song.keySignatures[1][0].tick, 3);
    EXPECT_EQ(decoded.song.keySignatures[1][1].sharps, 2);
    EXPECT_EQ(decoded.song.keySignatures[1][1].minor, 0);
    EXPECT_EQ(decoded.song.keySignatures[1][1].tick, 7);
}

TEST(ReaderEvents, TheScannerCountsWhatTheDecoderReads) {
    const Bytes file = RandomFile(5, 1);
    const DecodedSong decoded(file);
    RecordingMessageHost host;
    const ScanResult scan = ScanMidiData(file, host);
    EXPECT_EQ(std::max(scan.songLength + 10, 999), decoded.song.songLength);
    std::int64_t events = 0;
    for (const Track& track : decoded.song.tracks) {
        events += track.eventCount;
    }
    EXPECT_EQ(scan.events, static_cast<std::uint64_t>(events));
    EXPECT_NE(scan.checksum, ScanMidiData(RandomFile(6, 1), host).checksum);
}

} // namespace
} // namespace tracksmith::song
