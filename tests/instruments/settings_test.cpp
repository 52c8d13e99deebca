#include <array>
#include <gtest/gtest.h>

#include "support/scratch_settings.h"

#include "instruments/instrument_settings.h"

namespace tracksmith::instruments {
namespace {

int CountWith(Capability capability) {
    int count = 0;
    for (const Instrument& instrument : Catalogue()) {
        count += HasCapability(instrument.name, capability) ? 1 : 0;
    }
    return count;
}

TEST(CapabilitiesTest, EveryGroupNamesInstrumentsOfTheCatalogue) {
    EXPECT_EQ(CountWith(Capability::KorgPartEqualizer), 7);
    EXPECT_EQ(CountWith(Capability::LimexTe200), 3);
    EXPECT_EQ(CountWith(Capability::Integra7Routing), 1);
    EXPECT_EQ(CountWith(Capability::RolandScMap), 7);
    EXPECT_EQ(CountWith(Capability::MotifRoutingAndDsps), 3);
    EXPECT_EQ(CountWith(Capability::YamahaDsps), 13);
    EXPECT_EQ(CountWith(Capability::YamahaMasterEq), 8);
    EXPECT_EQ(CountWith(Capability::YamahaVocalHarmony), 7);
}

TEST(CapabilitiesTest, ReplacesASoundMapThatTheInstrumentLacksByItsNewest) {
    EXPECT_EQ(RolandScMap("Roland SC-88", 4), 2);
    EXPECT_EQ(RolandScMap("Roland SC-88Pro", 0), 3);
    EXPECT_EQ(RolandScMap("Roland SC-8850", 2), 2);
    EXPECT_EQ(RolandScMaps("Roland SC-D70").back(), "SC-D70");
    // Its choice is open but empty: the list knows it by its name without the bracket.
    EXPECT_TRUE(HasCapability("Roland SC-VA (VSTi)", Capability::RolandScMap));
    EXPECT_TRUE(RolandScMaps("Roland SC-VA (VSTi)").empty());
    EXPECT_EQ(RolandScMaps("Roland SC-VA").size(), 4U);
}

class InstrumentSettingsTest : public testing::Test {
protected:
    test::ScratchSettings scratch_;
    settings::SettingsStore& store_ = scratch_.Store();
    InstrumentSettings settings_{store_};
};

TEST_F(InstrumentSettingsTest, ReadsFormerNamesAsThePresentOnes) {
    EXPECT_EQ(settings_.ReadInstrument(), "abc");
    store_.WriteStrToUserRegistry("MidiInstrument00", "MB Music PRO.MAX/SX");
    EXPECT_EQ(settings_.ReadInstrument(), "MB Music PRO.DX/XS/MAX");
    EXPECT_TRUE(settings_.WriteInstrumentOf("USB MIDI/2", "Yamaha Genos"));
    EXPECT_EQ(settings_.ReadInstrumentOf("USB MIDI/2"), "Yamaha Genos");
    EXPECT_EQ(settings_.ReadInstrumentOf("USB MIDI"), "abc");
}

// An instrument that has the capability of a switch and one that lacks it; null for none.
std::array<const Instrument*, 2> OneOfEachKind(const SysexSwitch& choice) {
    std::array<const Instrument*, 2> found{};
    for (const Instrument& instrument : Catalogue()) {
        const bool has = !choice.capability || HasCapability(instrument.name, *choice.capability);
        found[has ? 1 : 0] = &instrument;
    }
    return found;
}

// Every switch must reach the option that it is for, and only that one. Every write goes to the
// disk, so not all instruments are tried.
TEST_F(InstrumentSettingsTest, EverySwitchReachesItsOptionWhereTheInstrumentHasIt) {
    for (const SysexSwitch& choice : SysexSwitches()) {
        const auto instruments = OneOfEachKind(choice);
        const bool usual = SysexOptions().*choice.field;
        for (const bool has : {false, true}) {
            if (const Instrument* instrument = instruments[has ? 1 : 0]; instrument != nullptr) {
                ASSERT_TRUE(settings_.WriteSwitch(choice, instrument->name, !usual));
                const SysexOptions options = settings_.ReadOptions(instrument->name);
                EXPECT_EQ(options.*choice.field, has ? !usual : usual)
                    << choice.setting << " " << instrument->name;
                settings_.WriteSwitch(choice, instrument->name, usual);
            }
        }
    }
}

TEST_F(InstrumentSettingsTest, KeepsNumbersWithinWhatTheyMayBe) {
    const char* instrument = "Roland Integra-7";
    EXPECT_EQ(settings_.ReadOptions(instrument).defaultTrack, 10);
    settings_.WriteSysexTrack(500);
    EXPECT_EQ(settings_.ReadOptions(instrument).defaultTrack, kMostSysexTrack);
    store_.WriteIntToUserRegistry("SysexTrack", -3);
    EXPECT_EQ(settings_.ReadOptions(instrument).defaultTrack, 10);
    settings_.WriteAudioOutput(instrument, 15, 3);
    store_.WriteIntToUserRegistrySubdir(instrument, "AudioOutput02", 99);
    EXPECT_EQ(settings_.ReadOptions(instrument).partOutputs[15], 3);
    EXPECT_EQ(settings_.ReadOptions(instrument).partOutputs[2], 0);
    EXPECT_EQ(settings_.ReadOptions("Yamaha Genos").partOutputs[15], 0);
    settings_.WriteRolandScMap("Roland SC-88", 1);
    EXPECT_EQ(settings_.ReadRolandScMap("Roland SC-88"), 1);
    EXPECT_EQ(settings_.ReadRolandScMap("Roland SC-88Pro"), 3);
    settings_.WriteLimexTe200("Limex G4", true);
    EXPECT_FALSE(settings_.ReadLimexTe200("Limex G4"));
}

} // namespace
} // namespace tracksmith::instruments
