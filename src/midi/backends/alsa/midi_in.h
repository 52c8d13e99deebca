#pragma once

#include <RtMidi.h>
#include <atomic>
#include <memory>
#include <string>
#include <vector>

#include "midi/port_backend.h"

namespace tracksmith::midi::alsa {

/// An open input port; messages come on a thread of RtMidi.
class MidiIn final : public InputConnection {
public:
    /// Opens the port of that full name; null with the reason in `result` otherwise.
    static std::unique_ptr<MidiIn> Open(const std::string& fullName, MessageReceiver receiver,
                                        ResultCode& result);

private:
    explicit MidiIn(MessageReceiver receiver) : receiver_(std::move(receiver)) {}
    ResultCode OpenPort(const std::string& fullName);
    static void OnMessage(double seconds, std::vector<unsigned char>* message, void* self);
    static void OnError(RtMidiError::Type type, const std::string& text, void* self);

    MessageReceiver receiver_;
    // Errors come on the thread of RtMidi too.
    std::atomic<bool> failed_{false};
    // Last, so that its thread has ended before the receiver is destroyed.
    std::unique_ptr<RtMidiIn> device_;
};

} // namespace tracksmith::midi::alsa
