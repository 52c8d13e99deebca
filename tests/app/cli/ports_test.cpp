#include <nlohmann/json.hpp>

#include "device_fixture.h"

namespace tracksmith::cli {
namespace {

using nlohmann::json;

TEST_F(DeviceTest, PortsAsJson) {
    outputs_ = Outputs::BuiltIn;
    loop_->FailNext(1, midi::kAllocated); // the second output
    ASSERT_EQ(Run({"ports", "--json"}), 0);
    std::istringstream stream(out_);
    std::vector<json> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(json::parse(line));
    }
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines[0], json::parse(R"({"schema": 1, "direction": "output", "name": "Loop 1",
        "technology": "midiPort", "builtIn": true, "usable": true, "problem": null})"));
    EXPECT_EQ(lines[1]["name"], "Loop 2");
    EXPECT_EQ(lines[1]["usable"], false);
    EXPECT_NE(lines[1]["problem"], "");
    EXPECT_EQ(lines[3], json::parse(R"({"schema": 1, "direction": "input", "name": "Loop 2",
        "technology": "midiPort", "builtIn": false, "usable": true, "problem": null})"));
}

TEST_F(DeviceTest, PortsAsText) {
    outputs_ = Outputs::BuiltIn;
    trouble_ = "silent";
    loop_->Vanish(1);
    ASSERT_EQ(Run({"ports", "--lang", "de"}), 0);
    EXPECT_EQ(out_,
              "Ausgang  Loop 1  MIDI-Anschluss  bereit: silent\n"
              "Eingang  Loop 1  MIDI-Anschluss  bereit\n");
    loop_->Vanish(0);
    ASSERT_EQ(Run({"ports"}), 0);
    EXPECT_EQ(out_, "");
    EXPECT_TRUE(Says("no MIDI ports")) << log_;
}

} // namespace
} // namespace tracksmith::cli
