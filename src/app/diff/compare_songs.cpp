#include "app/diff/compare_songs.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <span>
#include <vector>

#include "app/diff/alignment.h"
#include "app/diff/change_list.h"
#include "app/diff/edge_items.h"
#include "app/diff/event_slot.h"
#include "song/track_walk.h"

namespace tracksmith::diff {
namespace {

constexpr std::int64_t kNoTick = std::numeric_limits<std::int64_t>::max();

struct SavedEvents : song::EveryEvent {
    static bool Wants(const song::MidiEvent& event) { return event.length != 0; }
};

bool SameBytes(const song::MidiEvent& a, const song::MidiEvent& b) {
    if (a.status != b.status || a.data1 != b.data1 || a.data2 != b.data2 || a.kind != b.kind ||
        a.metaType != b.metaType || a.length != b.length) {
        return false;
    }
    return a.kind == song::kShortMessage || std::ranges::equal(a.Payload(), b.Payload());
}

/// The events of one song, tick by tick, at their places in the later song.
class Side {
public:
    Side(const song::Song& song, std::span<const Segment> segments, bool isBefore)
        : walk_(song), segments_(segments), isBefore_(isBefore) {
        voices_.fill(kNoVoice);
    }

    /// Place of the next events; kNoTick behind the last.
    std::int64_t NextPlace() {
        while (const song::MidiEvent* event = walk_.Peek()) {
            const std::int64_t place = PlaceOf(event->tick);
            if (place >= 0) {
                return place;
            }
            walk_.Take(); // only in this song, as a part of a stretch
        }
        return kNoTick;
    }

    /// All events at that place.
    std::vector<Item>& TakePlace(std::int64_t place) {
        items_.clear();
        while (NextPlace() == place) {
            const song::MidiEvent* event = walk_.Take();
            tick_ = event->tick;
            if (const auto item = ItemOf(*event)) {
                items_.push_back(*item);
                if (item->slot.kind == Kind::Voice) {
                    Select(*item);
                }
            }
        }
        return items_;
    }
    void TakeNothing() { items_.clear(); }

    /// The next event, where NextPlace has found one.
    const song::MidiEvent& Next() const { return *walk_.Peek(); }

    /// Takes it without comparing.
    void Pass() {
        const song::MidiEvent& event = *walk_.Take();
        tick_ = event.tick;
        if (event.Command() == song::kProgramChange || event.Command() == song::kControlChange) {
            const auto item = ItemOf(event);
            if (item && item->slot.kind == Kind::Voice) {
                Select(*item);
            }
        }
    }

    std::vector<Item>& Items() { return items_; }
    std::int32_t Tick() const { return tick_; }
    VoiceBytes Voice(std::uint8_t channel) const { return voices_.at(channel); }

private:
    // -1 where the tick is in none of the segments.
    std::int64_t PlaceOf(std::int64_t tick) {
        while (segment_ + 1 < segments_.size() && tick >= EndOf(segments_[segment_])) {
            ++segment_;
        }
        const Segment& segment = segments_[segment_];
        const std::int64_t offset = isBefore_ ? 0 : segment.shift;
        if (tick < segment.begin + offset) {
            return -1;
        }
        return isBefore_ ? tick + segment.shift : tick;
    }
    std::int64_t EndOf(const Segment& segment) const {
        return std::int64_t{segment.end} + (isBefore_ ? 0 : segment.shift);
    }

    void Select(const Item& item) {
        const unsigned shift = item.slot.control == song::kBankMsb   ? 16U
                               : item.slot.control == song::kBankLsb ? 8U
                                                                     : 0U;
        VoiceBytes& voice = voices_.at(item.slot.channel);
        voice = (voice & ~(0xFFU << shift)) | (static_cast<VoiceBytes>(item.value) << shift);
    }

    song::TrackWalk<song::TickOrder, SavedEvents> walk_;
    std::span<const Segment> segments_;
    bool isBefore_;
    std::size_t segment_ = 0;
    std::vector<Item> items_;
    std::int32_t tick_ = 0;
    std::array<VoiceBytes, song::kMidiChannels> voices_{};
};

/// Where a stretch was cut or put in, in the later song.
struct Stretch {
    Difference row;
    std::int64_t begin = 0;
    std::int64_t end = 0;
    EdgeItems items;

    // How far from an edge a tool puts something in.
    static constexpr std::int64_t kBeforeEdge = 2;
    static constexpr std::int64_t kBehindEdge = 1;

