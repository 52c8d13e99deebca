#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "app/diff/difference.h"
#include "song/midi_numbers.h"
#include "song/song.h"

namespace tracksmith::diff {

/// Which controls of a song have been touched: a bit for each channel, kind and control; notes and
/// voices of a channel have one bit each.
using TouchedControls = std::bitset<(song::kMidiChannels + 1) * kKinds * 512>;

/// Whether `row` tells of one of them.
bool Touches(const TouchedControls& touched, const Difference& row);

/// What the events of each control of a song come to, as one number: two fingerprints tell which
/// controls an edit has touched, without keeping the song. A transposition while playing and the
/// practice tempo do not show, since they are no edits. 230 KB. Any thread, as long as nobody
/// changes the song; the time grows with its events. Throws std::bad_alloc.
class Fingerprint {
public:
    enum class Values : std::uint8_t {
        Now,     ///< as the events are
        AsLoaded ///< before anybody moved data bytes in place
    };

    Fingerprint(const song::Song& song, Values values);

    /// The controls whose events are not the same, at the same places.
    TouchedControls Against(const Fingerprint& other) const;
    /// Events were moved as a whole: the song has another length.
    bool OtherLength(const Fingerprint& other) const { return length_ != other.length_; }

    friend bool operator==(const Fingerprint&, const Fingerprint&) = default;
    /// The same for fingerprints that are the same.
    std::uint64_t Sum() const;

private:
    std::vector<std::uint64_t> cells_;
    std::int32_t length_;
};

} // namespace tracksmith::diff
