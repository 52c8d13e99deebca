#include "app/diff/fingerprint.h"

#include <optional>

#include "app/diff/event_slot.h"

namespace tracksmith::diff {
namespace {

constexpr std::size_t kControls = 512;

std::size_t CellOf(std::uint8_t channel, Kind kind, std::uint16_t control) {
    const std::size_t row = channel == kWholeSong ? song::kMidiChannels : channel;
    const bool asOne = kind == Kind::Note || kind == Kind::Voice;
    return (row * kKinds + static_cast<std::size_t>(kind)) * kControls +
           (asOne ? 0 : control % kControls);
}

// Bits spread so that sums of several hardly ever meet.
std::uint64_t Mixed(std::uint64_t bits) {
    bits = (bits ^ (bits >> 30U)) * 0xBF58'476D'1CE4'E5B9U;
    bits = (bits ^ (bits >> 27U)) * 0x94D0'49BB'1331'11EBU;
    return bits ^ (bits >> 31U);
}

// `event` with the data bytes that count here.
song::MidiEvent Counted(const song::MidiEvent& event, Fingerprint::Values values) {
    song::MidiEvent counted = event;
    if (values == Fingerprint::Values::AsLoaded) {
        counted.data1 = event.origData1 & 0x7FU;
        counted.data2 = event.origData2 & 0x7FU;
    } else if (event.IsNoteOn() || event.Command() == song::kNoteOff) {
        counted.data1 = event.origData1 & 0x7FU;
    }
    return counted;
}

std::optional<Item> CountedItem(const song::MidiEvent& event, Fingerprint::Values values) {
    std::optional<Item> item =
        event.IsChannelMessage() ? ItemOf(Counted(event, values)) : ItemOf(event);
    if (item && event.IsMeta(song::kMetaTempo)) {
        item->value = 0; // the practice tempo moves it
    }
    return item;
}

} // namespace

bool Touches(const TouchedControls& touched, const Difference& row) {
    return touched[CellOf(row.channel, row.kind, row.control)];
}

Fingerprint::Fingerprint(const song::Song& song, Values values)
    : cells_((song::kMidiChannels + 1) * kKinds * kControls), length_(song.songLength) {
    for (const song::Track& track : song.tracks) {
        for (song::ConstEventLink event = track.first; event; event = event->next) {
            if (const auto item = CountedItem(*event, values)) {
                const Slot& slot = item->slot;
                cells_[CellOf(slot.channel, slot.kind, slot.control)] +=
                    Mixed(Mixed((std::uint64_t{slot.control} << 32U) |
                                static_cast<std::uint32_t>(event->tick)) ^
                          item->value);
            }
        }
    }
}

TouchedControls Fingerprint::Against(const Fingerprint& other) const {
    TouchedControls touched;
    for (std::size_t i = 0; i < cells_.size(); ++i) {
        touched[i] = cells_[i] != other.cells_[i];
    }
    return touched;
}

std::uint64_t Fingerprint::Sum() const {
    std::uint64_t sum = static_cast<std::uint32_t>(length_);
    for (std::size_t i = 0; i < cells_.size(); ++i) {
        if (cells_[i] != 0) {
            sum += Mixed(cells_[i] + i);
        }
    }
    return sum;
}

} // namespace tracksmith::diff
