#include "song/load_report.h"

#include <algorithm>

namespace tracksmith::song {
namespace {

struct ChangeRow {
    const char* name = nullptr;
    Text text;
};

// In the order of LoadChange.
constexpr std::array<ChangeRow, kLoadChangeCount> kRows{{
    {"noteOnVelocityZero", Text{De{"Note-Ons mit Anschlagstärke 0 als Note-Offs gespeichert"},
                                En{"note-ons with velocity 0 stored as note-offs"}}},
    {"portEventDropped", Text{De{"Port-Ereignisse entfernt"}, En{"port events dropped"}}},
    {"channelPrefixDropped", Text{De{"Kanal-Präfixe entfernt"}, En{"channel prefixes dropped"}}},
    {"sequenceNumberDropped", Text{De{"Sequenznummern falscher Länge entfernt"},
                                   En{"sequence numbers of the wrong length dropped"}}},
    {"unknownMetaDropped",
     Text{De{"unbekannte Meta-Ereignisse entfernt"}, En{"unknown meta events dropped"}}},
    {"emptySysexDropped", Text{De{"leere systemexklusive Meldungen entfernt"},
                               En{"empty system exclusive messages dropped"}}},
    {"escapeDropped", Text{De{"Fortsetzungs- und Escape-Pakete (F7) entfernt"},
                           En{"continuation and escape packets (F7) dropped"}}},
    {"systemDropped", Text{De{"Echtzeit-Meldungen (F8 bis FC) entfernt"},
                           En{"real-time messages (F8 to FC) dropped"}}},
    {"nameBlanked", Text{De{"weitere Namen der ersten Spur werden nicht gespeichert"},
                         En{"further names of the first track will not be saved"}}},
    {"tempoZeroReplaced",
     Text{De{"Tempo 0 als 120 BPM gerechnet"}, En{"tempo 0 calculated as 120 BPM"}}},
    {"dataByteTooLarge", Text{De{"Datenbytes über 127 werden beim Speichern begrenzt"},
                              En{"data bytes above 127 will be masked when saved"}}},
    {"endOfTrackMoved",
     Text{De{"Spurenden ans Ende des Songs gesetzt"}, En{"track ends moved to the song's end"}}},
    {"endOfTrackAdded", Text{De{"fehlende Spurenden ergänzt"}, En{"missing track ends added"}}},
    {"bytesAfterEndOfTrack",
     Text{De{"Bytes hinter dem Spurende übergangen"}, En{"bytes behind a track's end ignored"}}},
    {"bytesAfterLastTrack", Text{De{"Bytes hinter der letzten Spur übergangen"},
                                 En{"bytes behind the last track ignored"}}},
    {"formatChanged",
     Text{De{"als Format 0 geführt (nur eine Spur)"}, En{"held as format 0 (only one track)"}}},
    {"splitIntoChannels",
     Text{De{"Format 0 auf Kanalspuren verteilt"}, En{"format 0 split into channel tracks"}}},
    {"trackIgnored",
     Text{De{"Spuren ihres Namens wegen übergangen"}, En{"tracks ignored because of their name"}}},
    {"notesLengthened", Text{De{"sehr kurze Noten verlängert"}, En{"very short notes lengthened"}}},
}};

const ChangeRow& RowOf(LoadChange change) {
    return kRows[static_cast<std::size_t>(change)];
}

} // namespace

LoadReport LoadReport::Losses() const {
    using enum LoadChange;
    LoadReport losses;
    for (const LoadChange change :
         {UnknownMetaDropped, EscapeDropped, SystemDropped, TempoZeroReplaced, DataByteTooLarge,
          BytesAfterEndOfTrack, BytesAfterLastTrack, TrackIgnored}) {
        losses.Add(change, (*this)[change]);
    }
    return losses;
}

std::size_t LoadReport::Kinds() const {
    return static_cast<std::size_t>(
        std::count_if(counts.begin(), counts.end(), [](std::int64_t count) { return count != 0; }));
}

const char* LoadChangeName(LoadChange change) {
    return RowOf(change).name;
}

const Text& LoadChangeText(LoadChange change) {
    return RowOf(change).text;
}

} // namespace tracksmith::song
