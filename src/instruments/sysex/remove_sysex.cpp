#include "instruments/sysex/remove_sysex.h"

#include <algorithm>
#include <limits>

#include "instruments/sysex/sysex_edit.h"
#include "instruments/sysex/sysex_patterns.h"
#include "instruments/sysex/sysex_templates.h"

namespace tracksmith::instruments {
namespace {

template <typename Matches>
void RemoveWhere(song::Song& song, SysexSession& session, Matches matches) {
    VisitEach(song, session, std::numeric_limits<std::int32_t>::max(),
              [&](const song::SysexPlace& place) {
                  if (matches(Live(place))) {
                      RemoveMessage(session, place);
                  }
              });
}

void RemoveExactly(song::Song& song, SysexSession& session, SysexBytes message) {
    RemoveWhere(song, session, [wanted = DataOf(message)](SysexBytes data) {
        return std::ranges::equal(data, wanted);
    });
}

bool HasLyrics(const song::Song& song) {
    return std::ranges::any_of(song.tracks, [](const song::Track& track) {
        song::ConstEventLink event = track.first;
        while (event && !(event->IsMeta(song::kMetaLyric) && event->length > 0)) {
            event = event->next;
        }
        return static_cast<bool>(event);
    });
}

} // namespace

void RemoveGMSysex(song::Song& song, SysexSession& session) {
    RemoveExactly(song, session, templates::kGmSystemOn);
}

void RemoveGM2Sysex(song::Song& song, SysexSession& session) {
    RemoveExactly(song, session, templates::kGm2SystemOn);
}

void RemoveKN6000Sysex(song::Song& song, SysexSession& session) {
    RemoveExactly(song, session, templates::kKn6000);
}

void RemoveRolandGSSysex(song::Song& song, SysexSession& session) {
    RemoveExactly(song, session, templates::kGsReset);
}

void RemoveRolandSysex(song::Song& song, SysexSession& session) {
    RemoveWhere(song, session, [](SysexBytes data) {
        return StartsWith(data, DataOf(templates::kRolandGsAny)) ||
               StartsWith(data, DataOf(templates::kRolandDisplay));
    });
}

void RemoveKetronSysex(song::Song& song, SysexSession& session) {
    RemoveWhere(song, session, [](SysexBytes data) {
        return StartsWith(data, DataOf(templates::kKetron).first(2));
    });
}

void RemoveBigKetronSysex(song::Song& song, SysexSession& session) {
    RemoveWhere(song, session, [](SysexBytes data) {
        return data.front() == kKetronId && data.size() > DataOf(templates::kKetronSd1000).size();
    });
}

void RemoveYamahaSysex(song::Song& song, SysexSession& session) {
    RemoveWhere(song, session, [](SysexBytes data) { return data.front() == kYamahaId; });
}

void RemoveYamahaDSPSysex(song::Song& song, SysexSession& session) {
    const bool keepMasterEq = session.options.motifMasterEq;
    RemoveWhere(song, session, [keepMasterEq](SysexBytes data) {
        const auto message = XgMessage(data);
        return message && (message->high == 0x02 || message->high == 0x03) &&
               !(keepMasterEq && IsXgMasterEq(data));
    });
}

void RemoveYamahaMasterEQSysex(song::Song& song, SysexSession& session) {
    RemoveWhere(song, session, IsXgMasterEq);
}

void RemoveYamahaVocalHarmonySysex(song::Song& song, SysexSession& session) {
    const SysexOptions& options = session.options;
    if (options.yamahaVocalHarmony && options.yamahaAutoVocalHarmony && HasLyrics(song)) {
        return;
    }
    RemoveWhere(song, session, IsVocalHarmony);
}

} // namespace tracksmith::instruments
