#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "song/midi_numbers.h"

namespace tracksmith::mixer {

/// How the master fader moves the volumes while it is linked with them: each stays in proportion to
/// what it was when the link was switched on.
class MasterLink {
public:
    /// Values of a master or a channel's fader, 0-127.
    using Volumes = std::array<std::uint8_t, song::kMidiChannels>;

    bool Linked() const { return linked_; }
    /// Switches the link on, with the master and the volumes as they are.
    void Link(std::uint8_t master, const Volumes& volumes);
    void Unlink() { linked_ = false; }
    /// A channel's fader was moved by hand while the master stands at `master`.
    void TakeVolume(std::size_t channel, std::uint8_t master, std::uint8_t volume);

    /// The volume (1-127) of a channel with the master at `master`.
    std::uint8_t VolumeAt(std::size_t channel, std::uint8_t master) const;

private:
    struct Reference {
        int volume = 0;
        int master = 1;
    };

    bool linked_ = false;
    std::array<Reference, song::kMidiChannels> references_;
};

} // namespace tracksmith::mixer
