#include "app/diff/alignment.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <functional>
#include <iterator>
#include <limits>
#include <optional>
#include <span>
#include <unordered_map>
#include <utility>

#include "base/parallel.h"

#include "song/song_position.h"
#include "song/track_walk.h"

namespace tracksmith::diff {
namespace {

/// The notes that begin at one tick.
struct Group {
    std::int32_t tick = 0;
    std::uint32_t hash = 0;

    friend bool operator==(const Group&, const Group&) = default;
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

// A second thread reads the second song if that is worth it.
std::pair<Groups, Groups> GroupsOfBoth(const song::Song& before, const song::Song& after) {
    std::pair<Groups, Groups> groups;
    ParallelFor(2, ThreadsFor(before.pool.UsedBytes() + after.pool.UsedBytes()),
                [&](std::size_t index) {
                    index == 0 ? groups.first = GroupsOf(before) : groups.second = GroupsOf(after);
                });
    return groups;
}

std::size_t FirstFrom(const Groups& groups, std::int64_t tick) {
    return static_cast<std::size_t>(
        std::ranges::lower_bound(groups, tick, {},
                                 [](const Group& group) { return std::int64_t{group.tick}; }) -
        groups.begin());
}

/// What two songs have in common before and behind all that may have been cut or put in.
struct Common {
    std::size_t ahead = 0;  // groups at the same ticks
    std::size_t behind = 0; // groups at ticks that are later by `lengthening`
    std::int32_t lengthening = 0;
};

Common CommonOf(const Groups& before, const Groups& after, std::int32_t lengthening) {
    const std::size_t shorter = std::min(before.size(), after.size());
    Common common{.lengthening = lengthening};
    while (common.ahead < shorter && before[common.ahead] == after[common.ahead]) {
        ++common.ahead;
    }
    const auto alikeFromEnd = [&](std::size_t count) {
        const Group& old = before[before.size() - count];
        const Group& now = after[after.size() - count];
        return old.hash == now.hash && std::int64_t{old.tick} + lengthening == now.tick;
    };
    while (common.ahead + common.behind < shorter && alikeFromEnd(common.behind + 1)) {
        ++common.behind;
    }
    return common;
}

// Calls `take(pattern, tick)` for each group with those that follow it and their distances as one
// number. The number of the next group follows from the last one, since songs have many.
template <typename Take>
void ForEachPattern(std::span<const Group> groups, const Take& take) {
    constexpr std::size_t kSteps = 7;
    constexpr std::uint64_t kFactor = 0x9E37'79B9'7F4A'7C15U;
    constexpr std::uint64_t kOldestFactor = [] {
        std::uint64_t factor = 1;
        for (std::size_t i = 1; i < kSteps; ++i) {
            factor *= kFactor;
        }
        return factor;
    }();
    const auto step = [&](std::size_t to) {
        const auto distance = static_cast<std::uint32_t>(groups[to].tick - groups[to - 1].tick);
        return groups[to].hash ^ (std::uint64_t{distance} << 32U);
    };
    std::uint64_t sum = 0;
    for (std::size_t to = 1; to < groups.size(); ++to) {
        sum = sum * kFactor + step(to);
        if (to >= kSteps) {
            const std::size_t first = to - kSteps;
            const std::uint64_t pattern = (sum + groups[first].hash) * kFactor;
            take(pattern ^ (pattern >> 29U), groups[first].tick);
            sum -= step(first + 1) * kOldestFactor;
        }
    }
}

// The distances at which patterns of the earlier song are found most often in the later one.
// Patterns are taken by their own number, so that both songs take the same ones.
std::vector<std::int32_t> LikelyShifts(std::span<const Group> before, std::span<const Group> after,
                                       std::int32_t lengthening) {
    constexpr std::size_t kFew = 4'000;
    constexpr std::size_t kMostShifts = 6;
    const std::uint64_t every = 1 + std::max(before.size(), after.size()) / kFew;
    std::unordered_multimap<std::uint64_t, std::int32_t> places;
    ForEachPattern(after, [&](std::uint64_t pattern, std::int32_t tick) {
        if (pattern % every == 0) {
            places.emplace(pattern, tick);
        }
    });
    std::unordered_map<std::int32_t, std::size_t> votes;
    constexpr std::ptrdiff_t kMostRepeats = 8; // what comes more often says little
    ForEachPattern(before, [&](std::uint64_t pattern, std::int32_t tick) {
        if (pattern % every == 0) {
            const auto [first, last] = places.equal_range(pattern);
            if (std::distance(first, last) <= kMostRepeats) {
                std::for_each(first, last,
                              [&](const auto& place) { ++votes[place.second - tick]; });
            }
        }
    });
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
/// out. The first shift is 0; that of what is common behind is among them.
class ShiftSearch {
public:
    ShiftSearch(const song::TimeMap& map, const Groups& before, const Groups& after,
                const Common& common, std::vector<std::int32_t> shifts)
        : map_(map),
          before_(before),
          after_(after),
          shifts_(std::move(shifts)),
          first_(common.ahead),
          commonBehind_(before.size() - common.behind),
          lastShift_(static_cast<std::size_t>(std::ranges::find(shifts_, common.lengthening) -
                                              shifts_.begin())) {}

    std::vector<Segment> Run() {
        const std::size_t states = shifts_.size();
        cursors_.assign(states, 0);
        cursors_[0] = first_;
        found_.assign(states, 0);
        jumps_.assign(states * states, first_);
        Reach(first_);
        cost_[0] = 0;
        std::size_t at = first_;
        for (; at < before_.size() && !Settled(at); ++at) {
            Reach(at + 1);
            for (std::size_t state = 0; state < states; ++state) {
                found_[state] = FindNext(at, state) ? 1 : 0;
            }
            for (std::size_t state = 0; state < states; ++state) {
                // Only where something is missing; SeamAt moves it to where a user cuts.
                if (found_[state] == 0) {
                    Switch(at, state);
                }
            }
            for (std::size_t state = 0; state < states; ++state) {
                const Cost cost = found_[state] == 0 ? kMissing : 0;
                Relax(Index(at + 1, state), cost_[Index(at, state)] + cost, at, state);
            }
        }
        return Backwards(at);
    }

private:
    using Cost = std::uint32_t;
    static constexpr Cost kNever = std::numeric_limits<Cost>::max() / 2;
    static constexpr Cost kMissing = 16;
    static constexpr Cost kSwitch = 6 * kMissing;
    static constexpr Cost kSkipped = 1; // a group of either song that a switch leaves out

    struct Step {
        std::uint32_t at = 0;
        std::uint32_t state = 0;
    };

    std::size_t Index(std::size_t at, std::size_t state) const {
        return (at - first_) * shifts_.size() + state;
    }
    // Makes room for the costs of all shifts at `at`.
    void Reach(std::size_t at) {
        const std::size_t size = Index(at + 1, 0);
        if (cost_.size() < size) {
            cost_.resize(size, kNever);
            from_.resize(size);
        }
    }
    // Whether no other way can become as cheap as the one on which the rest costs nothing. Looks at
    // all that was reached, and therefore less and less often.
    bool Settled(std::size_t at) const {
        if (at < commonBehind_ || std::popcount(at - commonBehind_) > 1) {
            return false;
        }
        const std::size_t settled = Index(at, lastShift_);
        const auto cheap = [limit = cost_[settled]](Cost cost) { return cost <= limit; };
        const auto begin = cost_.begin();
        const auto place = begin + static_cast<std::ptrdiff_t>(settled);
        return std::none_of(begin + static_cast<std::ptrdiff_t>(Index(at, 0)), place, cheap) &&
               std::none_of(place + 1, cost_.end(), cheap);
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
    bool FindNext(std::size_t at, std::size_t state) {
        std::size_t& cursor = cursors_[state];
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
                std::size_t& to = jumps_[state * shifts_.size() + next];
                const std::int64_t tick = before_[at].tick - std::min<std::int64_t>(longer, 0);
                while (to < before_.size() && before_[to].tick < tick) {
                    ++to;
                }
                const std::size_t skipped = longer > 0 ? cursors_[next] - cursors_[state] : to - at;
                Reach(to);
                Relax(Index(to, next), cost + kSwitch + static_cast<Cost>(skipped) * kSkipped, at,
                      state);
            }
        }
    }

    // With what is left of the later song behind the end of the earlier one.
    Cost CostOfEnd(std::size_t at, std::size_t state) const {
        const std::size_t end = FirstFrom(after_, std::int64_t{map_.songLength} + shifts_[state]);
        return cost_[Index(at, state)] + static_cast<Cost>(after_.size() - end) * kSkipped;
    }

    std::vector<Segment> Backwards(std::size_t at) const {
        std::size_t state = 0;
        for (std::size_t each = 1; each < shifts_.size(); ++each) {
            state = CostOfEnd(at, each) < CostOfEnd(at, state) ? each : state;
        }
        std::vector<Segment> segments{{0, kToTheEnd, shifts_[state]}};
        while (at > first_ || state != 0) {
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
    std::size_t first_;        // up to here all is common
    std::size_t commonBehind_; // and from here on
    std::size_t lastShift_;    // with this shift
    std::vector<Cost> cost_;
    std::vector<Step> from_;
    std::vector<std::size_t> cursors_; // in the later song, for each shift
    std::vector<char> found_;
    std::vector<std::size_t> jumps_; // where each change of the shift last led to
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

// By how many ticks, at least `least`, the groups of the stretch stand later in the song.
std::optional<std::int64_t> ShiftTo(std::span<const Group> stretch, const Groups& song,
                                    std::int64_t least) {
    for (std::size_t at = 0; at + stretch.size() <= song.size(); ++at) {
        const std::int64_t shift = std::int64_t{song[at].tick} - stretch.front().tick;
        const auto stands = [shift](const Group& group, const Group& place) {
            return place.hash == group.hash && place.tick == group.tick + shift;
        };
        if (shift >= least &&
            std::ranges::equal(stretch, std::span(song).subspan(at, stretch.size()), stands)) {
            return shift;
        }
    }
    return std::nullopt;
}

} // namespace

std::vector<Segment> AlignSongs(const song::Song& before, const song::Song& after) {
    const auto [earlier, later] = GroupsOfBoth(before, after);
    if (earlier == later || before.timeZones.empty()) {
        return {{0, kToTheEnd, 0}};
    }
    const std::int32_t lengthening = after.songLength - before.songLength;
    const Common common = CommonOf(earlier, later, lengthening);
    const auto unlike = [&common](const Groups& groups) {
        return std::span(groups).subspan(common.ahead,
                                         groups.size() - common.ahead - common.behind);
    };
    std::vector<Segment> segments =
        ShiftSearch(before, earlier, later, common,
                    LikelyShifts(unlike(earlier), unlike(later), lengthening))
            .Run();
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
    const auto [earlier, later] = GroupsOfBoth(before, after);
    const std::size_t last = FirstFrom(later, end);
    // A tool begins notes again at the seam that sound over it.
    constexpr std::int64_t kBehindSeam = 2;
    for (const std::int64_t from : {std::int64_t{begin}, begin + kBehindSeam}) {
        const std::size_t first = FirstFrom(later, from);
        const auto shift = first < last ? ShiftTo(std::span(later).subspan(first, last - first),
                                                  earlier, -std::int64_t{begin})
                                        : std::nullopt;
        if (shift) {
            return static_cast<std::int32_t>(begin + *shift);
        }
    }
    return -1;
}

} // namespace tracksmith::diff
