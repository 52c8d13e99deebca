#include "editing/note_scan.h"

#include <algorithm>

namespace tracksmith::editing {

using song::EventLink;
using song::NotePairing;

EventLink OpenNotes::Take(EventLink event) {
    if (!IsNote(*event)) {
        return {};
    }
    const std::size_t key = NotePairing::KeyOf(event->status, event->data1);
    Line& line = lines_[key];
    if (event->IsNoteOn()) {
        if (line.notes.empty()) {
            used_.push_back(key);
        }
        line.notes.push_back(event);
        return {};
    }
    if (line.ended == line.notes.size()) {
        return {};
    }
    const EventLink on = line.notes[line.ended++];
    if (line.ended == line.notes.size() && line.notes.size() > 1) {
        // One stays, so that the line is not listed as used again.
        line.notes.resize(1);
        line.ended = 1;
    }
    return on;
}

bool OpenNotes::Sounds(const song::MidiEvent& event) const {
    const Line& line = lines_[NotePairing::KeyOf(event.status, event.data1)];
    return line.ended < line.notes.size();
}

std::vector<EventLink> OpenNotes::All() const {
    std::vector<std::size_t> keys = used_;
    std::ranges::sort(keys);
    std::vector<EventLink> all;
    for (const std::size_t key : keys) {
        const Line& line = lines_[key];
        all.insert(all.end(), line.notes.begin() + static_cast<std::ptrdiff_t>(line.ended),
                   line.notes.end());
    }
    return all;
}

void OpenNotes::Clear() {
    for (const std::size_t key : used_) {
        lines_[key].notes.clear();
        lines_[key].ended = 0;
    }
    used_.clear();
}

std::vector<EventLink> NotesAtTick::Across() const {
    std::vector<EventLink> across = open;
    std::erase_if(
        across, [this](EventLink on) { return std::ranges::binary_search(endingOns, on.Unit()); });
    return across;
}

bool NotesAtTick::EndsHere(EventLink off) const {
    return std::ranges::binary_search(endingOffs, off.Unit());
}

std::vector<NotesAtTick> ScanNotes(song::Track& track, std::span<const std::int32_t> ticks,
                                   OpenNotes& open, const NoteFaultListener& listener) {
    open.Clear();
    std::vector<NotesAtTick> found(ticks.size());
    std::size_t reached = 0;
    for (EventLink event = track.first; event; event = event->next) {
        while (reached < ticks.size() && event->tick >= ticks[reached]) {
            found[reached++].open = open.All();
        }
        if (reached == ticks.size() && (ticks.empty() || event->tick > ticks.back())) {
            break;
        }
        if (!IsNote(*event)) {
            continue;
        }
        const bool isOn = event->IsNoteOn();
        const bool sounds = open.Sounds(*event);
        if (listener && isOn == sounds) {
            listener(isOn ? NoteFault::DoubleNoteOn : NoteFault::DoubleNoteOff, *event);
        }
        const EventLink on = open.Take(event);
        for (std::size_t i = 0; on && i < reached; ++i) {
            if (ticks[i] == event->tick && on->tick < ticks[i]) {
                found[i].endingOns.push_back(on.Unit());
                found[i].endingOffs.push_back(event.Unit());
            }
        }
    }
    for (NotesAtTick& notes : found) {
        std::ranges::sort(notes.endingOns);
        std::ranges::sort(notes.endingOffs);
    }
    return found;
}

} // namespace tracksmith::editing
