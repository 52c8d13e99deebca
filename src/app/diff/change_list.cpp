#include "app/diff/change_list.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <tuple>
#include <utility>

namespace tracksmith::diff {
namespace {

// Of messages each has a row, up to so many.
constexpr std::size_t kMostMessages = 200;

std::string BytesOf(const Item& item) {
    const auto bytes = item.event->Payload();
    return {bytes.begin(), bytes.end()};
}

void Place(Difference& row, std::int32_t tick) {
    ++row.count;
    if (row.ticks.size() < kMostPlaces) {
        row.ticks.push_back(tick);
    }
}

// The distance in semitones when all notes are the same but moved by one; 0 otherwise.
template <typename Notes>
int Transposition(const Notes& removed, const Notes& added) {
    if (removed.empty() || removed.size() != added.size()) {
        return 0;
    }
    const int distance = added.front().key - removed.front().key;
    for (std::size_t i = 0; i < removed.size(); ++i) {
        if (added[i].place.after != removed[i].place.after ||
            added[i].key - removed[i].key != distance) {
            return 0;
        }
    }
    return distance;
}

} // namespace

ChangeList::Sum& ChangeList::SumOf(const RowKey& key, const PlacePair& place) {
    const auto [found, isNew] = rows_.try_emplace(key);
    Difference& row = found->second.row;
    if (isNew) {
        row.channel = key.slot.channel;
        row.kind = key.slot.kind;
        row.control = key.slot.control;
        row.change = key.change;
    }
    if (isNew || place.after < row.tickAfter) {
        row.tickBefore = place.before;
        row.tickAfter = place.after;
    }
    Place(row, place.after);
    return found->second;
}

void ChangeList::Add(const Item* before, const Item* after, const PlacePair& place) {
    const Item& any = before != nullptr ? *before : *after;
    if (any.slot.kind == Kind::Note) {
        AddNote(before, after, place);
        return;
    }
    const Change change = before == nullptr  ? Change::Added
                          : after == nullptr ? Change::Removed
                                             : Change::Changed;
    const bool named = any.slot.kind == Kind::Message && messages_ < kMostMessages;
    messages_ += named ? 1 : 0;
    const std::uint64_t which =
        (before != nullptr ? before->value : 0) * 3 + (after != nullptr ? after->value : 0);
    Sum& sum = SumOf({any.slot, change, named ? which : 0}, place);
    sum.values = sum.values * 31 + any.value;
    Difference& row = sum.row;
    const auto old = static_cast<std::int64_t>(before != nullptr ? before->value : 0);
    const auto now = static_cast<std::int64_t>(after != nullptr ? after->value : 0);
    const bool bytes = any.slot.kind == Kind::Message || any.slot.kind == Kind::Text;
    if (row.count > 1) {
        row.sameDistance = row.sameDistance && now - old == row.after - row.before;
    } else if (bytes) {
        row.bytesBefore = before != nullptr ? BytesOf(*before) : std::string();
        row.bytesAfter = after != nullptr ? BytesOf(*after) : std::string();
    } else {
        row.before = old;
        row.after = now;
    }
}

void ChangeList::AddNote(const Item* before, const Item* after, const PlacePair& place) {
    const Item& any = before != nullptr ? *before : *after;
    ChannelNotes& notes = notes_.at(any.slot.channel);
    const bool end = any.slot.control >= kEndOfNote;
    const Note note{place, static_cast<std::uint8_t>(any.slot.control)};
    if (before != nullptr && after != nullptr) {
        Slot slot = any.slot;
        slot.control = end ? kEndOfNote : 0; // all keys together
        Difference& row = SumOf({slot, Change::Changed, 0}, place).row;
        const auto old = static_cast<std::int64_t>(before->value);
        const auto now = static_cast<std::int64_t>(after->value);
        row.sameDistance =
            row.count == 1 || (row.sameDistance && now - old == row.after - row.before);
        row.before = row.count == 1 ? old : row.before;
        row.after = row.count == 1 ? now : row.after;
    } else if (after != nullptr) {
        (end ? notes.endsAdded : notes.added).push_back(note);
    } else {
        (end ? notes.endsRemoved : notes.removed).push_back(note);
    }
}

void ChangeList::AddVoice(std::uint8_t channel, VoiceBytes before, VoiceBytes after, int more,
                          const PlacePair& place) {
    const Change change = before != after ? Change::Changed
                          : more > 0      ? Change::Added
                                          : Change::Removed;
    const std::uint64_t which = (std::uint64_t{before} << 32U) | after;
    Difference& row = SumOf({{Kind::Voice, channel, 0}, change, which}, place).row;
    row.before = before;
    row.after = after;
}

void ChangeList::AddRow(Difference row) {
    single_.push_back(std::move(row));
}

void ChangeList::AddNotes(std::uint8_t channel, Change change, const std::vector<Note>& notes,
                          std::size_t count) {
    if (count == 0) {
        return;
    }
    Difference row;
    row.channel = channel;
    row.kind = Kind::Note;
    row.change = change;
    for (const Note& note : notes) {
        Place(row, note.place.after);
    }
    row.count = static_cast<std::int64_t>(count);
    if (!notes.empty()) {
        row.tickBefore = notes.front().place.before;
        row.tickAfter = notes.front().place.after;
        row.before = row.after = notes.front().key;
    }
    single_.push_back(std::move(row));
}

// What stands at edges of stretches comes last.
void ChangeList::SortByPlace(ChannelNotes& notes) {
    for (std::vector<Note>* each :
         {&notes.added, &notes.removed, &notes.endsAdded, &notes.endsRemoved}) {
        std::ranges::stable_sort(*each, {}, [](const Note& note) { return note.place.after; });
    }
}

// The ends of notes that are only in one of the songs say nothing new.
void ChangeList::SumUp(std::uint8_t channel, const ChannelNotes& notes) {
    const int distance = Transposition(notes.removed, notes.added);
    if (distance != 0) {
        AddNotes(channel, Change::Transposed, notes.added, notes.added.size());
        single_.back().after = distance;
    } else {
        AddNotes(channel, Change::Added, notes.added, notes.added.size());
        AddNotes(channel, Change::Removed, notes.removed, notes.removed.size());
    }
    const auto beyond = [](const std::vector<Note>& ends, const std::vector<Note>& begins) {
        return ends.size() - std::min(ends.size(), begins.size());
    };
    const std::size_t later = beyond(notes.endsAdded, notes.added);
    const std::size_t earlier = beyond(notes.endsRemoved, notes.removed);
    AddNotes(channel, Change::EndsMoved, later >= earlier ? notes.endsAdded : notes.endsRemoved,
             std::max(later, earlier));
}

// What is gone at some places and new at others is one difference: settings that were taken behind
// a reset, a text that stands elsewhere.
void ChangeList::JoinMoved() {
    for (auto removed = rows_.begin(); removed != rows_.end();) {
        const auto& [key, sum] = *removed;
        auto added = rows_.end();
        if (key.change == Change::Removed) {
            const bool byValue = key.slot.kind != Kind::Voice && key.which != 0;
            added = rows_.find({key.slot, Change::Added, byValue ? sum.values : key.which});
        }
        if (added == rows_.end() || added->second.values != sum.values ||
            added->second.row.count != sum.row.count) {
            ++removed;
            continue;
        }
        Difference& row = added->second.row;
        row.change = Change::Moved;
        row.before = sum.row.before;
        row.bytesBefore = sum.row.bytesBefore;
        row.tickBefore = sum.row.tickBefore;
        removed = rows_.erase(removed);
    }
}

Differences ChangeList::Take() {
    JoinMoved();
    for (std::size_t channel = 0; channel < notes_.size(); ++channel) {
        SortByPlace(notes_.at(channel));
        SumUp(static_cast<std::uint8_t>(channel), notes_.at(channel));
    }
    Differences all;
    for (auto& [key, sum] : rows_) {
        std::ranges::sort(sum.row.ticks);
        all.rows.push_back(std::move(sum.row));
    }
    std::ranges::move(single_, std::back_inserter(all.rows));
    std::ranges::stable_sort(all.rows, {}, [](const Difference& row) {
        const bool stretch = row.change >= Change::Cut;
        return std::tuple(row.channel == kWholeSong ? -1 : int{row.channel}, !stretch, row.kind,
                          row.tickAfter);
    });
    for (const Difference& row : all.rows) {
        all.counts.at(static_cast<std::size_t>(row.kind)) += std::max<std::int64_t>(row.count, 1);
    }
    return all;
}

} // namespace tracksmith::diff
