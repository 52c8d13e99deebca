#include "instruments/sysex/insert_setup.h"

#include "instruments/sysex/gs_ticks.h"
#include "instruments/sysex/insert_message.h"
#include "instruments/sysex/sysex_templates.h"

namespace tracksmith::instruments {
namespace {

constexpr std::int32_t kMotifTick = 95;
constexpr std::int32_t kSonicCellTick = 50;
// Up to the parameter: manufacturer, model and address, F0 counted.
constexpr std::size_t kGsAddressEnd = 8;

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

} // namespace tracksmith::instruments
