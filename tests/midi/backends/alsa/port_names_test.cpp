#include "midi/backends/alsa/port_names.h"

#include <gtest/gtest.h>

namespace tracksmith::midi::alsa {
namespace {

struct NameCase {
    std::vector<std::string> fullNames;
    std::vector<std::string> productNames;
};

class Names : public testing::TestWithParam<NameCase> {};

TEST_P(Names, LoseTheirNumbers) {
    std::vector<std::string> productNames;
    for (const NamedPort& port : NamePorts(GetParam().fullNames)) {
        productNames.push_back(port.productName);
    }
    EXPECT_EQ(productNames, GetParam().productNames);
}

INSTANTIATE_TEST_SUITE_P(
    Ports, Names,
    testing::Values(NameCase{{"Midi Through:Midi Through Port-0 14:0", "Piano 2:Port 1 128:12"},
                             {"Midi Through:Midi Through Port-0", "Piano 2:Port 1"}},
                    // Another order of plugging in must give the same names.
                    NameCase{{"Piano:Piano MIDI 1 24:0", "Piano:Piano MIDI 1 28:0"},
                             {"Piano:Piano MIDI 1", "Piano:Piano MIDI 1 (2)"}},
                    // What is not a pair of numbers at the end belongs to the name.
                    NameCase{{"Synth:In 16:9b", "Synth 5", "Synth:7", "14:0"},
                             {"Synth:In 16:9b", "Synth 5", "Synth:7", "14:0"}},
                    NameCase{{"Tracksmith:Tracksmith 130:0", "", "Tracksmith 2:Port 131:0"},
                             {"Tracksmith 2:Port"}}));

} // namespace
} // namespace tracksmith::midi::alsa
