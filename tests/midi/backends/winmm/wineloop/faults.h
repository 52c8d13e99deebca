#pragma once

#include <atomic>
#include <chrono>
#include <map>
#include <optional>

#include "midi/backends/winmm/wineloop/client.h"
#include "midi/backends/winmm/wineloop/steering.h"

namespace wineloop {

/// The faults that a test has ordered, and those that the program under test has made.
struct Faults {
    Completion completion = Completion::Prompt;
    std::chrono::milliseconds delay{0};
    bool nextLongIsBroken = false;
    /// Codes to answer the next call with, by driver message.
    std::map<UINT, DWORD> codes;
    std::atomic<std::uint32_t> misuse{0};

    void Restore();
    /// The code ordered for a call, which is used up by this.
    std::optional<DWORD> TakeCode(UINT message);
    /// Counts a wrong use and returns the code for it.
    DWORD Misuse(DWORD code);
    /// Prepares a header; the same for outputs and inputs. Again has no effect.
    DWORD Prepare(MIDIHDR& header, DWORD_PTR size);
    DWORD Unprepare(MIDIHDR& header, DWORD_PTR size);
    /// Takes a header over for use.
    DWORD Queue(MIDIHDR& header, DWORD_PTR size);
};

} // namespace wineloop
