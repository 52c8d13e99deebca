#include "app/cli/port_choice.h"

#include <algorithm>
#include <iterator>

#include "midi/port_name.h"

namespace tracksmith::cli {
namespace {

template <class Fits>
std::vector<player::OutputDevice> Select(std::span<const player::OutputDevice> outputs, Fits fits) {
    std::vector<player::OutputDevice> selected;
    std::copy_if(outputs.begin(), outputs.end(), std::back_inserter(selected),
                 [&](const player::OutputDevice& output) { return fits(output.productName); });
    return selected;
}

std::string SmallLetters(std::string text) {
    for (char& c : text) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return text;
}

} // namespace

std::vector<player::OutputDevice> MatchOutputs(std::span<const player::OutputDevice> outputs,
                                               const std::string& name) {
    std::vector<player::OutputDevice> found =
        Select(outputs, [&](const std::string& product) { return product == name; });
    if (found.empty()) {
        found = Select(outputs, [&](const std::string& product) {
            return midi::NormalisedPortName(product) == midi::NormalisedPortName(name);
        });
    }
    if (found.empty()) {
        found = Select(outputs, [&](const std::string& product) {
            return SmallLetters(product).find(SmallLetters(name)) != std::string::npos;
        });
    }
    return found;
}

std::vector<player::OutputDevice> DefaultOutput(std::span<const player::OutputDevice> outputs) {
    const auto builtIn =
        std::find_if(outputs.begin(), outputs.end(),
                     [](const player::OutputDevice& output) { return output.softwareInstrument; });
    if (builtIn != outputs.end()) {
        return {*builtIn};
    }
    return {outputs.begin(), outputs.begin() + (outputs.empty() ? 0 : 1)};
}

} // namespace tracksmith::cli
