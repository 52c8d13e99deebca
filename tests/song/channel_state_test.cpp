#include "song/channel_state.h"

#include <gtest/gtest.h>
#include <map>

#include "support/song_assert.h"

#include "song/mode_message.h"

namespace tracksmith::song {
namespace {

using namespace test;

/// What the events of the first track have set.
ChannelState StateBehind(const DecodedSong& decoded) {
    ChannelState state;
    for (ConstEventLink event = decoded.song.tracks[0].first; event; event = event->next) {
        state.Take(event);
    }
    return state;
}

std::string Text(const Setting& setting) {
    return !setting.Known() ? "-"
           : setting.event
               ? std::to_string(setting.value) + "@" + std::to_string(setting.event->tick)
               : std::to_string(setting.value) + "@reset";
}

TEST(ChannelState, KnowsTheValuesAndTheEventsThatSetThem) {
    DecodedSong decoded(MidiFileBuilder()
                            .Track(TrackBuilder()
                                       .Short(1, 0xB0, 0, 8)
                                       .Program(1, 0, 30)
                                       .Short(1, 0xB0, 0, 9)
                                       .Short(1, 0xE0, 0x7F, 0x7F)
                                       .Raw(1, {0xD0, 5})
                                       .Short(1, 0xB0, 11, 0x80 | 50)
                                       .Note(1, 0, 60, 1)
                                       .Short(1, 0xA0, 60, 9)
                                       .Short(1, 0xB0, 11, 70)
                                       .Short(1, 0xB0, 97, 1)
                                       .Short(1, 0xB0, 123, 0)
                                       .Meta(1, 0x51, {7, 0xA1, 0x20})
                                       .End())
                            .Build());
    decoded.song.tracks[0].last->prev->prev->prev->prev->length = 0; // a removed expression
    const ChannelState state = StateBehind(decoded);
    EXPECT_EQ(Text(state.program), "30@2");
    EXPECT_EQ(Text(state.programBankMsb), "8@1");
    EXPECT_EQ(Text(state.programBankLsb), "-");
    EXPECT_EQ(Text(state.controllers[kBankMsb]), "9@3");
    EXPECT_EQ(Text(state.bend), "16383@4");
    EXPECT_EQ(Text(state.pressure), "5@5");
    EXPECT_EQ(Text(state.controllers[kExpression]), "50@6");
    EXPECT_EQ(Text(state.controllers[kDataDecrement]), "-");
    EXPECT_EQ(Text(state.controllers[kAllNotesOff]), "-");
}

// RP-015 names what Reset All Controllers puts back; what was never set stays so.
TEST(ChannelState, ResetAllControllersPutsBackWhatThePracticeNames) {
    TrackBuilder track;
    for (int controller = 0; controller < 120; ++controller) {
        track.Short(controller == 0 ? 1 : 0, 0xB0, controller, 33);
    }
    track.Short(0, 0xE0, 1, 2).Raw(0, {0xD0, 5}).Program(0, 0, 7).Short(1, 0xB0, 121, 0);
    const DecodedSong decoded(MidiFileBuilder().Track(track.End()).Build());
    const ChannelState state = StateBehind(decoded);
    std::map<int, int> putBack;
    for (std::uint8_t controller = 0; controller < 120; ++controller) {
        const Setting& setting = state.controllers.at(controller);
        if (setting.Known() && !setting.event) {
            putBack[controller] = setting.value;
        } else if (setting.Known()) {
            EXPECT_EQ(Text(setting), "33@1") << int{controller};
        }
    }
    EXPECT_EQ(putBack, (std::map<int, int>{{1, 0},
                                           {11, 127},
                                           {64, 0},
                                           {65, 0},
                                           {66, 0},
                                           {67, 0},
                                           {98, 127},
                                           {99, 127},
                                           {100, 127},
                                           {101, 127}}));
    EXPECT_EQ(Text(state.bend), "8192@reset");
    EXPECT_EQ(Text(state.pressure), "0@reset");
    EXPECT_EQ(Text(state.program), "7@1");
    EXPECT_FALSE(state.Selected().Selects());
    const DecodedSong alone(MidiFileBuilder().Track(TrackBuilder().Short(0, 0xB0, 121, 0)).Build());
    EXPECT_EQ(Text(StateBehind(alone).controllers[kExpression]), "-");
    EXPECT_EQ(Text(StateBehind(alone).bend), "-");
}

// However often and in whatever order parameters are entered, they are listed by their last entry.
TEST(ParameterList, ListsByTheLastEntry) {
    Dice dice(5);
    ParameterList list;
    std::vector<ParameterSetting> expected;
    for (int i = 0; i < 3000; ++i) {
        const ParameterNumber number{dice.Roll(2) == 0, static_cast<std::uint8_t>(dice.Roll(5)),
                                     static_cast<std::uint8_t>(dice.Roll(5))};
        const bool msb = dice.Roll(2) == 0;
        const Setting value{static_cast<std::uint16_t>(dice.Roll(128)), {}};
        list.Enter(number, msb, value);
        ParameterSetting entry{number, {}, {}};
        std::erase_if(expected, [&](const ParameterSetting& known) {
            entry = known.number == number ? known : entry;
            return known.number == number;
        });
        (msb ? entry.dataMsb : entry.dataLsb) = value;
        expected.push_back(entry);
        ASSERT_EQ(list.Find(number)->dataMsb, entry.dataMsb) << i;
    }
    std::size_t place = 0;
    list.ForEach([&](const ParameterSetting& entry) {
        ASSERT_LT(place, expected.size());
        EXPECT_EQ(entry.number, expected[place].number);
        EXPECT_EQ(entry.dataLsb, expected[place].dataLsb);
        ++place;
    });
    EXPECT_EQ(place, expected.size());
    EXPECT_EQ(list.Find({true, 9, 9}), nullptr);
    list.Clear();
    EXPECT_EQ(list.Count(), 0U);
    list.Enter({true, 0, 0}, true, {5, {}});
    EXPECT_EQ(list.Find({true, 0, 0})->dataMsb.value, 5);
    EXPECT_EQ(list.Find({true, 0, 1}), nullptr);
}

// The numbers are those of MIDI 1.0.
TEST(ChannelState, EntersBothPartsOfAParameter) {
    ChannelState state;
    state.parameters.Reserve(4);
    for (const auto& [number, value] : {std::pair{101, 0}, {100, 2}, {6, 60}, {38, 9}}) {
        state.Take(0xB0, static_cast<std::uint8_t>(number), static_cast<std::uint8_t>(value), {});
    }
    const ParameterSetting* tuning = state.parameters.Find({true, 0, 2});
    ASSERT_NE(tuning, nullptr);
    EXPECT_EQ(tuning->dataMsb.value, 60);
    EXPECT_EQ(tuning->dataLsb.value, 9);
}

TEST(ModeMessage, KnowsResetsAndRhythmParts) {
    const auto mode = [](const Bytes& message) { return ModeOfReset(WithoutFrame(message)); };
    EXPECT_EQ(mode({0xF0, 0x7E, 0x7F, 0x09, 0x01, 0xF7}), SynthMode::Gm);
    EXPECT_EQ(mode({0x7E, 0x05, 0x09, 0x03, 0xF7}), SynthMode::Gm2);
    EXPECT_EQ(mode({0x41, 0x10, 0x42, 0x12, 0x40, 0x00, 0x7F, 0x00, 0x41, 0xF7}), SynthMode::Gs);
    EXPECT_EQ(mode({0x41, 0x10, 0x42, 0x12, 0x00, 0x00, 0x7F, 0x01, 0x00, 0xF7}), SynthMode::Gs);
    EXPECT_EQ(mode({0x43, 0x12, 0x4C, 0x00, 0x00, 0x7E, 0x00, 0xF7}), SynthMode::Xg);
    // A wrong checksum, another value, more values, the address of the volume.
    EXPECT_EQ(mode({0x41, 0x10, 0x42, 0x12, 0x40, 0x00, 0x7F, 0x00, 0x40, 0xF7}), std::nullopt);
    EXPECT_EQ(mode({0x41, 0x10, 0x42, 0x12, 0x40, 0x00, 0x7F, 0x40, 0x01, 0xF7}), std::nullopt);
    EXPECT_EQ(mode({0x43, 0x10, 0x4C, 0x00, 0x00, 0x7E, 0x00, 0x00, 0xF7}), std::nullopt);
    EXPECT_EQ(mode({0x43, 0x10, 0x4C, 0x00, 0x00, 0x04, 0x00, 0xF7}), std::nullopt);
    // GS counts its parts 10, 1 to 9, 11 to 16.
    for (int part = 0; part < 16; ++part) {
        const int address = 0x10 | part;
        const int sum = (128 - (0x40 + address + 0x15 + 2) % 128) % 128;
        const Bytes message{0x41, 0x10, 0x42,
                            0x12, 0x40, static_cast<std::uint8_t>(address),
                            0x15, 0x02, static_cast<std::uint8_t>(sum)};
        const int channel = part == 0 ? 9 : part < 10 ? part - 1 : part;
        EXPECT_EQ(RhythmPartOf(message), (RhythmPart{static_cast<std::uint8_t>(channel), true}))
            << part;
    }
}

// The device number aside, one other byte makes another message of a reset or a part mode, as does
// a missing or a further one.
TEST(ModeMessage, NothingElseIsTakenForOne) {
    const auto fits = [](Bytes message) {
        if (message[0] == 0x41) { // the checksum fits
            unsigned sum = 0;
            for (std::size_t i = 4; i + 1 < message.size(); ++i) {
                sum += message[i];
            }
            message.back() = static_cast<std::uint8_t>((128 - sum % 128) % 128);
        }
        return ModeOfReset(message) || RhythmPartOf(message);
    };
    for (const Bytes& message : {Bytes{0x7E, 0x7F, 0x09, 0x01}, Bytes{0x7E, 0x7F, 0x09, 0x03},
                                 Bytes{0x41, 0x10, 0x42, 0x12, 0x40, 0x00, 0x7F, 0x00, 0x00},
                                 Bytes{0x41, 0x10, 0x42, 0x12, 0x00, 0x00, 0x7F, 0x01, 0x00},
                                 Bytes{0x43, 0x10, 0x4C, 0x00, 0x00, 0x7E, 0x00},
                                 Bytes{0x43, 0x10, 0x4C, 0x00, 0x00, 0x7F, 0x00},
                                 Bytes{0x41, 0x10, 0x42, 0x12, 0x40, 0x1F, 0x15, 0x02, 0x00},
                                 Bytes{0x43, 0x10, 0x4C, 0x08, 0x0F, 0x07, 0x02}}) {
        SCOPED_TRACE(Hex(message));
        EXPECT_TRUE(fits(message));
        const bool roland = message[0] == 0x41;
        const bool part =
            RhythmPartOf(message).has_value() || (message.size() > 5 && message[5] == 0x1F);
        for (std::size_t i = 0; i < message.size() - (roland ? 1 : 0); ++i) {
            Bytes other = message;
            other[i] ^= 0x24;
            const bool free = i == 1 || (part && i + (roland ? 2 : 1) == message.size());
            EXPECT_EQ(fits(other), free && (i != 1 || message[0] != 0x43)) << i;
        }
        EXPECT_FALSE(fits(Bytes(message.begin(), message.end() - 1)));
        if (message[0] != 0x7E) {
            Bytes longer = message;
            longer.insert(longer.end() - 1, 0);
            EXPECT_FALSE(fits(longer));
        }
    }
    EXPECT_EQ(RhythmPartOf(Bytes{0x43, 0x1A, 0x4C, 0x08, 0x0F, 0x07, 0x00}),
              (RhythmPart{15, false}));
    EXPECT_EQ(RhythmPartOf(Bytes{0x43, 0x10, 0x4C, 0x08, 0x10, 0x07, 0x00}), std::nullopt);
    EXPECT_EQ(int{BankMsbAfterReset(SynthMode::Gm2, true)}, 120);
    EXPECT_EQ(int{BankMsbAfterReset(SynthMode::Gm2, false)}, 121);
    EXPECT_EQ(int{BankMsbAfterReset(SynthMode::Xg, true)}, 127);
    for (const SynthMode mode : {SynthMode::Gm, SynthMode::Gs, SynthMode::Xg}) {
        EXPECT_EQ(int{BankMsbAfterReset(mode, false)}, 0);
    }
}

} // namespace
} // namespace tracksmith::song