    // What a tool puts in at the edges so that the song goes on as before.
    bool IsEdge(std::int64_t tick) const {
        const auto near = [tick](std::int64_t edge) {
            return tick >= edge - kBeforeEdge && tick <= edge + kBehindEdge;
        };
        return near(begin) || near(end);
    }

    // The stretch with its edges in the later song, and in the earlier one where it stands there.
    TickStretch After() const { return {begin - kBeforeEdge, end + kBehindEdge + 1}; }
    TickStretch Before() const {
        const std::int64_t start = row.change == Change::Copied ? row.source : row.tickBefore;
        const std::int64_t length = row.change == Change::Inserted ? 0 : row.length;
        return {start - kBeforeEdge, start + length + kBehindEdge + 1};
    }
};

std::vector<Stretch> StretchesOf(const song::Song& before, const song::Song& after,
                                 std::span<const Segment> segments) {
    std::vector<Stretch> stretches;
    const auto add = [&](std::int32_t tickBefore, std::int64_t begin, std::int64_t end,
                         std::int32_t length, Change change) {
        Stretch stretch{{}, begin, end, {}};
        stretch.row.change = change;
        stretch.row.tickBefore = tickBefore;
        stretch.row.tickAfter = static_cast<std::int32_t>(begin);
        stretch.row.length = length;
        stretch.row.ticks = {static_cast<std::int32_t>(begin)};
        if (change == Change::Inserted) {
            const std::int32_t source = FindSource(before, after, static_cast<std::int32_t>(begin),
                                                   static_cast<std::int32_t>(end));
            stretch.row.change = source >= 0 ? Change::Copied : Change::Inserted;
            stretch.row.source = std::max(source, 0);
        }
        stretches.push_back(std::move(stretch));
    };
    if (segments.front().begin > 0) {
        add(0, 0, 0, segments.front().begin, Change::Cut);
    }
    for (std::size_t i = 1; i < segments.size(); ++i) {
        const Segment& last = segments[i - 1];
        const Segment& next = segments[i];
        const std::int64_t begin = std::int64_t{last.end} + last.shift;
        const std::int64_t end = std::int64_t{next.begin} + next.shift;
        if (next.begin > last.end) {
            add(last.end, begin, begin, next.begin - last.end, Change::Cut);
        }
        if (end > begin) {
            add(last.end, begin, end, static_cast<std::int32_t>(end - begin), Change::Inserted);
        }
    }
    return stretches;
}

/// One comparison.
class Comparison {
public:
    Comparison(const song::Song& before, const song::Song& after)
        : segments_(AlignSongs(before, after)),
          stretches_(StretchesOf(before, after, segments_)),
          before_(before, segments_, true),
          after_(after, segments_, false) {}

    Differences Run(const song::Song& before, const song::Song& after) {
        while (true) {
            PassEqual();
            const std::int64_t old = before_.NextPlace();
            const std::int64_t now = after_.NextPlace();
            const std::int64_t place = std::min(old, now);
            if (place == kNoTick) {
                break;
            }
            old == place ? static_cast<void>(before_.TakePlace(place)) : before_.TakeNothing();
            now == place ? static_cast<void>(after_.TakePlace(place)) : after_.TakeNothing();
            if (before_.Items() != after_.Items()) {
                Compare(place, {old == place ? before_.Tick() : OriginOf(place),
                                static_cast<std::int32_t>(place)});
            }
        }
        AddLength(before, after);
        for (Stretch& stretch : stretches_) {
            stretch.row.count =
                stretch.items.Tell(before, stretch.Before(), after, stretch.After(), list_);
            list_.AddRow(std::move(stretch.row));
        }
        return list_.Take();
    }

private:
    // Where a place of the later song was in the earlier one.
    std::int32_t OriginOf(std::int64_t place) const {
        for (const Segment& segment : segments_) {
            if (place < std::int64_t{segment.end} + segment.shift) {
                return static_cast<std::int32_t>(
                    std::max<std::int64_t>(place - segment.shift, segment.begin));
            }
        }
        return 0;
    }

    Stretch* EdgeAt(std::int64_t place) {
        const auto found = std::ranges::find_if(
            stretches_, [place](const Stretch& each) { return each.IsEdge(place); });
        return found == stretches_.end() ? nullptr : &*found;
    }

    // Most of two songs stands in both in the same order.
    void PassEqual() {
        while (true) {
            const std::int64_t place = before_.NextPlace();
            if (place == kNoTick || place != after_.NextPlace() ||
                !SameBytes(before_.Next(), after_.Next())) {
                return;
            }
            before_.Pass();
            after_.Pass();
        }
    }

