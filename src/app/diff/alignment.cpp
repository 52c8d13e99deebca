#include "app/diff/alignment.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iterator>
#include <limits>
#include <unordered_map>
#include <utility>

#include "song/song_position.h"
#include "song/track_walk.h"

namespace tracksmith::diff {
namespace {

/// The notes that begin at one tick.
struct Group {
    std::int32_t tick = 0;
    std::uint32_t hash = 0;
};

using Groups = std::vector<Group>;

struct NoteOns : song::EveryEvent {
    static bool Wants(const song::MidiEvent& event) {
        return event.IsNoteOn() && event.data2 != 0 && event.length != 0;
    }
};

// Without the velocity, so that other dynamics are no other notes.
std::uint32_t HashOf(const song::MidiEvent& event) {
    std::uint32_t value = (std::uint32_t{event.status} << 8U) | event.data1;
    value *= 0x9E37'79B1U;
    return (value ^ (value >> 15U)) * 0x85EB'CA77U;
}

Groups GroupsOf(const song::Song& song) {
    Groups groups;
    song::TrackWalk<song::TickOrder, NoteOns> walk(song);
    while (const song::MidiEvent* event = walk.Take()) {
        if (groups.empty() || groups.back().tick != event->tick) {
            groups.push_back({event->tick, 0});
        }
        groups.back().hash += HashOf(*event); // in any order
    }
    return groups;
}

std::size_t FirstFrom(const Groups& groups, std::int64_t tick) {
    return static_cast<std::size_t>(
        std::ranges::lower_bound(groups, tick, {},
                                 [](const Group& group) { return std::int64_t{group.tick}; }) -
        groups.begin());
}

// A few groups with their distances as one number.
std::uint64_t Pattern(const Groups& groups, std::size_t at) {
    constexpr std::size_t kGroups = 8;
    std::uint64_t pattern = 0;
    for (std::size_t i = at; i < at + kGroups && i < groups.size(); ++i) {
        const auto distance = static_cast<std::uint32_t>(groups[i].tick - groups[at].tick);
        pattern =
            (pattern ^ groups[i].hash ^ (std::uint64_t{distance} << 32U)) * 0x9E37'79B9'7F4A'7C15U;
        pattern ^= pattern >> 29U;
    }
    return pattern;
}

// The distances at which patterns of the earlier song are found most often in the later one.
// Patterns are taken by their own number, so that both songs take the same ones.
std::vector<std::int32_t> LikelyShifts(const Groups& before, const Groups& after,
                                       std::int32_t lengthening) {
    constexpr std::size_t kFew = 4'000;
    constexpr std::size_t kMostShifts = 6;
    const std::uint64_t every = 1 + std::max(before.size(), after.size()) / kFew;
    std::unordered_multimap<std::uint64_t, std::int32_t> places;
    for (std::size_t i = 0; i < after.size(); ++i) {
        if (const std::uint64_t pattern = Pattern(after, i); pattern % every == 0) {
            places.emplace(pattern, after[i].tick);
        }
    }
    std::unordered_map<std::int32_t, std::size_t> votes;
    constexpr std::ptrdiff_t kMostRepeats = 8; // what comes more often says little
    for (std::size_t i = 0; i < before.size(); ++i) {
        const std::uint64_t pattern = Pattern(before, i);
        if (pattern % every != 0) {
            continue;
        }
        const auto [first, last] = places.equal_range(pattern);
        if (std::distance(first, last) <= kMostRepeats) {
            std::for_each(first, last,
                          [&](const auto& place) { ++votes[place.second - before[i].tick]; });
        }
    }
    std::vector<std::pair<std::size_t, std::int32_t>> ranked;
    for (const auto& [shift, count] : votes) {
        if (shift != 0 && shift != lengthening) {
            ranked.emplace_back(count, shift);
        }
    }
    std::ranges::sort(ranked, std::greater<>());
    std::vector<std::int32_t> shifts{0};
    if (lengthening != 0) {
        shifts.push_back(lengthening);
    }
    for (const auto& [count, shift] : ranked) {
        if (shifts.size() < kMostShifts) {
            shifts.push_back(shift);
        }
    }
    return shifts;
}

constexpr std::int32_t kToTheEnd = std::numeric_limits<std::int32_t>::max();

/// Finds the cheapest way through the earlier song, on which each group that is not found at its
/// place costs, and each change of the shift. Where the shift becomes smaller, what was cut is left
/// out.
class ShiftSearch {
public:
    ShiftSearch(const song::TimeMap& map, const Groups& before, const Groups& after,
                std::vector<std::int32_t> shifts)
        : map_(map), before_(before), after_(after), shifts_(std::move(shifts)) {}

