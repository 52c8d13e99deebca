#include "app/session/output_choice.h"

#include "midi/port_name.h"

namespace tracksmith::session {
namespace {

constexpr const char* kOutput = "MidiOutput";

// "RoutePort07": the setting of channel 7, counted from 0.
std::string ForChannel(const char* name, std::size_t channel) {
    return name + std::string(channel < 10 ? "0" : "") + std::to_string(channel);
}

} // namespace

void OutputChoice::Apply() {
    missing_.clear();
    const std::size_t common = FindOrDefault(store_.ReadStrFromUserRegistry(kOutput, ""));
    player::ChannelRoutes routes;
    for (std::size_t channel = 0; channel < player::kChannels; ++channel) {
        const ChannelRoute route = Route(channel);
        routes[channel] = {route.output.empty() ? common : FindOrDefault(route.output),
                           route.target};
    }
    // While a driver hangs this changes nothing; it is done again when that is over.
    static_cast<void>(player_.SetRoutes(routes));
}

std::string OutputChoice::Output() const {
    const std::string stored = store_.ReadStrFromUserRegistry(kOutput, "");
    const std::size_t port = Find(stored).value_or(Default());
    for (const player::OutputDevice& device : player_.OutputDevices()) {
        if (device.port == port) {
            return device.productName;
        }
    }
    return {};
}

void OutputChoice::ChooseOutput(const std::string& productName) {
    store_.WriteStrToUserRegistry(kOutput, productName);
    Apply();
}

OutputChoice::ChannelRoute OutputChoice::Route(std::size_t channel) const {
    const std::int32_t target = store_.ReadIntFromUserRegistry(ForChannel("RouteChannel", channel),
                                                               static_cast<std::int32_t>(channel));
    return {
        store_.ReadStrFromUserRegistry(ForChannel("RoutePort", channel), ""),
        static_cast<std::uint8_t>(target >= 0 && target < 16 ? target : static_cast<int>(channel))};
}

void OutputChoice::SetRoute(std::size_t channel, const ChannelRoute& route) {
    store_.WriteStrToUserRegistry(ForChannel("RoutePort", channel), route.output);
    store_.WriteIntToUserRegistry(ForChannel("RouteChannel", channel), route.target);
    Apply();
}

void OutputChoice::ResetRoutes() {
    for (std::size_t channel = 0; channel < player::kChannels; ++channel) {
        store_.DeleteFromUserRegistry(ForChannel("RoutePort", channel));
        store_.DeleteFromUserRegistry(ForChannel("RouteChannel", channel));
    }
    Apply();
}

// By its name, else by what is left of the name without numbers that change from day to day.
std::optional<std::size_t> OutputChoice::Find(const std::string& productName) const {
    if (productName.empty()) {
        return std::nullopt;
    }
    std::optional<std::size_t> similar;
    for (const player::OutputDevice& device : player_.OutputDevices()) {
        // Also when it is lost: it may come back at any moment.
        if (device.productName == productName) {
            return device.port;
        }
        if (!similar &&
            midi::NormalisedPortName(device.productName) == midi::NormalisedPortName(productName)) {
            similar = device.port;
        }
    }
    return similar;
}

// What sounds without anything that must be connected and switched on.
std::size_t OutputChoice::Default() const {
    std::optional<std::size_t> synthesizer;
    std::optional<std::size_t> first;
    for (const player::OutputDevice& device : player_.OutputDevices()) {
        if (device.softwareInstrument) {
            return device.port;
        }
        if (!synthesizer && device.usable && device.synthesizer) {
            synthesizer = device.port;
        }
        if (!first && device.usable) {
            first = device.port;
        }
    }
    return synthesizer ? *synthesizer : first.value_or(0);
}

std::size_t OutputChoice::FindOrDefault(const std::string& productName) {
    const std::optional<std::size_t> found = Find(productName);
    if (!found && !productName.empty() && missing_.empty()) {
        missing_ = productName;
    }
    return found.value_or(Default());
}

} // namespace tracksmith::session
