#include <gtest/gtest.h>

#include "support/song_assert.h"

#include "song/reader_fault.h"

namespace tracksmith::song {
namespace {

using namespace test;

// The first event of the first track stands behind the file's and the chunk's header.
constexpr int kFirstEvent = 22;

Bytes OneTrack(const TrackBuilder& track) {
    return MidiFileBuilder().Track(track).Build();
}

TrackBuilder GoodTrack() {
    return TrackBuilder().Note(0, 0, 60, 100).NoteOff(480, 0, 60).End();
}

std::string InvalidOffset(int position, int tick) {
    return "Fehler in der MidiDatei: \"ungültiger Offset\"!\nSource pointer: " +
           std::to_string(position) + "\nSong position:  " + std::to_string(tick);
}

constexpr const char* kEnglishCommand = "Error in midifile: \"PrevCommand < $80\"!";

struct Fault {
    const char* name;
    Bytes file;
    std::string german;
    std::string english;
};

class ReaderErrorTest : public testing::TestWithParam<Fault> {};

TEST_P(ReaderErrorTest, IsShownAndRaisedInBothLanguages) {
    EXPECT_EQ(DecodeError(GetParam().file, Language::German), GetParam().german);
    EXPECT_EQ(DecodeError(GetParam().file, Language::English), GetParam().english);
}

TEST_P(ReaderErrorTest, IsMetByTheScannerToo) {
    RecordingMessageHost host;
    EXPECT_THROW(ScanMidiData(GetParam().file, host), EMidiError);
    EXPECT_EQ(host.messages, std::vector<std::string>{GetParam().english});
}

Bytes Patched(Bytes file, std::size_t at, std::uint8_t value) {
    file.at(at) = value;
    return file;
}

Fault SameInBoth(const char* name, const Bytes& file, const std::string& text) {
    return {name, file, text, text};
}

std::vector<Fault> Faults() {
    const Bytes good = OneTrack(GoodTrack());
    std::vector<Fault> faults;
    const char* const header[] = {"HeaderByte0", "HeaderByte1", "HeaderByte2", "HeaderByte3"};
    for (std::size_t i = 0; i < 4; ++i) {
        faults.push_back(
            SameInBoth(header[i], Patched(good, i, 'm'), "Error in midi file header - 1!"));
    }
    faults.push_back(
        SameInBoth("HeaderLength7", Patched(good, 7, 7), "Error in midi file header - 2!"));
    faults.push_back(
        SameInBoth("HeaderLengthHigh", Patched(good, 4, 1), "Error in midi file header - 2!"));
    faults.push_back(SameInBoth("NoTracks", MidiFileBuilder().Promise(0).Loose(Bytes(20)).Build(),
                                "Error in midifile!"));
    faults.push_back({"OtherChunk", Patched(good, 17, 'x'), "Fehler im TrackHeader 0 bei 14!",
                      "Error in track header 0 at 14!"});
    const std::string second = std::to_string(good.size());
    faults.push_back({"SecondTrackMissing", MidiFileBuilder().Track(GoodTrack()).Promise(2).Build(),
                      "Fehler im TrackHeader 1 bei " + second + "!",
                      "Error in track header 1 at " + second + "!"});
    faults.push_back({"NoRunningStatus", OneTrack(TrackBuilder().Raw(7, {60, 64}).End()),
                      "Fehler in der MidiDatei: \"PrevCommand < $80\"!\nSource pointer: 23\n"
                      "Data byte:        60\nSong position:  7",
                      kEnglishCommand});
    faults.push_back({"RunningStatusEndsAtMeta",
                      OneTrack(TrackBuilder().Note(0, 0, 60, 9).Text(0, 1, "").Raw(3, {61, 9})),
                      "Fehler in der MidiDatei: \"PrevCommand < $80\"!\nSource pointer: 31\n"
                      "Data byte:        61\nSong position:  3",
                      kEnglishCommand});
    faults.push_back({"DataByteTooLarge", OneTrack(TrackBuilder().Raw(0, {0x90, 200, 1}).End()),
                      "Fehler im Midifile bei Position: 24\nWert1 = 200\n"
                      "Es dürfte nicht größer als 127 sein!",
                      "Error in Midifile at position: 24\nValue1 = 200\n"
                      "shouldn't be greater than 127!"});
    faults.push_back({"DeltaOver32Bits",
                      OneTrack(TrackBuilder().Loose({0x90, 0x80, 0x80, 0x80, 0x00}).End()),
                      InvalidOffset(kFirstEvent + 5, 0), kEnglishCommand});
    faults.push_back({"SysexBehindTheFile",
                      OneTrack(TrackBuilder().Raw(5, {0xF0, 0x20, 0x43, 0xF7})),
                      InvalidOffset(kFirstEvent + 3, 5), kEnglishCommand});
    faults.push_back({"MetaBehindTheFile",
                      OneTrack(TrackBuilder().Raw(0, {0xFF, 0x01, 0x87, 0xFF, 0xFF, 0xFF, 0x7F})),
                      InvalidOffset(kFirstEvent + 8, 0), kEnglishCommand});
    faults.push_back(SameInBoth("EndOfTrackWithBytes",
                                OneTrack(TrackBuilder().Meta(0, 0x2F, {0}).End()),
                                "Error in midifile - Cmd $2F with length <> 0!"));
    return faults;
}

std::string NameOf(const testing::TestParamInfo<Fault>& fault) {
    return fault.param.name;
}

INSTANTIATE_TEST_SUITE_P(Files, ReaderErrorTest, testing::ValuesIn(Faults()), NameOf);

TEST(ReaderErrors, UndefinedCommandsAreRefused) {
    for (int status = 0xF1; status <= 0xFE; ++status) {
        if (status >= 0xF7 && status <= 0xFC) {
            continue;
        }
        const Bytes file =
            OneTrack(TrackBuilder().Raw(0, {static_cast<std::uint8_t>(status), 0, 0}).End());
        EXPECT_EQ(DecodeError(file, Language::English),
                  status < 0xF7 ? "Error in midifile - Command is $F1 to $F6!"
                                : "Error in midifile - Command = $FE!");
    }
}

// Only the building pass can see these; they are composed from the same pieces.
TEST(ReaderErrors, BuildingPassHasItsOwnWordings) {
    const std::vector<std::pair<FaultKind, std::string>> rows = {
        {FaultKind::TrackHeader, "Error in track header - 1!"},
        {FaultKind::RunningStatusTooHigh, "Error in midifile - A!"},
        {FaultKind::CommandF1ToF6, "Error in midifile - B!"},
        {FaultKind::CommandFE, "Error in midifile - C!"},
        {FaultKind::EndOfTrackLength, "Error in midifile - D!"},
        {FaultKind::StatusTooLow, "Error in midifile - E!"}};
    for (const auto& [kind, text] : rows) {
        for (const Language language : {Language::German, Language::English}) {
            EXPECT_EQ(FaultText({kind, 1, 2, 3}, ReaderPass::Build, language), text);
        }
    }
    EXPECT_EQ(FaultText({FaultKind::RunningStatusTooHigh, 1, 2, 240}, ReaderPass::Measure,
                        Language::English),
              "Fehler in der MidiDatei - PrevCommand >= $F0!\nPrevCommand: 240");
}

TEST(ReaderErrors, AFirstPassErrorWinsOverAnEarlierSecondPassError) {
    const TrackBuilder tooLarge = TrackBuilder().Raw(0, {0xB0, 128, 0}).End();
    const Bytes file =
        MidiFileBuilder().Track(tooLarge).Track(TrackBuilder().Raw(0, {0xFE})).Build();
    EXPECT_EQ(DecodeError(file, Language::German), "Error in midifile - Command = $FE!");
    const Bytes missing = MidiFileBuilder().Track(tooLarge).Promise(2).Build();
    EXPECT_EQ(DecodeError(missing, Language::English),
              "Error in track header 1 at " + std::to_string(missing.size()) + "!");
    // of two second-pass errors the first counts
    const Bytes two = MidiFileBuilder()
                          .Track(TrackBuilder().Raw(0, {0xC3, 129}).Raw(0, {0x90, 130, 0}).End())
                          .Build();
    EXPECT_NE(DecodeError(two, Language::English).find("Value1 = 129"), std::string::npos);
}

TEST(ReaderErrors, EveryTruncationIsRefused) {
    for (const unsigned seed : {1U, 2U, 3U}) {
        const Bytes file = RandomFile(seed, seed == 1 ? 0 : 1);
        DecodedSong whole(file);
        for (std::size_t size = 0; size < file.size(); ++size) {
            // A buffer of its own, so that AddressSanitizer sees every byte read behind it.
            const Bytes cut(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size));
            EXPECT_NE(DecodeError(cut, Language::English), "") << size << " bytes";
        }
    }
}

TEST(ReaderErrors, QuantitiesMayBePaddedAndTicksMayReachTheirLimit) {
    constexpr std::uint64_t kMostTick = (1ULL << 31) - 65'536;
    const DecodedSong padded(OneTrack(
        TrackBuilder().Loose({0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x05, 0x90, 60, 1}).End()));
    EXPECT_EQ(padded.List(0), "5 903C01");
    const DecodedSong latest(OneTrack(TrackBuilder().Note(kMostTick, 0, 60, 1).End()));
    EXPECT_EQ(latest.song.songLength, static_cast<std::int32_t>(kMostTick));
    EXPECT_EQ(DecodeError(OneTrack(TrackBuilder().Note(kMostTick + 1, 0, 60, 1).End()),
                          Language::English),
              kEnglishCommand);
    TrackBuilder sum;
    for (int i = 0; i < 9; ++i) {
        sum.Note((1ULL << 28) - 1, 0, 60, 1);
    }
    EXPECT_EQ(DecodeError(OneTrack(sum.End()), Language::English), kEnglishCommand);
}

TEST(ReaderErrors, NothingIsSizedFromTheHeadersPromise) {
    const Bytes file = MidiFileBuilder().Track(GoodTrack()).Promise(65'535).Build();
    Song song;
    RecordingMessageHost host;
    EXPECT_THROW(DecodeMidiData(song, file, {}, host), EMidiError);
    EXPECT_EQ(host.messages.at(0),
              "Error in track header 1 at " + std::to_string(file.size()) + "!");
    EXPECT_LE(song.tracks.capacity(), 16U);
    EXPECT_LE(song.keySignatures.capacity(), 16U);
    EXPECT_LT(song.pool.UsedBytes(), 4096U);
}

TEST(ReaderErrors, ASongOverTheBudgetIsRefusedBeforeItIsBuilt) {
    TrackBuilder track;
    for (int i = 0; i < 5000; ++i) {
        track.Note(1, 0, 60, 1);
    }
    const Bytes file = OneTrack(TrackBuilder(track).End());
    DecodeOptions options;
    options.memoryBudget = 5000 * 48 / 2;
    EXPECT_EQ(DecodeError(file, Language::German, options),
              "Speicherzuordnungsfehler: Bitte mehr Speicher!");
    EXPECT_EQ(DecodeError(file, Language::English, options), "Error allocating memory!");
    options.memoryBudget = 5000 * 48 * 2;
    EXPECT_EQ(DecodedSong(file, options).song.tracks[0].eventCount, 5002);
    const Bytes large = OneTrack(track.Sysex(0, Bytes(100'000, 1)).End());
    options.memoryBudget = 5003 * 48 + 90'000;
    EXPECT_EQ(DecodeError(large, Language::English, options), "Error allocating memory!");
    options.memoryBudget = 5003 * 48 + 110'000;
    EXPECT_EQ(DecodedSong(large, options).song.tracks[0].eventCount, 5003);
}

TEST(ReaderErrors, TheSongCanBeLoadedAgainAfterAFault) {
    Song song;
    RecordingMessageHost host;
    EXPECT_THROW(
        DecodeMidiData(song, OneTrack(TrackBuilder().Note(0, 0, 60, 1).Raw(0, {0xFE})), {}, host),
        EMidiError);
    ClearSong(song);
    DecodeMidiData(song, OneTrack(GoodTrack()), {}, host);
    EXPECT_EQ(CheckSong(song), "");
    EXPECT_EQ(Listing(song.tracks[0]), "0 903C64; 480 803C40");
}

} // namespace
} // namespace tracksmith::song
