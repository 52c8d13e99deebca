#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "instruments/catalogue.h"

namespace tracksmith::instruments {

/// How songs are prepared for an instrument; the settings of the user.
struct SysexOptions {
    /// Whether songs are prepared when they are loaded.
    bool automatic = true;
    /// GM System On at tick 2, then the GS Reset at tick 62, both on the track of channel 10.
    bool gmBeforeGs = false;
    /// Set-up messages go to a fixed track.
    bool fixedTrack = false;
    /// That track, and the one for want of a track of channel 10; counted from 0.
    std::int32_t defaultTrack = 10;
    /// Part equalisers of Korg Pa instruments are looked for.
    bool korgPartEqualizer = false;
    /// Insertion effects and organ flutes of Yamaha arrangers are looked for.
    bool yamahaDsps = true;
    /// The song may set the master equaliser (XG address 02 40); its messages are removed if not.
    bool yamahaMasterEq = true;
    /// The song may set the vocal harmony (XG address 04); its messages are removed if not.
    bool yamahaVocalHarmony = true;
    /// It may so only where somebody sings: songs without lyrics lose the messages.
    bool yamahaAutoVocalHarmony = false;
    /// The instrument's own set-up messages of Motif instruments are looked for.
    bool motifDsps = false;
    /// XG master equaliser messages stay in the song for Motif instruments.
    bool motifMasterEq = false;
    /// No GM System On for Motif instruments.
    bool motifWithoutGmReset = false;
    /// Audio outputs of the parts as the instrument numbers them, see AudioOutputs; 0 is the usual.
    std::array<std::uint8_t, 16> partOutputs{};
};

/// One message that the preparation put into the song, took out or only found.
struct SysexNote {
    enum class What : std::uint8_t { Inserted, Removed, Found };
    What what = What::Inserted;
    /// All bytes, F0 and F7 included; cut after kMostNotedBytes.
    std::vector<std::uint8_t> bytes;
    /// Bytes of the whole message.
    std::size_t size = 0;
    /// Track from 0.
    std::int32_t track = 0;
    /// Position in ticks.
    std::int32_t tick = 0;
};

/// Most bytes of a message that a SysexNote keeps.
inline constexpr std::size_t kMostNotedBytes = 256;
/// Most notes that a report keeps; the counts go on.
inline constexpr std::size_t kMostNotes = 1000;

/// What keeping the settings of one channel took, in events.
struct ChannelReport {
    /// Moved behind a message that would have undone them.
    std::int32_t moved = 0;
    /// Put in once more behind it, because a note of the channel begins before it.
    std::int32_t repeated = 0;
    /// Put in to bring back what a reset of the song had done that was taken out.
    std::int32_t undone = 0;
    /// Not kept: parameters of which nobody knows where a reset puts them.
    std::int32_t lost = 0;
    /// Notes that begin before the instrument is ready.
    std::int32_t earlyNotes = 0;
    /// Something was put in so that the channel plays drums, or melody on channel 10, as before.
    bool partKept = false;
    /// Notes that were drums and become melody, or the other way round.
    std::int32_t lostDrumNotes = 0;
    friend bool operator==(const ChannelReport&, const ChannelReport&) = default;
};

/// What preparing a song for an instrument did.
struct PreparationReport {
    InstrumentId instrument = kGmSoundset;
    /// The preparation has run; false while it is switched off.
    bool prepared = false;
    std::int64_t inserted = 0;
    std::int64_t removed = 0;
    std::int64_t found = 0;
    std::vector<SysexNote> notes;
    /// What became of the settings of each channel.
    std::array<ChannelReport, 16> channels;
    /// Set-up messages of the song that moved behind a reset.
    std::int32_t movedMessages = 0;
    /// What the GS rhythm message of each channel says: 0 melody, 1 and 2 drum maps.
    std::array<std::uint8_t, 16> drumMap{};

    /// The song is not as it was before.
    bool Changed() const {
        return inserted > 0 || removed > 0 ||
               std::ranges::count(channels, true, &ChannelReport::partKept) > 0;
    }
};

} // namespace tracksmith::instruments
