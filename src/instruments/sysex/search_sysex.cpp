#include "instruments/sysex/search_sysex.h"

#include <algorithm>
#include <limits>

#include "instruments/sysex/sysex_edit.h"
#include "instruments/sysex/sysex_patterns.h"
#include "instruments/sysex/sysex_templates.h"

namespace tracksmith::instruments {
namespace {

template <typename Matches>
void SearchWhere(song::Song& song, SysexSession& session, SysexFind kind, Matches matches) {
    session.found.at(static_cast<std::size_t>(kind)).clear();
    VisitEach(song, session, std::numeric_limits<std::int32_t>::max(),
              [&](const song::SysexPlace& place) {
                  if (matches(Live(place))) {
                      KeepFound(session, kind, place);
                  }
              });
}

void SearchPrefix(song::Song& song, SysexSession& session, SysexFind kind, SysexBytes prefix) {
    SearchWhere(song, session, kind,
                [wanted = DataOf(prefix)](SysexBytes data) { return StartsWith(data, wanted); });
}

bool IsScInsertEffect(SysexBytes data) {
    const auto message = GsMessage(data);
    return message && message->high == 0x40 &&
           (message->middle == 0x03 || ((message->middle & 0xF0) == 0x40 && message->low == 0x22));
}

bool IsXgInsertEffect(SysexBytes data) {
    const auto message = XgMessage(data);
    return message && message->high == 0x03;
}

// Messages of the model that the set-up message is for.
void SearchMotif(song::Song& song, SysexSession& session, SysexBytes setUp) {
    const SysexBytes own = DataOf(setUp);
    SearchWhere(song, session, SysexFind::MotifMessage, [own](SysexBytes data) {
        return data.size() > 4 && data[0] == own[0] && (data[1] & 0xF0) == (own[1] & 0xF0) &&
               data[2] == own[2] && data[3] == own[3] && !std::ranges::equal(data, own);
    });
}

} // namespace

void SearchKorgPartEQSysex(song::Song& song, SysexSession& session) {
    SearchPrefix(song, session, SysexFind::KorgPartEq,
                 SysexBytes(templates::kKorgPartEq).first(templates::kKorgPartEqPrefix));
}

void SearchRolandBK9PartEQSysex(song::Song& song, SysexSession& session) {
    SearchPrefix(song, session, SysexFind::Bk9PartEq,
                 SysexBytes(templates::kBk9PartEq).first(templates::kBk9PartEqPrefix));
}

void SearchRolandIntegra7PartEQSysex(song::Song& song, SysexSession& session) {
    SearchPrefix(song, session, SysexFind::Integra7PartEq, templates::kIntegra7Prefix);
}

void SearchOrganFluteSysex(song::Song& song, SysexSession& session) {
    SearchWhere(song, session, SysexFind::OrganFlute, IsOrganFlute);
}

void SearchRolandSCFXInsertSysex(song::Song& song, SysexSession& session) {
    SearchWhere(song, session, SysexFind::ScInsertEffect, IsScInsertEffect);
}

void SearchYamahaInsertionSysex(song::Song& song, SysexSession& session) {
    SearchWhere(song, session, SysexFind::YamahaInsertEffect, IsXgInsertEffect);
}

void SearchMotifESSysex(song::Song& song, SysexSession& session) {
    SearchMotif(song, session, templates::kMotifEs);
}

void SearchMotifXFSysex(song::Song& song, SysexSession& session) {
    SearchMotif(song, session, templates::kMotifXf);
}

void SearchMotifXSSysex(song::Song& song, SysexSession& session) {
    SearchMotif(song, session, templates::kMotifXs);
}

} // namespace tracksmith::instruments
