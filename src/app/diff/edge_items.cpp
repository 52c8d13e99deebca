#include "app/diff/edge_items.h"

#include <algorithm>
#include <tuple>

namespace tracksmith::diff {
namespace {

bool Less(const Item& a, const Item& b) {
    return std::tie(a.slot, a.value) < std::tie(b.slot, b.value);
}

// Ends of notes: what they end tells the same.
bool IsEnd(const Item& item) {
    return item.slot.kind == Kind::Note && item.slot.control >= kEndOfNote;
}

/// Items that are looked for in a song.
class Search {
public:
    void Want(const Item& item) {
        if (!IsEnd(item)) {
            wanted_.push_back(item);
        }
    }

    void Run(const song::Song& song, TickStretch stretch) {
        std::ranges::sort(wanted_, Less);
        found_.assign(wanted_.size(), false);
        for (const song::Track& track : song.tracks) {
            song::ConstEventLink event = wanted_.empty() ? song::ConstEventLink() : track.first;
            for (; event; event = event->next) {
                if (!IsNote(*event) || stretch.Contains(event->tick)) {
                    Meet(*event);
                }
            }
        }
    }

    bool Knows(const Item& item) const {
        if (IsEnd(item)) {
            return true;
        }
        const auto place = std::ranges::lower_bound(wanted_, item, Less);
        return found_.at(static_cast<std::size_t>(place - wanted_.begin()));
    }

private:
    static bool IsNote(const song::MidiEvent& event) {
        return event.Command() == song::kNoteOn || event.Command() == song::kNoteOff;
    }
    void Meet(const song::MidiEvent& event) {
        const std::optional<Item> item = ItemOf(event);
        if (!item) {
            return;
        }
        const auto place = std::ranges::lower_bound(wanted_, *item, Less);
        if (place != wanted_.end() && *place == *item) {
            found_[static_cast<std::size_t>(place - wanted_.begin())] = true;
        }
    }

    std::vector<Item> wanted_;
    std::vector<bool> found_;
};

} // namespace

void EdgeItems::Add(const Item* before, const Item* after, const PlacePair& places,
                    const Voices& voices) {
    Entry entry{{}, {}, places, voices};
    if (before != nullptr) {
        entry.before = *before;
    }
    if (after != nullptr) {
        entry.after = *after;
    }
    entries_.push_back(entry);
}

std::int64_t EdgeItems::Tell(const song::Song& before, TickStretch beforeStretch,
                             const song::Song& after, TickStretch afterStretch,
                             ChangeList& list) const {
    Search inBefore;
    Search inAfter;
    for (const Entry& entry : entries_) {
        entry.after ? inBefore.Want(*entry.after) : inAfter.Want(*entry.before);
    }
    inBefore.Run(before, beforeStretch);
    inAfter.Run(after, afterStretch);
    std::int64_t known = 0;
    for (const Entry& entry : entries_) {
        if (entry.after ? inBefore.Knows(*entry.after) : inAfter.Knows(*entry.before)) {
            ++known;
            continue;
        }
        const Item& any = entry.after ? *entry.after : *entry.before;
        if (any.slot.kind == Kind::Voice) {
            const int more = (entry.after ? 1 : 0) - (entry.before ? 1 : 0);
            list.AddVoice(any.slot.channel, entry.voices.before, entry.voices.after, more,
                          entry.places);
        } else {
            list.Add(entry.before ? &*entry.before : nullptr, entry.after ? &*entry.after : nullptr,
                     entry.places);
        }
    }
    return known;
}

} // namespace tracksmith::diff