    // Without those that are in both; of each slot the first with the first.
    void Compare(std::int64_t place, const PlacePair& places) {
        Sort(before_.Items());
        Sort(after_.Items());
        Stretch* const edge = EdgeAt(place);
        std::array<int, song::kMidiChannels> more{};
        std::array<bool, song::kMidiChannels> voice{};
        const auto tell = [&](const Item* old, const Item* now) {
            const Item& any = old != nullptr ? *old : *now;
            if (edge != nullptr) {
                EdgeItems::Voices voices;
                if (any.slot.channel < song::kMidiChannels) {
                    voices = {before_.Voice(any.slot.channel), after_.Voice(any.slot.channel)};
                }
                edge->items.Add(old, now, places, voices);
            } else if (any.slot.kind == Kind::Voice) {
                voice.at(any.slot.channel) = true;
                more.at(any.slot.channel) += (now != nullptr ? 1 : 0) - (old != nullptr ? 1 : 0);
            } else {
                list_.Add(old, now, places);
            }
        };
        Match(tell);
        for (std::uint8_t channel = 0; channel < song::kMidiChannels; ++channel) {
            if (voice.at(channel)) {
                list_.AddVoice(channel, before_.Voice(channel), after_.Voice(channel),
                               more.at(channel), places);
            }
        }
    }

    static void Sort(std::vector<Item>& items) { std::ranges::stable_sort(items, {}, &Item::slot); }

    template <typename Tell>
    void Match(const Tell& tell) {
        const std::vector<Item>& old = before_.Items();
        const std::vector<Item>& now = after_.Items();
        std::size_t i = 0;
        std::size_t j = 0;
        while (i < old.size() || j < now.size()) {
            if (j == now.size() || (i < old.size() && old[i].slot < now[j].slot)) {
                tell(&old[i++], nullptr);
            } else if (i == old.size() || now[j].slot < old[i].slot) {
                tell(nullptr, &now[j++]);
            } else if (old[i].value == now[j].value) {
                ++i;
                ++j;
            } else {
                MatchSlot(i, j, tell);
            }
        }
    }

    // Of events of one slot: what stands in both goes together, whatever the order.
    template <typename Tell>
    void MatchSlot(std::size_t& i, std::size_t& j, const Tell& tell) {
        const std::vector<Item>& old = before_.Items();
        const std::vector<Item>& now = after_.Items();
        const Slot slot = old[i].slot;
        std::vector<const Item*> left;
        for (; i < old.size() && old[i].slot == slot; ++i) {
            left.push_back(&old[i]);
        }
        std::vector<const Item*> right;
        for (; j < now.size() && now[j].slot == slot; ++j) {
            const auto same = std::ranges::find_if(
                left, [&](const Item* each) { return each->value == now[j].value; });
            if (same != left.end()) {
                left.erase(same);
            } else {
                right.push_back(&now[j]);
            }
        }
        for (std::size_t each = 0; each < std::max(left.size(), right.size()); ++each) {
            tell(each < left.size() ? left[each] : nullptr,
                 each < right.size() ? right[each] : nullptr);
        }
    }

    // Only what the stretches do not explain.
    void AddLength(const song::Song& before, const song::Song& after) {
        const std::int64_t expected = std::int64_t{before.songLength} + segments_.back().shift;
        if (expected != after.songLength) {
            Difference row;
            row.kind = Kind::Tempo;
            row.control = kSongLength;
            row.count = 1;
            row.before = row.tickBefore = before.songLength;
            row.after = row.tickAfter = after.songLength;
            row.ticks = {after.songLength};
            list_.AddRow(std::move(row));
        }
    }

    std::vector<Segment> segments_;
    std::vector<Stretch> stretches_;
    Side before_;
    Side after_;
    ChangeList list_;
};

Differences OtherResolution(const song::Song& before, const song::Song& after) {
    ChangeList list;
    Difference row;
    row.kind = Kind::Tempo;
    row.control = kResolution;
    row.count = 1;
    row.before = before.division;
    row.after = after.division;
    list.AddRow(std::move(row));
    return list.Take();
}

} // namespace

Differences CompareSongs(const song::Song& before, const song::Song& after) {
    // Then no place of one song is one of the other.
    if (before.division != after.division) {
        return OtherResolution(before, after);
    }
    return Comparison(before, after).Run(before, after);
}

} // namespace tracksmith::diff
