#include <array>
#include <map>

#include "support/kept_sound.h"
#include "sysex_fixture.h"

#include "instruments/sysex/check_sysexs.h"
#include "instruments/sysex/operation_table.h"

// Every note of a song must begin on the instrument that it was prepared for in the state in which
// it began before.

namespace tracksmith::test {
namespace {

using instruments::DrumWay;

const std::vector<std::string> kResets{"7E7F0901F7", "7E7F0903F7", "4110421240007F0041F7",
                                       "43104C00007E00F7", "4100421240007F0041F7"};

// GS "use for rhythm part" of a channel.
Bytes GsPart(int device, int channel, int value) {
    const int part = 0x10 | (channel == 9 ? 0 : channel < 9 ? channel + 1 : channel);
    const int sum = (256 - (0x40 + part + 0x15 + value) % 128) % 128;
    Bytes bytes;
    for (const int byte : {0x41, device, 0x42, 0x12, 0x40, part, 0x15, value, sum, 0xF7}) {
        bytes.push_back(static_cast<std::uint8_t>(byte));
    }
    return bytes;
}

// A track of settings, notes and messages in a crowd: most of them in the first moments.
TrackBuilder Crowd(Dice& dice, int channel, bool allChannels, int division) {
    TrackBuilder track;
    const int events = dice.Roll(40);
    for (int i = 0; i < events; ++i) {
        const std::uint64_t delta =
            dice.Roll(3) != 0
                ? 0
                : static_cast<std::uint64_t>(dice.Roll(dice.Roll(3) == 0 ? 2 * division : 4));
        const int c = allChannels ? dice.Roll(16) : channel;
        const int control = 0xB0 | c;
        switch (dice.Roll(15)) {
            case 0:
            case 1:
            case 2:
                track.Note(delta, c, 40 + dice.Roll(20), 100);
                break;
            case 3:
            case 4:
                track.Program(delta, c, dice.Roll(128));
                break;
            case 5: {
                track.Short(delta, control, 0, 8 * dice.Roll(3));
                break;
            }
            case 6:
                track.Short(delta, control, 32, dice.Roll(3));
                break;
            case 7:
                track.Short(delta, control, 98 + dice.Roll(4), dice.Roll(3));
                break;
            case 8: {
                const int data[] = {6, 38, 96, 97};
                track.Short(delta, control, data[dice.Roll(4)], dice.Roll(128));
                break;
            }
            case 9:
                track.Short(delta, 0xE0 | c, dice.Roll(128), dice.Roll(128));
                break;
            case 10:
                if (dice.Roll(2) == 0) {
                    track.Raw(delta, {static_cast<std::uint8_t>(0xD0 | c), 70});
                } else {
                    track.Short(delta, 0xA0 | c, 50, 20 + dice.Roll(50));
                }
                break;
            case 11:
                track.Short(delta, control, 120 + dice.Roll(8), 0);
                break;
            case 12:
                if (dice.Roll(4) == 0) {
                    track.Sysex(delta, FromHex(kResets[static_cast<std::size_t>(dice.Roll(5))]));
                }
                break;
            default: {
                const int numbers[] = {7, 10, 11, 64, 91, 93, 1, 71};
                track.Short(delta, control, numbers[dice.Roll(8)], dice.Roll(128));
            }
        }
    }
    // Where the instrument is ready for certain.
    for (int i = 0; i < 3; ++i) {
        track.Note(static_cast<std::uint64_t>(division * 4), channel, 70 + i, 90);
    }
    return track.End(100);
}

struct CrowdSong {
    Bytes file;
    song::DecodeOptions options;
};

CrowdSong MakeCrowd(unsigned seed) {
    Dice dice(seed);
    const int divisions[] = {480, 480, 96, 24, 1, 30'000};
    const int division = divisions[dice.Roll(6)];
    const int tracks = 1 + dice.Roll(17);
    const bool format0 = tracks == 1 || dice.Roll(4) == 0;
    MidiFileBuilder file(format0 ? 0 : 1, division);
    for (int i = 0; i < (format0 ? 1 : tracks); ++i) {
        file.Track(Crowd(dice, i % 16, format0 || dice.Roll(4) == 0, division));
    }
    return {file.Build(), {.splitFormat0 = format0 && dice.Roll(2) == 0}};
}

instruments::InstrumentId Instrument(int number) {
    return static_cast<instruments::InstrumentId>(number);
}

std::vector<Loss> Unsaid(const song::Song& before, const song::Song& after,
                         const instruments::PreparationReport& report) {
    return UnsaidLosses(PlayedNotes(before, InstrumentModel(DrumRule::ByReset)),
                        PlayedNotes(after, ModelOf(report.instrument)), report);
}

// A second run changes nothing, nor does one after saving and loading.
void ExpectStable(song::Song& song, SysexSession& session) {
    const auto instrument = session.report.instrument;
    const Bytes saved = Save(song);
    SysexSession second({}, session.host);
    instruments::CheckSysexs(song, instrument, second);
    EXPECT_EQ(Save(song), saved);
    DecodedSong again(saved);
    SysexSession third({}, again.host);
    instruments::CheckSysexs(again.song, instrument, third);
    EXPECT_EQ(Save(again.song), saved);
}

class KeepSound : public testing::TestWithParam<int> {};

TEST_P(KeepSound, OfCrowdedBeginnings) {
    for (unsigned seed = 1; seed <= 100; ++seed) {
        SCOPED_TRACE(seed);
        const CrowdSong crowd = MakeCrowd(seed);
        DecodedSong before(crowd.file, crowd.options);
        DecodedSong after(crowd.file, crowd.options);
        SysexSession session({}, after.host);
        instruments::CheckSysexs(after.song, Instrument(GetParam()), session);
        EXPECT_EQ(song::CheckSong(after.song), "");
        ExpectStable(after.song, session);
        for (const Loss& loss : Unsaid(before.song, after.song, session.report)) {
            ADD_FAILURE() << "tick " << loss.note.tick << " channel " << loss.note.channel + 1
                          << ": " << loss.words;
            return;
        }
    }
}

// A song that makes channel 11 drums in some family's way must do so in every other that can.
Bytes DrumSong(const std::string& reset, const Bytes& part, int bank, std::uint64_t delay) {
    TrackBuilder head;
    head.Sysex(0, FromHex(reset));
    if (!part.empty()) {
        head.Sysex(60, part);
    }
    TrackBuilder drums;
    if (bank >= 0) {
        drums.Short(delay, 0xBA, 0, bank).Short(0, 0xBA, 32, 0);
    }
    drums.Program(bank >= 0 ? 0 : delay, 10, 8).Short(0, 0xBA, 7, 90);
    drums.Note(0, 10, 38, 100).NoteOff(60, 10, 38).Note(5000, 10, 36, 100);
    return MidiFileBuilder().Track(head.End()).Track(drums.NoteOff(60, 10, 36).End()).Build();
}

TEST_P(KeepSound, OfDrumPartsOfOtherFamilies) {
    const Bytes gs = GsPart(0x10, 10, 1);
    const Bytes xg = FromHex("43104C080A0702F7");
    for (const std::uint64_t delay : {200, 61}) {
        for (const Bytes& file :
             {DrumSong(kResets[2], gs, -1, delay), DrumSong(kResets[3], {}, 127, delay),
              DrumSong(kResets[3], xg, -1, delay), DrumSong(kResets[1], {}, 120, delay)}) {
            DecodedSong before(file);
            DecodedSong after(file);
            SysexSession session({}, after.host);
            const auto instrument = Instrument(GetParam());
            instruments::CheckSysexs(after.song, instrument, session);
            EXPECT_EQ(song::CheckSong(after.song), "");
            ExpectStable(after.song, session);
            const bool knowsNoWay = instruments::DrumWayOf(instrument) == DrumWay::None;
            EXPECT_EQ(session.report.channels[10].lostDrumNotes, knowsNoWay ? 2 : 0);
            EXPECT_EQ(Unsaid(before.song, after.song, session.report).size(), 0U);
        }
    }
}

// Under GS such a bank holds melody voices.
TEST_P(KeepSound, OfMelodiesInBanksOfDrumsElsewhere) {
    for (const int bank : {120, 126, 127}) {
        const Bytes file = DrumSong(kResets[2], {}, bank, 200);
        DecodedSong before(file);
        DecodedSong after(file);
        SysexSession session({}, after.host);
        instruments::CheckSysexs(after.song, Instrument(GetParam()), session);
        ExpectStable(after.song, session);
        EXPECT_EQ(session.report.channels[10].lostDrumNotes, 0);
        EXPECT_EQ(Unsaid(before.song, after.song, session.report).size(), 0U) << bank;
    }
}

INSTANTIATE_TEST_SUITE_P(Groups, KeepSound,
                         testing::Values(0, 2, 12, 60, 19, 87, 10, 73, 13, 16, 82, 26, 51, 69, 45,
                                         53, 56, 67, 100, 71, 72),
                         [](const auto& suite) {
                             return "Instrument" + std::to_string(suite.param);
                         });

} // namespace
} // namespace tracksmith::test
