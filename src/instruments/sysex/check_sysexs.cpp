#include "instruments/sysex/check_sysexs.h"

#include "instruments/sysex/keep_drum_parts.h"
#include "instruments/sysex/keep_settings.h"
#include "instruments/sysex/operation_table.h"
#include "instruments/sysex/place_resets.h"
#include "instruments/sysex/sysex_edit.h"

namespace tracksmith::instruments {
namespace {

void Restart(SysexSession& session, InstrumentId instrument) {
    session.insertionTick = kSetUpTick;
    session.sysexTrack = -1;
    session.resetInserted = false;
    session.reset = {};
    session.homelessResets.clear();
    session.partEvents.fill({});
    session.drumMap.fill(0);
    for (auto& places : session.found) {
        places.clear();
    }
    session.changes.clear();
    session.report = {};
    session.report.instrument = instrument;
}

} // namespace

void CheckSysexs(song::Song& song, InstrumentId instrument, SysexSession& session) {
    Restart(session, instrument);
    const Instrument* known = FindInstrument(instrument);
    for (const OperationStep& step : StepsOf(instrument)) {
        const bool suits = step.suits == nullptr || step.suits(*known);
        if (suits && (step.when == nullptr || step.when->holds(session.options))) {
            step.operation.run(song, session);
        }
    }
    PlaceResets(song, session);
    KeepDrumParts(song, session);
    KeepChannelSettings(song, session);
    session.report.prepared = true;
    WriteReport(session);
}

} // namespace tracksmith::instruments