    std::vector<Segment> Run() {
        const std::size_t states = shifts_.size();
        cost_.assign((before_.size() + 1) * states, kNever);
        from_.assign(cost_.size(), {});
        std::vector<std::size_t> cursors(states);
        cost_[0] = 0;
        for (std::size_t at = 0; at < before_.size(); ++at) {
            for (std::size_t state = 0; state < states; ++state) {
                // Only where something is missing; SeamAt moves it to where a user cuts.
                if (!FoundNext(at, state, cursors[state])) {
                    Switch(at, state);
                }
            }
            for (std::size_t state = 0; state < states; ++state) {
                const bool found = FoundNext(at, state, cursors[state]);
                Relax(Index(at + 1, state), cost_[Index(at, state)] + (found ? 0 : kMissing), at,
                      state);
            }
        }
        return Backwards();
    }

private:
    using Cost = std::uint32_t;
    static constexpr Cost kNever = std::numeric_limits<Cost>::max() / 2;
    static constexpr Cost kMissing = 1;
    static constexpr Cost kSwitch = 6 * kMissing;

    struct Step {
        std::uint32_t at = 0;
        std::uint32_t state = 0;
    };

    std::size_t Index(std::size_t at, std::size_t state) const {
        return at * shifts_.size() + state;
    }
    void Relax(std::size_t target, Cost cost, std::size_t at, std::size_t state) {
        if (cost < cost_[target]) {
            cost_[target] = cost;
            from_[target] = {static_cast<std::uint32_t>(at), static_cast<std::uint32_t>(state)};
        }
    }

    bool IsAt(std::size_t place, const Group& group, std::int64_t tick) const {
        return place < after_.size() && after_[place].tick == tick &&
               after_[place].hash == group.hash;
    }
    // The cursor only goes forward.
    bool FoundNext(std::size_t at, std::size_t state, std::size_t& cursor) const {
        const std::int64_t tick = std::int64_t{before_[at].tick} + shifts_[state];
        while (cursor < after_.size() && after_[cursor].tick < tick) {
            ++cursor;
        }
        return IsAt(cursor, before_[at], tick);
    }

    // From this group on with another shift.
    void Switch(std::size_t at, std::size_t state) {
        const Cost cost = cost_[Index(at, state)];
        if (cost >= kNever) {
            return;
        }
        for (std::size_t next = 0; next < shifts_.size(); ++next) {
            const std::int64_t longer = std::int64_t{shifts_[next]} - shifts_[state];
            if (longer != 0) {
                const std::size_t to =
                    longer > 0 ? at : FirstFrom(before_, before_[at].tick - longer);
                Relax(Index(to, next), cost + kSwitch, at, state);
            }
        }
    }

    std::vector<Segment> Backwards() const {
        std::size_t at = before_.size();
        std::size_t state = 0;
        for (std::size_t each = 1; each < shifts_.size(); ++each) {
            state = cost_[Index(at, each)] < cost_[Index(at, state)] ? each : state;
        }
        std::vector<Segment> segments{{0, kToTheEnd, shifts_[state]}};
        while (at > 0 || state != 0) {
            const Step step = from_[Index(at, state)];
            if (step.state != state) {
                const std::int32_t shift = shifts_[step.state];
                const std::int32_t cut = std::max(0, shift - shifts_[state]);
                const std::int32_t seam = SeamAt(step.at, cut, shifts_[state]);
                segments.front().begin = seam + cut;
                segments.insert(segments.begin(), {0, seam, shift});
            }
            at = step.at;
            state = step.state;
        }
        return segments;
    }

