#pragma once

#include <functional>
#include <vector>

#include "midi/backends/winmm/wineloop/loop_input.h"
#include "midi/backends/winmm/wineloop/schedule.h"

namespace wineloop {

/// The output of a loop. Used under the driver's lock.
class LoopOutput {
public:
    LoopOutput(Faults& faults, LoopInput& input, Schedule& schedule)
        : faults_(faults), input_(input), schedule_(schedule) {}
    /// Answers a driver message (MODM_).
    DWORD Handle(UINT message, DWORD_PTR param1, DWORD_PTR param2);
    /// Gives back what is held.
    void Release();

private:
    DWORD Open(const MIDIOPENDESC& description, DWORD flags);
    DWORD Close();
    DWORD Short(DWORD packed);
    DWORD Long(MIDIHDR& header, DWORD_PTR size);
    DWORD Reset();
    void Complete(MIDIHDR& header);
    // As `action`, unless the device has been closed by then.
    std::function<void()> WhileOpen(std::function<void()> action);

    Faults& faults_;
    LoopInput& input_;
    Schedule& schedule_;
    Client client_;
    std::vector<MIDIHDR*> held_;
    std::size_t underWay_ = 0;
    unsigned opened_ = 0;
    DWORD volume_ = 0xFFFFFFFF;
};

} // namespace wineloop
