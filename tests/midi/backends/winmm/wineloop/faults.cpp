#include "midi/backends/winmm/wineloop/faults.h"

namespace wineloop {

void Faults::Restore() {
    completion = Completion::Prompt;
    delay = {};
    nextLongIsBroken = false;
    codes.clear();
    misuse = 0;
}

std::optional<DWORD> Faults::TakeCode(UINT message) {
    const auto node = codes.extract(message);
    return node ? std::optional(node.mapped()) : std::nullopt;
}

DWORD Faults::Misuse(DWORD code) {
    ++misuse;
    return code;
}

DWORD Faults::Prepare(MIDIHDR& header, DWORD_PTR size) {
    if (size != sizeof header) {
        return Misuse(MMSYSERR_INVALPARAM);
    }
    header.dwFlags |= MHDR_PREPARED;
    return MMSYSERR_NOERROR;
}

DWORD Faults::Unprepare(MIDIHDR& header, DWORD_PTR size) {
    if (size != sizeof header) {
        return Misuse(MMSYSERR_INVALPARAM);
    }
    if ((header.dwFlags & MHDR_INQUEUE) != 0) {
        return Misuse(MIDIERR_STILLPLAYING);
    }
    header.dwFlags &= ~static_cast<DWORD>(MHDR_PREPARED);
    return MMSYSERR_NOERROR;
}

DWORD Faults::Queue(MIDIHDR& header, DWORD_PTR size) {
    if (size != sizeof header) {
        return Misuse(MMSYSERR_INVALPARAM);
    }
    if ((header.dwFlags & MHDR_PREPARED) == 0) {
        return Misuse(MIDIERR_UNPREPARED);
    }
    if ((header.dwFlags & MHDR_INQUEUE) != 0) {
        return Misuse(MIDIERR_STILLPLAYING);
    }
    header.dwFlags = (header.dwFlags | MHDR_INQUEUE) & ~static_cast<DWORD>(MHDR_DONE);
    return MMSYSERR_NOERROR;
}

} // namespace wineloop
