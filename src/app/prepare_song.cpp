#include "app/prepare_song.h"

#include <algorithm>
#include <string>
#include <vector>

#include "app/midi_functions.h"
#include "app/texts.h"
#include "instruments/catalogue.h"
#include "song/lead_in.h"

namespace tracksmith::app {

void TakeInstrument(session::WorkOptions& options, instruments::InstrumentSettings& settings) {
    const std::string name = settings.ReadInstrument();
    options.outputs.outputs.front().SetName(name);
    options.sysexOptions = settings.ReadOptions(name);
    if (instruments::FindInstrument(name) == nullptr) {
        options.sysexOptions.automatic = false;
    }
}

void TakeOtherOutputs(session::WorkOptions& options, instruments::InstrumentSettings& settings,
                      std::span<const std::string> outputOfChannel) {
    instruments::OutputTable& table = options.outputs;
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

void PrepareSong(session::Session& session, MessageHost& host) {
    session.Change(session::kPrepareSong, host, [&](session::Workspace& workspace) {
        TMidiFunctions(workspace, host).CheckSysexs();
        return workspace.preparation.Changed();
    });
}

bool CanPrepare(const session::Workspace& workspace) {
    const std::string& instrument = workspace.outputs.outputs.front().name;
    return workspace.hasSong && !workspace.file.source.empty() && !workspace.preparation.prepared &&
           instruments::FindInstrument(instrument) != nullptr;
}

bool HasEarlyNotes(const instruments::PreparationReport& report) {
    return std::ranges::any_of(report.channels,
                               [](const auto& channel) { return channel.earlyNotes > 0; });
}

bool CanInsertLeadIn(const session::Session& session) {
    const session::TakeBack& last = session.LastChange();
    return last.Available() && !last.Taken() &&
           last.Name().english == session::kPrepareSong.name.english &&
           HasEarlyNotes(session.Work().preparation);
}

// The measure goes in before the reset: what stands behind a reset would move away from it.
bool InsertLeadIn(session::Session& session, MessageHost& host) {
    if (session.LastChange().Touched() &&
        !host.AskYesNo(texts::kLeadInLosesChanges.In(host.CurrentLanguage()))) {
        return false;
    }
    bool inserted = false;
    session.TakeBackLastChange(host);
    session.Change(session::kInsertLeadIn, host, [&](session::Workspace& workspace) {
        inserted = song::InsertLeadInMeasure(workspace.song);
        TMidiFunctions(workspace, host).CheckSysexs();
        return true;
    });
    return inserted;
}

bool PrepareSongWithLeadIn(session::Session& session, MessageHost& host) {
    PrepareSong(session, host);
    return CanInsertLeadIn(session) && InsertLeadIn(session, host);
}

} // namespace tracksmith::app
