#include "midi/backends/winmm/wineloop/loop_input.h"

#include <algorithm>
#include <utility>

namespace wineloop {

DWORD LoopInput::Handle(UINT message, DWORD_PTR param1, DWORD_PTR param2) {
    auto* header = reinterpret_cast<MIDIHDR*>(param1);
    switch (message) {
        case MIDM_OPEN:
            return Open(*reinterpret_cast<const MIDIOPENDESC*>(param1), static_cast<DWORD>(param2));
        case MIDM_CLOSE:
            return Close();
        case MIDM_PREPARE:
            return faults_.Prepare(*header, param2);
        case MIDM_UNPREPARE:
            return faults_.Unprepare(*header, param2);
        case MIDM_ADDBUFFER:
            return AddBuffer(*header, param2);
        case MIDM_START:
            return Start();
        case MIDM_STOP:
            started_ = false;
            return MMSYSERR_NOERROR;
        case MIDM_RESET:
            return Reset();
        default:
            return MMSYSERR_NOTSUPPORTED;
    }
}

DWORD LoopInput::Open(const MIDIOPENDESC& description, DWORD flags) {
    if (client_.Connected()) {
        return MMSYSERR_ALLOCATED;
    }
    client_.Connect(description, flags);
    client_.Notify(MM_MIM_OPEN);
    return MMSYSERR_NOERROR;
}

// The system frees the handle whatever the answer is, so the device is closed in any case.
DWORD LoopInput::Close() {
    const bool lent = !std::exchange(buffers_, {}).empty();
    started_ = false;
    client_.Notify(MM_MIM_CLOSE);
    client_.Disconnect();
    return lent ? faults_.Misuse(MIDIERR_STILLPLAYING) : MMSYSERR_NOERROR;
}

DWORD LoopInput::AddBuffer(MIDIHDR& header, DWORD_PTR size) {
    const DWORD result = faults_.Queue(header, size);
    if (result == MMSYSERR_NOERROR) {
        buffers_.push_back(&header);
    }
    return result;
}

DWORD LoopInput::Start() {
    started_ = true;
    start_ = std::chrono::steady_clock::now();
    return MMSYSERR_NOERROR;
}

DWORD LoopInput::Reset() {
    started_ = false;
    while (!buffers_.empty()) {
        GiveBack(MM_MIM_LONGDATA, 0);
    }
    return MMSYSERR_NOERROR;
}

void LoopInput::DeliverShort(DWORD packed) {
    if (started_) {
        client_.Notify(MM_MIM_DATA, packed, Milliseconds());
    }
}

void LoopInput::DeliverLong(const char* data, DWORD length) {
    if (!started_) {
        return;
    }
    const UINT message =
        std::exchange(faults_.nextLongIsBroken, false) ? MM_MIM_LONGERROR : MM_MIM_LONGDATA;
    do {
        if (buffers_.empty()) {
            return;
        }
        MIDIHDR& buffer = *buffers_.front();
        const DWORD part = std::min(length, buffer.dwBufferLength);
        std::copy_n(data, part, buffer.lpData);
        GiveBack(message, part);
        data += part;
        length -= part;
    } while (length > 0);
}

void LoopInput::GiveBack(UINT message, DWORD recorded) {
    MIDIHDR* buffer = buffers_.front();
    buffers_.pop_front();
    buffer->dwBytesRecorded = recorded;
    buffer->dwFlags = (buffer->dwFlags | MHDR_DONE) & ~static_cast<DWORD>(MHDR_INQUEUE);
    client_.Notify(message, reinterpret_cast<DWORD_PTR>(buffer), Milliseconds());
}

DWORD LoopInput::Milliseconds() const {
    using namespace std::chrono;
    return static_cast<DWORD>(duration_cast<milliseconds>(steady_clock::now() - start_).count());
}

} // namespace wineloop
