#include "app/cli/port_list.h"

namespace tracksmith::cli {
namespace {

constexpr std::uint16_t kMidiPort = 1;

void IgnoreMessages(midi::DeviceHandle, std::uint32_t, void*, std::uintptr_t, std::uintptr_t) {}

// Both sides have the calls that are needed here. `trouble` is asked while the port is open, or
// when opening has failed.
template <class Driver, class Trouble>
PortDescription Describe(Driver& driver, std::uint32_t device, Trouble&& trouble) {
    PortDescription port;
    midi::DeviceCapabilities capabilities;
    midi::ResultCode code = driver.Capabilities(device, capabilities);
    port.name = capabilities.productName;
    port.technology = capabilities.technology;
    midi::DeviceHandle handle = 0;
    if (code == midi::kNoError) {
        code = driver.Open(device, &IgnoreMessages, nullptr, handle);
        port.problem = trouble();
    }
    port.usable = code == midi::kNoError;
    if (!port.usable && port.problem.empty()) {
        port.problem = driver.ErrorText(code);
    }
    if (handle != 0) {
        driver.Close(handle);
    }
    return port;
}

void AddOutputs(std::vector<PortDescription>& ports, const player::OutputDriver& entry,
                const devices::SynthDevice* synth, Language language) {
    const bool builtIn = entry.softwareInstrument;
    const auto trouble = [&] {
        return builtIn && synth != nullptr ? synth->Trouble(language) : std::string();
    };
    const std::uint32_t count = entry.driver->DeviceCount();
    for (std::uint32_t device = 0; device < count; ++device) {
        PortDescription& port = ports.emplace_back(Describe(*entry.driver, device, trouble));
        port.output = true;
        port.builtIn = builtIn;
    }
}

void AddInputs(std::vector<PortDescription>& ports, midi::MidiInputDriver& driver) {
    const std::uint32_t count = driver.DeviceCount();
    for (std::uint32_t device = 0; device < count; ++device) {
        const auto noTrouble = [] { return std::string(); };
        // Inputs do not tell their kind; there is but one.
        ports.emplace_back(Describe(driver, device, noTrouble)).technology = kMidiPort;
    }
}

} // namespace

std::vector<PortDescription> ListPorts(devices::MidiDevices& devices, Language language) {
    std::vector<PortDescription> ports;
    for (const player::OutputDriver& entry : devices.Outputs()) {
        AddOutputs(ports, entry, devices.Synth(), language);
    }
    AddInputs(ports, devices.Input());
    return ports;
}

} // namespace tracksmith::cli
