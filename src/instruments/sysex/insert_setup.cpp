#include "instruments/sysex/insert_setup.h"

#include <algorithm>
#include <vector>

#include "instruments/sysex/gs_ticks.h"
#include "instruments/sysex/insert_message.h"
#include "instruments/sysex/sysex_edit.h"
#include "instruments/sysex/sysex_patterns.h"
#include "instruments/sysex/sysex_templates.h"

namespace tracksmith::instruments {
namespace {

constexpr std::int32_t kMotifTick = 95;
constexpr std::int32_t kSonicCellTick = 50;
// Up to the parameter: manufacturer, model and address, F0 counted.
constexpr std::size_t kGsAddressEnd = 8;

using Integra7Message = std::array<std::uint8_t, templates::kIntegra7Output.size()>;

constexpr std::size_t kIntegra7Address = 7;
constexpr std::size_t kIntegra7Part = 9;
constexpr std::size_t kIntegra7Value = 11;

Integra7Message OutputOf(std::size_t part, std::uint8_t output) {
    Integra7Message message = templates::kIntegra7Output;
    message[kIntegra7Part] = static_cast<std::uint8_t>(message[kIntegra7Part] + part);
    message[kIntegra7Value] = output & 0x7FU;
    message[kIntegra7Value + 1] = RolandChecksum(SysexBytes(message).subspan(kIntegra7Address, 5));
    return message;
}

// Removes settings of the same part that differ from `message`.
void RemoveOthers(song::Song& song, SysexSession& session, std::int32_t tick, SysexBytes message) {
    const SysexBytes prefix = DataOf(message.first(kIntegra7Value));
    VisitEach(song, session, SearchEnd(song, tick), [&](const song::SysexPlace& place) {
        const SysexBytes data = Live(place);
        if (StartsWith(data, prefix) && !std::ranges::equal(data, DataOf(message))) {
            RemoveMessage(session, place);
        }
    });
}

} // namespace

void InsertKetronSysex(song::Song& song, SysexSession& session) {
    InsertSetUp(song, session, session.insertionTick, templates::kKetron);
}

void InsertKetronSD1000Sysex(song::Song& song, SysexSession& session) {
    InsertKetronSysex(song, session);
    InsertSetUp(song, session, session.insertionTick + kTicksApart, templates::kKetronSd1000,
                templates::kKetronSd1000Prefix);
}

void InsertLimexSysex(song::Song& song, SysexSession& session) {
    InsertSetUp(song, session, session.insertionTick, templates::kGmSystemOn);
    InsertSetUp(song, session, session.insertionTick + kTicksApart, templates::kLimexPart,
                kGsAddressEnd);
}

void InsertMotifESInsertsSysex(song::Song& song, SysexSession& session) {
    InsertSetUp(song, session, kMotifTick, templates::kMotifEs);
}

void InsertMotifXFInsertsSysex(song::Song& song, SysexSession& session) {
    InsertSetUp(song, session, kMotifTick, templates::kMotifXf);
}

void InsertMotifXSInsertsSysex(song::Song& song, SysexSession& session) {
    InsertSetUp(song, session, kMotifTick, templates::kMotifXs);
}

void InsertSonicCellReverbLevelSysex(song::Song& song, SysexSession& session) {
    InsertSetUp(song, session, kSonicCellTick, templates::kSonicCellReverb);
}

void InsertIntegra7OutputsSysex(song::Song& song, SysexSession& session) {
    std::int32_t tick = session.insertionTick;
    for (std::size_t part = 0; part < kParts; ++part, tick += kTicksApart) {
        const std::uint8_t output = session.options.integra7Outputs.at(part);
        if (output != 0) {
            const Integra7Message message = OutputOf(part, output);
            RemoveOthers(song, session, tick, message);
            InsertSetUp(song, session, tick, message);
        }
    }
}

} // namespace tracksmith::instruments
