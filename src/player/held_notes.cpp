#include "player/held_notes.h"

#include <array>
#include <cstddef>

namespace tracksmith::player {

std::vector<HeldNote> HeldNotes(const song::Track& track) {
    std::array<std::uint32_t, std::size_t{16} * 128> begun{};
    for (song::ConstEventLink event = track.first; event != track.cursor; event = event->next) {
        const bool on = event->IsNoteOn() && event->data2 > 0;
        if (event->length > 0 && (event->IsNoteOn() || event->Command() == song::kNoteOff)) {
            std::uint32_t& count =
                begun[event->Channel() * std::size_t{128} + (event->data1 & 0x7FU)];
            count = on ? count + 1 : count - (count > 0 ? 1 : 0);
        }
    }
    std::vector<HeldNote> held;
    for (std::size_t place = 0; place < begun.size(); ++place) {
        held.insert(
            held.end(), begun[place],
            {static_cast<std::uint8_t>(place / 128), static_cast<std::uint8_t>(place % 128)});
    }
    return held;
}

} // namespace tracksmith::player
