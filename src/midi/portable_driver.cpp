#include "midi/portable_driver.h"

#include <algorithm>
#include <array>
#include <utility>

#include "midi/header_lending.h"
#include "midi/portable_error_text.h"
#include "midi/short_message.h"

namespace tracksmith::midi {
namespace {

constexpr std::uint32_t kFullVolume = 0xFFFFFFFF;

/// Damper pedal up, all notes off (MIDI 1.0, channel mode messages).
ResultCode EndNotes(OutputConnection& connection) {
    for (std::uint8_t channel = 0; channel < 16; ++channel) {
        const auto status = static_cast<std::uint8_t>(0xB0 | channel);
        for (const std::uint8_t controller : {std::uint8_t{64}, std::uint8_t{123}}) {
            const std::array<std::uint8_t, 3> message{status, controller, 0};
            const ResultCode result = connection.Send(message);
            if (result != kNoError) {
                return result;
            }
        }
    }
    return kNoError;
}

} // namespace

/// `sending` keeps messages of several threads apart; `mutex` guards the rest and the headers'
/// flags, so that asking for them never waits for a device. Taken in this order.
struct PortableOutputDriver::Port {
    std::string name;
    DriverCallback callback = nullptr;
    void* instance = nullptr;
    DeviceHandle handle = 0;
    std::mutex sending;
    std::unique_ptr<OutputConnection> connection;
    std::mutex mutex;
    bool closed = false;
    std::vector<MidiHeader*> lent;

    ResultCode Send(std::span<const std::uint8_t> message) {
        const std::scoped_lock lock(sending);
        return connection->Send(message);
    }

    ResultCode Lend(MidiHeader& header) {
        const std::scoped_lock lock(mutex);
        if (closed) {
            return kInvalidHandle;
        }
        const ResultCode result = midi::Lend(header);
        if (result == kNoError) {
            lent.push_back(&header);
        }
        return result;
    }

    /// Takes a header back that was not sent. False when Reset has given it back already, so that
    /// it may be gone.
    bool TakeBack(MidiHeader* header) {
        const std::scoped_lock lock(mutex);
        const bool listed = std::erase(lent, header) > 0;
        if (listed) {
            midi::TakeBack(*header);
        }
        return listed;
    }

    /// Gives a header back, unless another thread already has. The callback may hand the header to
    /// a thread that frees it, so it comes last; the lock keeps Close from overtaking it.
    void GiveBack(MidiHeader* header) {
        const std::scoped_lock lock(mutex);
        if (std::erase(lent, header) > 0) {
            midi::GiveBack(*header);
            callback(handle, kOutputDone, instance, reinterpret_cast<std::uintptr_t>(header), 0);
        }
    }

