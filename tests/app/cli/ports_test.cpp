#include <nlohmann/json.hpp>

#include "device_fixture.h"
#include "support/loop_instrument.h"

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
    EXPECT_EQ(log_, "");
    loop_->Vanish(0);
    ASSERT_EQ(Run({"ports"}), 0);
    EXPECT_EQ(out_, "");
    EXPECT_TRUE(Says("no MIDI ports")) << log_;
    ASSERT_EQ(Run({"ports", "--quiet"}), 0);
    EXPECT_EQ(log_, "");
}

TEST_F(DeviceTest, AskingNamesTheInstrument) {
    test::LoopInstrument instrument(loop_);
    instrument.SetGenos();
    ASSERT_EQ(Run({"ports", "--ask", "loop 1", "--input", "2", "--json"}), 0);
    EXPECT_EQ(json::parse(out_), json::parse(R"({"schema": 1, "output": "Loop 1",
        "input": "Loop 2", "state": "answered", "maker": "Yamaha", "model": "Genos",
        "instrument": "Yamaha Genos", "followsSetOnly": false, "makerCode": "43",
        "family": "00 44", "member": "42 1C", "version": "0B 00 00 01", "xgModel": null})"));
    ASSERT_EQ(Run({"ports", "--ask", "Loop 1", "--input", "Loop 2", "--lang", "de"}), 0);
    EXPECT_EQ(out_, "Yamaha Genos hat an Loop 1 geantwortet\n");
    EXPECT_TRUE(Says("convert --instrument \"Yamaha Genos\"")) << log_;
}

TEST_F(DeviceTest, AskingInVainSaysWhy) {
    ASSERT_EQ(Run({"ports", "--ask", "Loop 1", "--json"}), 1);
    EXPECT_EQ(json::parse(out_), json::parse(R"({"schema": 1, "output": "Loop 1",
        "input": "Loop 1", "state": "noAnswer"})"));
    EXPECT_EQ(Run({"ports", "--ask", "loop"}), 6);
    EXPECT_TRUE(Says("Several MIDI outputs fit loop")) << log_;
    EXPECT_EQ(Run({"ports", "--ask", "Loop 1", "--input", "Genos"}), 6);
    EXPECT_TRUE(Says("No MIDI input is called Genos. There are: Loop 1, Loop 2")) << log_;
    loop_->FailNext(0, midi::kAllocated);
    EXPECT_EQ(Run({"ports", "--ask", "Loop 1", "--input", "Loop 2"}), 6);
    EXPECT_TRUE(Says("The output Loop 1 takes no messages")) << log_;
    outputs_ = Outputs::BuiltIn;
    EXPECT_EQ(Run({"ports", "--ask", "Loop 1"}), 6);
    EXPECT_TRUE(Says("The built-in instrument is known")) << log_;
    EXPECT_EQ(Run({"ports", "--input", "Loop 1"}), 2);
}

} // namespace
} // namespace tracksmith::cli
