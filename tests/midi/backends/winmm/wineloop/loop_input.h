#pragma once

#include <chrono>
#include <deque>

#include "midi/backends/winmm/wineloop/faults.h"

namespace wineloop {

/// The input of a loop. Used under the driver's lock.
class LoopInput {
public:
    explicit LoopInput(Faults& faults) : faults_(faults) {}
    /// Answers a driver message (MIDM_).
    DWORD Handle(UINT message, DWORD_PTR param1, DWORD_PTR param2);
    void DeliverShort(DWORD packed);
    /// Fills as many buffers as it takes; without a buffer the rest is lost.
    void DeliverLong(const char* data, DWORD length);
    [[nodiscard]] std::size_t BufferCount() const { return buffers_.size(); }

private:
    DWORD Open(const MIDIOPENDESC& description, DWORD flags);
    DWORD Close();
    DWORD AddBuffer(MIDIHDR& header, DWORD_PTR size);
    DWORD Start();
    DWORD Reset();
    void GiveBack(UINT message, DWORD recorded);
    [[nodiscard]] DWORD Milliseconds() const;

    Faults& faults_;
    Client client_;
    std::deque<MIDIHDR*> buffers_;
    bool started_ = false;
    std::chrono::steady_clock::time_point start_;
};

} // namespace wineloop
