#include "midi/port_name.h"

#include <gtest/gtest.h>

namespace tracksmith::midi {
namespace {

struct NamePair {
    std::string first;
    std::string second;
    bool same;
};

class PortNameTest : public testing::TestWithParam<NamePair> {};

TEST_P(PortNameTest, TellsWhetherAPortCameBack) {
    const NamePair& names = GetParam();
    EXPECT_EQ(NormalisedPortName(names.first) == NormalisedPortName(names.second), names.same)
        << NormalisedPortName(names.first) << " / " << NormalisedPortName(names.second);
}

INSTANTIATE_TEST_SUITE_P(
    Names, PortNameTest,
    testing::Values(NamePair{"CASIO USB-MIDI:CASIO USB-MIDI MIDI 1 20:0",
                             "Casio USB-MIDI:CASIO USB-MIDI MIDI 1 24:0", true},
                    NamePair{"USB MIDI:USB MIDI MIDI 1 20:0", "USB MIDI:USB MIDI MIDI 2 20:1",
                             false},
                    NamePair{"FLUID Synth (1234):Synth input port (1234:0) 128:0",
                             "FLUID Synth (98):Synth input port (98:0) 129:0", true},
                    NamePair{"Digital Keyboard", "2- Digital Keyboard", true},
                    NamePair{"  Digital   Keyboard ", "digital keyboard (3)", true},
                    NamePair{"Keyboard [2]", "Keyboard", true},
                    NamePair{"Keyboard [28:0] Out", "keyboard (7) out", true},
                    NamePair{"Port (A)", "Port (B)", false}, NamePair{"Port (1:A)", "Port", false},
                    NamePair{"Port (1]", "Port", false}, NamePair{"Keys 1:A", "Keys", false},
                    NamePair{"AZ", "az", true}, NamePair{"20:0", "24:0", false},
                    NamePair{"Port 1", "Port 2", false}, NamePair{"2-way", "way", false},
                    NamePair{"Synth (left", "Synth left", false}, NamePair{"(1)", "(2)", false},
                    NamePair{"Bühne", "Buehne", false}, NamePair{"", " ", true}));

TEST(PortNames, NumbersWhatIsThereAlready) {
    PortNames names;
    EXPECT_EQ(names.Unique("A"), "A");
    EXPECT_EQ(names.Unique("A (2)"), "A (2)");
    EXPECT_EQ(names.Unique("A"), "A (3)");
    EXPECT_EQ(names.Unique("B"), "B");
}

} // namespace
} // namespace tracksmith::midi
