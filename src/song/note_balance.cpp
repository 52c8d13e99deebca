#include "song/note_balance.h"

#include <span>

#include "song/note_names.h"
#include "song/note_pairing.h"
#include "song/song_position.h"
#include "song/texts.h"

namespace tracksmith::song {
namespace {

struct Count {
    std::int32_t open = 0;
    std::int32_t tick = 0;
};

void CountTrack(const Track& track, std::vector<Count>& counts) {
    for (ConstEventLink event = track.first; event && event->next; event = event->next) {
        const bool isOff = event->Command() == kNoteOff;
        if ((!isOff && !event->IsNoteOn()) || event->length == 0) {
            continue;
        }
        Count& count = counts[NotePairing::KeyOf(event->status, event->data1)];
        count.open += isOff ? -1 : 1;
        if (!isOff || count.open < 0) {
            count.tick = event->tick;
        }
    }
}

void TakeFaults(std::span<const Count> counts, BalanceReport& report) {
    for (std::size_t key = 0; key < counts.size(); ++key) {
        const Count& count = counts[key];
        if (count.open != 0) {
            (count.open < 0 ? report.offsWithoutOns : report.onsWithoutOffs)
                .push_back({static_cast<std::uint8_t>(key >> 7),
                            static_cast<std::uint8_t>(key & 0x7F), count.tick});
        }
    }
}

std::string LineOf(const Song& song, const UnbalancedNote& note) {
    const std::string channel = std::to_string(note.channel + 1);
    return "\nCh." + (channel.size() < 2 ? "0" + channel : channel) + ", Pos. " +
           SongPositionToMTC(song, note.tick) + ", Note " + NoteName(note.note) + "(" +
           std::to_string(note.note) + ")";
}

std::string Paragraph(const Song& song, std::span<const UnbalancedNote> notes, const Text& found,
                      const Text& what, Language language) {
    if (notes.empty()) {
        return {};
    }
    std::string text(found.In(language));
    text += std::to_string(notes.size());
    text += what.In(language);
    for (const UnbalancedNote& note : notes) {
        text += LineOf(song, note);
    }
    return text + "\n";
}

} // namespace

BalanceReport CheckForNoteOnsNoteOffs(const Song& song) {
    BalanceReport report;
    std::vector<Count> counts;
    for (std::size_t index = 0; index < song.tracks.size(); ++index) {
        const Track& track = song.tracks[index];
        if (track.ignored != 0 || track.eventCount <= 2) {
            continue;
        }
        counts.assign(NotePairing::kKeys, {});
        CountTrack(track, counts);
        TakeFaults(counts, report);
        if (!report.offsWithoutOns.empty() || !report.onsWithoutOffs.empty()) {
            report.track = static_cast<std::int32_t>(index);
            break;
        }
    }
    return report;
}

std::string BalanceText(const Song& song, const BalanceReport& report, Language language) {
    return Paragraph(song, report.offsWithoutOns, texts::kFound, texts::kOffsWithoutOns, language) +
           Paragraph(song, report.onsWithoutOffs, texts::kFound, texts::kOnsWithoutOffs, language);
}

} // namespace tracksmith::song
