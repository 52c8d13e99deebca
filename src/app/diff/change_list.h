#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

#include "app/diff/difference.h"
#include "app/diff/event_slot.h"
#include "song/midi_numbers.h"

namespace tracksmith::diff {

/// A voice as its channel selects it: MSB, LSB and program in a byte each, 0xFF where nothing is
/// selected yet.
using VoiceBytes = std::uint32_t;

inline constexpr VoiceBytes kNoVoice = 0xFF'FFFF;

/// Where two events or their absence were met, in each song.
struct PlacePair {
    std::int32_t before = 0;
    std::int32_t after = 0;
};

/// Gathers what differs, mostly in the order of the songs, and sums it up by channel, kind and
/// control.
class ChangeList {
public:
    /// One event, or its absence (null), in each song. Not for voices.
    void Add(const Item* before, const Item* after, const PlacePair& place);
    /// Other voices, or bank selects and programs of which `more` are in the later song (negative:
    /// in the earlier) though the voice is the same.
    void AddVoice(std::uint8_t channel, VoiceBytes before, VoiceBytes after, int more,
                  const PlacePair& place);
    /// A difference that stands for itself.
    void AddRow(Difference row);

    /// All of it, sorted.
    Differences Take();

private:
    struct Note {
        PlacePair place;
        std::uint8_t key = 0;
    };
    struct ChannelNotes {
        std::vector<Note> added;
        std::vector<Note> removed;
        std::vector<Note> endsAdded;
        std::vector<Note> endsRemoved;
    };
    struct RowKey {
        Slot slot;
        Change change = Change::Changed;
        std::uint64_t which = 0;
        // NOLINTNEXTLINE(modernize-use-nullptr): the comparison's own zero
        friend auto operator<=>(const RowKey&, const RowKey&) = default;
    };

    struct Sum {
        Difference row;
        /// Of all values in their order, to find the same ones elsewhere.
        std::uint64_t values = 0;
    };

    void AddNote(const Item* before, const Item* after, const PlacePair& place);
    Sum& SumOf(const RowKey& key, const PlacePair& place);
    void JoinMoved();
    static void SortByPlace(ChannelNotes& notes);
    void SumUp(std::uint8_t channel, const ChannelNotes& notes);
    void AddNotes(std::uint8_t channel, Change change, const std::vector<Note>& notes,
                  std::size_t count);

    std::map<RowKey, Sum> rows_;
    std::vector<Difference> single_;
    std::array<ChannelNotes, song::kMidiChannels> notes_;
    std::size_t messages_ = 0;
};

} // namespace tracksmith::diff
