#include "midi/backends/alsa/midi_out.h"

#include <algorithm>
#include <utility>

#include "midi/backends/alsa/sequencer.h"

namespace tracksmith::midi::alsa {
namespace {

// The sequencer takes no event of 16 KiB or more, but an exclusive message may be several events.
// RtMidi's encoder buffer grows to the longest message it is given, and a full buffer makes an
// event; so each piece but the last must be as long as the longest.
constexpr std::size_t kPieceBytes = 4096;

} // namespace

std::unique_ptr<MidiOut> MidiOut::Open(const std::string& fullName,
                                       std::shared_ptr<const std::atomic<bool>> present,
                                       ResultCode& result) {
    std::unique_ptr<MidiOut> out(new MidiOut(std::move(present)));
    result = out->OpenPort(fullName);
    return result == kNoError ? std::move(out) : nullptr;
}

ResultCode MidiOut::OpenPort(const std::string& fullName) {
    device_ = MakeDevice<RtMidiOut>(std::string(kClientName), &MidiOut::OnError, this);
    if (device_ == nullptr) {
        return kNoDriver;
    }
    return OpenNamedPort(*device_, fullName) && !failed_ ? kNoError : kBadDeviceId;
}

ResultCode MidiOut::Send(std::span<const std::uint8_t> message) {
    if (message.empty()) {
        return kInvalidParameter;
    }
    if (!present_->load(std::memory_order_relaxed)) {
        return kNoDriver;
    }
    const std::lock_guard lock(sending_);
    try {
        std::span<const std::uint8_t> ready;
        const ResultCode result = joiner_.Join(message, ready);
        return result == kNoError && !SendInPieces(ready) ? kNotReady : result;
    } catch (const std::exception&) {
        return kNoDriver;
    }
}

bool MidiOut::SendInPieces(std::span<const std::uint8_t> message) {
    failed_ = false;
    while (!message.empty() && !failed_) {
        const std::size_t size = std::min(message.size(), kPieceBytes);
        device_->sendMessage(message.data(), size);
        message = message.subspan(size);
    }
    return !failed_;
}

void MidiOut::OnError(RtMidiError::Type /*type*/, const std::string& /*text*/, void* self) {
    static_cast<MidiOut*>(self)->failed_ = true;
}

} // namespace tracksmith::midi::alsa