    void GiveBackAll() {
        const std::scoped_lock lock(mutex);
        for (MidiHeader* header : std::exchange(lent, {})) {
            midi::GiveBack(*header);
            callback(handle, kOutputDone, instance, reinterpret_cast<std::uintptr_t>(header), 0);
        }
    }
};

PortableOutputDriver::PortableOutputDriver(std::shared_ptr<PortBackend> backend)
    : backend_(std::move(backend)), list_([this] { return backend_->Outputs(); }) {}

PortableOutputDriver::~PortableOutputDriver() = default;

std::uint32_t PortableOutputDriver::DeviceCount() {
    return list_.Count();
}

ResultCode PortableOutputDriver::Capabilities(std::uint32_t device,
                                              DeviceCapabilities& capabilities) {
    const auto listed = list_.At(device);
    if (!listed) {
        return kBadDeviceId;
    }
    capabilities = *listed;
    return kNoError;
}

ResultCode PortableOutputDriver::Open(std::uint32_t device, DriverCallback callback, void* instance,
                                      DeviceHandle& handle) {
    const auto listed = list_.At(device);
    if (!listed) {
        return kBadDeviceId;
    }
    auto port = std::make_shared<Port>();
    ResultCode result = kNoError;
    port->connection = backend_->OpenOutput(listed->productName, result);
    if (port->connection == nullptr) {
        return result != kNoError ? result : kUnspecifiedError;
    }
    port->name = listed->productName;
    port->callback = callback;
    port->instance = instance;
    RestoreVolume(*port);
    port->handle = ports_.Add(port);
    handle = port->handle;
    return kNoError;
}

ResultCode PortableOutputDriver::Close(DeviceHandle handle) {
    const auto port = ports_.Find(handle);
    if (port == nullptr) {
        return kInvalidHandle;
    }
    {
        const std::scoped_lock lock(port->mutex);
        if (!port->lent.empty()) {
            return kStillPlaying;
        }
        port->closed = true;
    }
    ports_.Remove(handle);
    return kNoError;
}

ResultCode PortableOutputDriver::Reset(DeviceHandle handle) {
    const auto port = ports_.Find(handle);
    if (port == nullptr) {
        return kInvalidHandle;
    }
    ResultCode result = kNoError;
    {
        const std::scoped_lock lock(port->sending);
        port->connection->Discard();
        result = EndNotes(*port->connection);
    }
    if (!HoldsHeaders()) {
        port->GiveBackAll();
    }
    return result;
}

ResultCode PortableOutputDriver::ShortMessage(DeviceHandle handle, std::uint32_t packed) {
    const auto port = ports_.Find(handle);
    if (port == nullptr) {
        return kInvalidHandle;
    }
    const auto status = static_cast<std::uint8_t>(packed);
    if (status < 0x80) {
        return kBadOpenMode;
    }
    if (status == 0xF0) {
        return kInvalidParameter;
    }
    const std::array<std::uint8_t, 3> message{status, static_cast<std::uint8_t>(packed >> 8 & 0x7F),
                                              static_cast<std::uint8_t>(packed >> 16 & 0x7F)};
    return port->Send(std::span(message).first(ShortMessageLength(status)));
}

ResultCode PortableOutputDriver::PrepareHeader(DeviceHandle handle, MidiHeader& header) {
    const auto port = ports_.Find(handle);
    if (port == nullptr) {
        return kInvalidHandle;
    }
    const std::scoped_lock lock(port->mutex);
    return Prepare(header);
}

ResultCode PortableOutputDriver::LongMessage(DeviceHandle handle, MidiHeader& header) {
    const auto port = ports_.Find(handle);
    if (port == nullptr) {
        return kInvalidHandle;
    }
    const ResultCode lent = port->Lend(header);
    if (lent != kNoError) {
        return lent;
    }
    const ResultCode sent = port->Send({header.data, header.bufferLength});
    if (sent != kNoError) {
        return port->TakeBack(&header) ? sent : kNoError;
    }
    if (!HoldsHeaders()) {
        port->GiveBack(&header);
    }
    return kNoError;
}

ResultCode PortableOutputDriver::UnprepareHeader(DeviceHandle handle, MidiHeader& header) {
    const auto port = ports_.Find(handle);
    if (port == nullptr) {
        return kInvalidHandle;
    }
    const std::scoped_lock lock(port->mutex);
    return Unprepare(header);
}

void PortableOutputDriver::GiveBackHeaders() {
    for (const auto& port : ports_.All()) {
        port->GiveBackAll();
    }
}

ResultCode PortableOutputDriver::GetVolume(std::uint32_t device, std::uint32_t& volume) {
    const auto listed = list_.At(device);
    if (!listed) {
        return kBadDeviceId;
    }
    if ((listed->support & DeviceCapabilities::kVolume) == 0) {
        return kNotSupported;
    }
    const std::scoped_lock lock(volumeMutex_);
    const auto known = volumes_.find(listed->productName);
    volume = known != volumes_.end() ? known->second : kFullVolume;
    return kNoError;
}

ResultCode PortableOutputDriver::SetVolume(std::uint32_t device, std::uint32_t volume) {
    const auto listed = list_.At(device);
    if (!listed) {
        return kBadDeviceId;
    }
    if ((listed->support & DeviceCapabilities::kVolume) == 0) {
        return kNotSupported;
    }
    for (const auto& port : ports_.All()) {
        const std::scoped_lock lock(port->sending);
        const ResultCode result = port->name == listed->productName
                                      ? port->connection->SetVolume(volume >> 16)
                                      : kNoError;
        if (result != kNoError) {
            return result;
        }
    }
    const std::scoped_lock lock(volumeMutex_);
    volumes_[listed->productName] = volume;
    return kNoError;
}

void PortableOutputDriver::RestoreVolume(Port& port) {
    const std::scoped_lock lock(volumeMutex_);
    const auto known = volumes_.find(port.name);
    if (known != volumes_.end()) {
        port.connection->SetVolume(known->second >> 16);
    }
}

ResultCode PortableOutputDriver::CachePatches(DeviceHandle /*handle*/, std::uint32_t /*bank*/,
                                              std::span<const std::uint16_t, 128> /*patches*/,
                                              std::uint32_t /*operation*/) {
    return kNotSupported;
}

ResultCode PortableOutputDriver::CacheDrumPatches(DeviceHandle /*handle*/, std::uint32_t /*patch*/,
                                                  std::span<const std::uint16_t, 128> /*keys*/,
                                                  std::uint32_t /*operation*/) {
    return kNotSupported;
}

ResultCode PortableOutputDriver::Message(DeviceHandle /*handle*/, std::uint32_t /*message*/,
                                         std::uintptr_t /*param1*/, std::uintptr_t /*param2*/) {
    return kNotSupported;
}

std::string PortableOutputDriver::ErrorText(ResultCode code) {
    return PortableErrorText(code);
}

} // namespace tracksmith::midi
