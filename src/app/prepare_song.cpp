#include "app/prepare_song.h"

#include <algorithm>
#include <string>
#include <vector>

#include "app/midi_functions.h"
#include "app/texts.h"
#include "song/lead_in.h"
#include "song/note_length.h"

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

bool HasEarlyNotes(const instruments::PreparationReport& report) {
    return std::ranges::any_of(report.channels,
                               [](const auto& channel) { return channel.earlyNotes > 0; });
}

namespace {

bool LastIs(const session::Session& session, const session::ChangeKind& kind) {
    const session::TakeBack& last = session.LastChange();
    return last.Available() && !last.Taken() && last.Name().english == kind.name.english;
}

// What the load did beside preparing, and what is taken back with it.
void LengthenNotes(session::Workspace& workspace) {
    const std::vector<song::NoteEnd> ends =
        song::FindShortNotes(workspace.song, workspace.noteLength.minimum);
    workspace.loadReport.Add(song::LoadChange::NotesLengthened,
                             song::LengthenLoadedNotes(workspace.song, ends, workspace.noteLength));
}

} // namespace

bool CanInsertLeadIn(const session::Session& session) {
    return (LastIs(session, session::kPrepareSong) ||
            LastIs(session, session::kPrepareAndLengthen)) &&
           HasEarlyNotes(session.Work().preparation);
}

// The measure goes in before the reset: what stands behind a reset would move away from it.
bool InsertLeadIn(session::Session& session, MessageHost& host) {
    if (session.LastChange().Touched() &&
        !host.AskYesNo(texts::kLeadInLosesChanges.In(host.CurrentLanguage()))) {
        return false;
    }
    bool inserted = false;
    const bool lengthens = LastIs(session, session::kPrepareAndLengthen);
    session.TakeBackLastChange(host);
    session.Change(session::kInsertLeadIn, host, [&](session::Workspace& workspace) {
        inserted = song::InsertLeadInMeasure(workspace.song);
        TMidiFunctions(workspace, host).CheckSysexs();
        if (lengthens) {
            LengthenNotes(workspace);
        }
        return true;
    });
    return inserted;
}

bool PrepareSongWithLeadIn(session::Session& session, MessageHost& host) {
    PrepareSong(session, host);
    return CanInsertLeadIn(session) && InsertLeadIn(session, host);
}

} // namespace tracksmith::app
