#include "app/prepare_song.h"

#include <algorithm>
#include <string>
#include <vector>

#include "app/midi_functions.h"

namespace tracksmith::app {

void TakeInstrument(Workspace& workspace, instruments::InstrumentSettings& settings) {
    const std::string name = settings.ReadInstrument();
    workspace.outputs.outputs.front().SetName(name);
    workspace.sysexOptions = settings.ReadOptions(name);
    if (instruments::FindInstrument(name) == nullptr) {
        workspace.sysexOptions.automatic = false;
    }
}

void TakeOtherOutputs(Workspace& workspace, instruments::InstrumentSettings& settings,
                      std::span<const std::string> outputOfChannel) {
    instruments::OutputTable& table = workspace.outputs;
    table.outputs.resize(1);
    std::vector<std::string> names{std::string()};
    for (std::size_t channel = 0; channel < table.outputOfChannel.size(); ++channel) {
        const std::string& output = outputOfChannel[channel];
        const auto known = std::ranges::find(names, output);
        table.outputOfChannel[channel] = static_cast<std::uint8_t>(known - names.begin());
        if (known == names.end()) {
            names.push_back(output);
            table.outputs.emplace_back().SetName(settings.ReadInstrumentOf(output));
        }
    }
}

void PrepareSong(Workspace& workspace, MessageHost& host) {
    TMidiFunctions(workspace, host).CheckSysexs();
    const instruments::PreparationReport& report = workspace.preparation;
    workspace.modified = workspace.modified || report.inserted > 0 || report.removed > 0;
}

} // namespace tracksmith::app
