#pragma once

#include <memory>
#include <string>
#include <utility>

#include "cli_fixture.h"

#include "midi/backends/loop/driver.h"
#include "midi/portable_input_driver.h"

namespace tracksmith::cli {

/// A built-in instrument that plays to ports inside the process.
class FakeSynth : public devices::SynthDevice {
public:
    FakeSynth(std::shared_ptr<midi::loop::LoopBackend> loop, std::string trouble)
        : driver_(std::move(loop)), trouble_(std::move(trouble)) {}

    midi::MidiOutputDriver& Driver() override { return driver_; }
    void SetOptions(const devices::SynthOptions&) override {}
    void SetVolume(int) override {}
    std::string Trouble(Language) const override { return trouble_; }

private:
    midi::loop::LoopOutputDriver driver_;
    std::string trouble_;
};

/// The command line with two ports inside the process, "Loop 1" and "Loop 2".
class DeviceTest : public CliTest {
protected:
    enum class Outputs { None, Ports, BuiltIn };

    DeviceTest() {
        openDevices_ = [this](const devices::SynthOptions&) {
            devices::SystemDrivers drivers;
            drivers.inputs.push_back(std::make_unique<midi::PortableInputDriver>(loop_));
            if (outputs_ == Outputs::Ports) {
                drivers.outputs.push_back(std::make_unique<midi::loop::LoopOutputDriver>(loop_));
            }
            std::unique_ptr<FakeSynth> synth;
            if (outputs_ == Outputs::BuiltIn) {
                synth = std::make_unique<FakeSynth>(loop_, trouble_);
            }
            return std::make_unique<devices::MidiDevices>(std::move(drivers), std::move(synth));
        };
    }

    std::shared_ptr<midi::loop::LoopBackend> loop_ = std::make_shared<midi::loop::LoopBackend>(2);
    Outputs outputs_ = Outputs::Ports;
    /// What is wrong with the built-in instrument.
    std::string trouble_;
};

} // namespace tracksmith::cli