    // The start of the measure or the beat, where as many notes are found with the cut there: the
    // first note that is missing need not be the first that was cut, since music repeats itself.
    std::int32_t SeamAt(std::size_t at, std::int32_t cut, std::int32_t shift) const {
        const std::int32_t tick = before_[at].tick;
        const song::MeasureBeatTick place = song::GetMeasureBeatFromSongPos(map_, tick);
        const std::int64_t beat = tick - place.tick;
        const auto zone = song::ZoneOfTick(map_, tick);
        const std::int64_t measure =
            beat - (place.beat - 1) * song::TicksPerBeat(map_, map_.timeZones[zone]);
        for (const std::int64_t seam : {measure, beat}) {
            if (seam >= 0 && AllFound(seam + cut, std::int64_t{tick} + cut, shift)) {
                return static_cast<std::int32_t>(seam);
            }
        }
        return tick;
    }
    bool AllFound(std::int64_t begin, std::int64_t end, std::int32_t shift) const {
        for (std::size_t at = FirstFrom(before_, begin);
             at < before_.size() && before_[at].tick < end; ++at) {
            const std::int64_t tick = std::int64_t{before_[at].tick} + shift;
            if (!IsAt(FirstFrom(after_, tick), before_[at], tick)) {
                return false;
            }
        }
        return true;
    }

    const song::TimeMap& map_;
    const Groups& before_;
    const Groups& after_;
    std::vector<std::int32_t> shifts_;
    std::vector<Cost> cost_;
    std::vector<Step> from_;
};

// The start of the measure at or behind the end: where a stretch that follows was put in.
std::int32_t MeasureBehindEnd(const song::TimeMap& map) {
    const std::int32_t end = map.songLength;
    const song::MeasureBeatTick place = song::GetMeasureBeatFromSongPos(map, end);
    const song::TimeZoneEntry& zone = map.timeZones[song::ZoneOfTick(map, end)];
    const std::int64_t beat = song::TicksPerBeat(map, zone);
    const std::int64_t start = end - place.tick - (place.beat - 1) * beat;
    const std::int64_t next = start == end ? end : start + zone.numerator * beat;
    return static_cast<std::int32_t>(
        std::min<std::int64_t>(next, std::numeric_limits<std::int32_t>::max()));
}

std::size_t Alike(const Groups& a, const Groups& b) {
    std::size_t alike = 0;
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
        alike += a[i].tick == b[i].tick && a[i].hash == b[i].hash ? 1 : 0;
    }
    return alike;
}

// Where a stretch is replaced by one of the same length its notes have changed: nothing was moved.
void JoinReplaced(std::vector<Segment>& segments) {
    std::vector<Segment> joined;
    for (const Segment& segment : segments) {
        if (segment.begin >= segment.end && !joined.empty()) {
            continue;
        }
        if (!joined.empty() && joined.back().shift == segment.shift) {
            joined.back().end = segment.end;
        } else {
            joined.push_back(segment);
        }
    }
    segments = std::move(joined);
}

} // namespace

std::vector<Segment> AlignSongs(const song::Song& before, const song::Song& after) {
    const Groups earlier = GroupsOf(before);
    const Groups later = GroupsOf(after);
    const std::int32_t lengthening = after.songLength - before.songLength;
    const bool same = earlier.size() == later.size() && Alike(earlier, later) == earlier.size();
    if (same || before.timeZones.empty()) {
        return {{0, kToTheEnd, 0}};
    }
    std::vector<Segment> segments =
        ShiftSearch(before, earlier, later, LikelyShifts(earlier, later, lengthening)).Run();
    JoinReplaced(segments);
    Segment& last = segments.back();
    // Nothing is missing where something was put in behind the end.
    const std::int64_t end = std::int64_t{before.songLength} + last.shift;
    if (last.shift < lengthening && !later.empty() && later.back().tick >= end) {
        const std::size_t first = FirstFrom(later, end);
        const std::int32_t measure = MeasureBehindEnd(before);
        const bool atMeasure = later[first].tick >= std::int64_t{measure} + last.shift;
        last.end = atMeasure ? measure : before.songLength;
        segments.push_back({last.end, kToTheEnd, lengthening});
    }
    return segments;
}

std::int32_t FindSource(const song::Song& before, const song::Song& after, std::int32_t begin,
                        std::int32_t end) {
    const Groups earlier = GroupsOf(before);
    const Groups later = GroupsOf(after);
    const std::size_t first = FirstFrom(later, begin);
    const std::size_t last = FirstFrom(later, end);
    for (std::size_t at = 0; first < last && at < earlier.size(); ++at) {
        const std::int32_t shift = earlier[at].tick - later[first].tick;
        if (begin + shift < 0) {
            continue;
        }
        std::size_t same = 0;
        while (first + same < last && at + same < earlier.size() &&
               earlier[at + same].hash == later[first + same].hash &&
               earlier[at + same].tick == later[first + same].tick + shift) {
            ++same;
        }
        if (same == last - first) {
            return begin + shift;
        }
    }
    return -1;
}

} // namespace tracksmith::diff
