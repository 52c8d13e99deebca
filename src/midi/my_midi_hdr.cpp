#include "midi/my_midi_hdr.h"

#include <new>

#include "base/system/locked_memory.h"

namespace tracksmith::midi {

static_assert(sizeof(void*) != 8 || sizeof(MidiHeader) == 112,
              "the header must be laid out like that of the system");

TMyMidiHdr::TMyMidiHdr(std::uint32_t bufferSize) {
    if (bufferSize > 0) {
        const system::LockedBlock sysex = system::AllocateLocked(bufferSize);
        system::LockedBlock hdr;
        try {
            hdr = system::AllocateLocked(sizeof(MidiHeader));
        } catch (...) {
            system::FreeLocked(sysex.handle);
            throw;
        }
        hdrHandle = hdr.handle;
        hdrPointer = new (hdr.pointer) MidiHeader;
        sysexHandle = sysex.handle;
        sysexPointer = static_cast<std::uint8_t*>(sysex.pointer);
    }
    Header().data = sysexPointer;
    Header().bufferLength = bufferSize;
    Header().user = this;
}

TMyMidiHdr::~TMyMidiHdr() {
    system::FreeLocked(sysexHandle);
    system::FreeLocked(hdrHandle);
}

} // namespace tracksmith::midi
