#include "app/cli/port_choice.h"

#include <algorithm>
#include <iterator>

#include "midi/port_name.h"

namespace tracksmith::cli {
namespace {

template <class Fits>
std::vector<std::size_t> Select(std::span<const std::string> names, Fits fits) {
    std::vector<std::size_t> selected;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (fits(names[i])) {
            selected.push_back(i);
        }
    }
    return selected;
}

std::string SmallLetters(std::string text) {
    for (char& c : text) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return text;
}

} // namespace

std::vector<std::size_t> MatchPortNames(std::span<const std::string> names,
                                        const std::string& name) {
    std::vector<std::size_t> found =
        Select(names, [&](const std::string& each) { return each == name; });
    if (found.empty()) {
        found = Select(names, [&](const std::string& each) {
            return midi::NormalisedPortName(each) == midi::NormalisedPortName(name);
        });
    }
    if (found.empty()) {
        found = Select(names, [&](const std::string& each) {
            return SmallLetters(each).find(SmallLetters(name)) != std::string::npos;
        });
    }
    return found;
}

std::vector<player::OutputDevice> MatchOutputs(std::span<const player::OutputDevice> outputs,
                                               const std::string& name) {
    std::vector<std::string> names;
    std::ranges::transform(outputs, std::back_inserter(names), &player::OutputDevice::productName);
    std::vector<player::OutputDevice> found;
    for (const std::size_t index : MatchPortNames(names, name)) {
        found.push_back(outputs[index]);
    }
    return found;
}

std::vector<player::OutputDevice> DefaultOutput(std::span<const player::OutputDevice> outputs) {
    for (const auto soundsByItself :
         {&player::OutputDevice::softwareInstrument, &player::OutputDevice::synthesizer}) {
        const auto found = std::ranges::find_if(outputs, soundsByItself);
        if (found != outputs.end()) {
            return {*found};
        }
    }
    return {outputs.begin(), outputs.begin() + (outputs.empty() ? 0 : 1)};
}

} // namespace tracksmith::cli
