#include "midi/backends/winmm/wineloop/loop_output.h"

#include <utility>

namespace wineloop {

DWORD LoopOutput::Handle(UINT message, DWORD_PTR param1, DWORD_PTR param2) {
    auto* header = reinterpret_cast<MIDIHDR*>(param1);
    switch (message) {
        case MODM_OPEN:
            return Open(*reinterpret_cast<const MIDIOPENDESC*>(param1), static_cast<DWORD>(param2));
        case MODM_CLOSE:
            return Close();
        case MODM_PREPARE:
            return faults_.Prepare(*header, param2);
        case MODM_UNPREPARE:
            return faults_.Unprepare(*header, param2);
        case MODM_DATA:
            return Short(static_cast<DWORD>(param1));
        case MODM_LONGDATA:
            return Long(*header, param2);
        case MODM_RESET:
            return Reset();
        case MODM_GETVOLUME:
            *reinterpret_cast<DWORD*>(param1) = volume_;
            return MMSYSERR_NOERROR;
        case MODM_SETVOLUME:
            volume_ = static_cast<DWORD>(param1);
            return MMSYSERR_NOERROR;
        default:
            return MMSYSERR_NOTSUPPORTED;
    }
}

DWORD LoopOutput::Open(const MIDIOPENDESC& description, DWORD flags) {
    if (client_.Connected()) {
        return MMSYSERR_ALLOCATED;
    }
    ++opened_;
    client_.Connect(description, flags);
    client_.Notify(MM_MOM_OPEN);
    return MMSYSERR_NOERROR;
}

// The system frees the handle whatever the answer is, so the device is closed in any case.
DWORD LoopOutput::Close() {
    ++opened_;
    held_.clear();
    client_.Notify(MM_MOM_CLOSE);
    client_.Disconnect();
    return std::exchange(underWay_, 0) > 0 ? faults_.Misuse(MIDIERR_STILLPLAYING)
                                           : MMSYSERR_NOERROR;
}

DWORD LoopOutput::Short(DWORD packed) {
    schedule_.Add({}, [this, packed] { input_.DeliverShort(packed); });
    return MMSYSERR_NOERROR;
}

DWORD LoopOutput::Long(MIDIHDR& header, DWORD_PTR size) {
    const DWORD result = faults_.Queue(header, size);
    if (result != MMSYSERR_NOERROR) {
        return result;
    }
    ++underWay_;
    const Completion completion = faults_.completion;
    schedule_.Add({}, WhileOpen([this, &header, completion] {
                      input_.DeliverLong(header.lpData, header.dwBufferLength);
                      if (completion == Completion::Prompt || completion == Completion::Inside) {
                          Complete(header);
                      } else if (completion == Completion::Held) {
                          held_.push_back(&header);
                      }
                  }));
    if (completion == Completion::Inside) {
        schedule_.RunDue();
    } else if (completion == Completion::Late) {
        schedule_.Add(faults_.delay, WhileOpen([this, &header] { Complete(header); }));
    }
    return result;
}

DWORD LoopOutput::Reset() {
    schedule_.RunDue();
    Release();
    return MMSYSERR_NOERROR;
}

void LoopOutput::Release() {
    for (MIDIHDR* header : std::exchange(held_, {})) {
        Complete(*header);
    }
}

void LoopOutput::Complete(MIDIHDR& header) {
    --underWay_;
    header.dwFlags = (header.dwFlags | MHDR_DONE) & ~static_cast<DWORD>(MHDR_INQUEUE);
    client_.Notify(MM_MOM_DONE, reinterpret_cast<DWORD_PTR>(&header));
}

std::function<void()> LoopOutput::WhileOpen(std::function<void()> action) {
    return [this, opened = opened_, action = std::move(action)] {
        if (opened == opened_) {
            action();
        }
    };
}

} // namespace wineloop
