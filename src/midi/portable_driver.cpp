#include "midi/portable_driver.h"

#include <algorithm>
#include <array>
#include <utility>

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

    ResultCode End() {
        const std::scoped_lock lock(mutex);
        if (!lent.empty()) {
            return kStillPlaying;
        }
        closed = true;
        return kNoError;
    }

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
            Done(*header);
        }
    }

    void GiveBackAll() {
        const std::scoped_lock lock(mutex);
        for (MidiHeader* header : std::exchange(lent, {})) {
            Done(*header);
        }
    }

    void Done(MidiHeader& header) const {
        midi::GiveBack(header);
        callback(handle, kOutputDone, instance, reinterpret_cast<std::uintptr_t>(&header), 0);
    }
};

PortableOutputDriver::PortableOutputDriver(std::shared_ptr<PortBackend> backend)
    : backend_(std::move(backend)), ports_([this] { return backend_->Outputs(); }) {}

PortableOutputDriver::~PortableOutputDriver() = default;

std::uint32_t PortableOutputDriver::DeviceCount() {
    return ports_.Count();
}

ResultCode PortableOutputDriver::Capabilities(std::uint32_t device,
                                              DeviceCapabilities& capabilities) {
    return ports_.Capabilities(device, capabilities);
}

ResultCode PortableOutputDriver::Open(std::uint32_t device, DriverCallback callback, void* instance,
                                      DeviceHandle& handle) {
    return ports_.Open(device, callback, instance, handle,
                       [this](Port& port, const std::string& name, ResultCode& result) {
                           port.name = name;
                           auto connection = backend_->OpenOutput(name, result);
                           if (connection != nullptr) {
                               RestoreVolume(name, *connection);
                           }
                           return connection;
                       });
}

ResultCode PortableOutputDriver::Close(DeviceHandle handle) {
    return ports_.Close(handle);
}

ResultCode PortableOutputDriver::Reset(DeviceHandle handle) {
    return ports_.With(handle, [this](Port& port) {
        ResultCode result = kNoError;
        {
            const std::scoped_lock lock(port.sending);
            port.connection->Discard();
            result = EndNotes(*port.connection);
        }
        if (!HoldsHeaders()) {
            port.GiveBackAll();
        }
        return result;
    });
}

ResultCode PortableOutputDriver::ShortMessage(DeviceHandle handle, std::uint32_t packed) {
    return ports_.With(handle, [packed](Port& port) {
        const auto status = static_cast<std::uint8_t>(packed);
        if (status < 0x80) {
            return kBadOpenMode;
        }
        if (status == 0xF0) {
            return kInvalidParameter;
        }
        const std::array<std::uint8_t, 3> message{status,
                                                  static_cast<std::uint8_t>(packed >> 8 & 0x7F),
                                                  static_cast<std::uint8_t>(packed >> 16 & 0x7F)};
        return port.Send(std::span(message).first(ShortMessageLength(status)));
    });
}

ResultCode PortableOutputDriver::PrepareHeader(DeviceHandle handle, MidiHeader& header) {
    return ports_.PrepareHeader(handle, header);
}

ResultCode PortableOutputDriver::LongMessage(DeviceHandle handle, MidiHeader& header) {
    return ports_.With(handle, [&](Port& port) {
        const ResultCode lent = port.Lend(header);
        if (lent != kNoError) {
            return lent;
        }
        const ResultCode sent = port.Send({header.data, header.bufferLength});
        if (sent != kNoError) {
            return port.TakeBack(&header) ? sent : kNoError;
        }
        if (!HoldsHeaders()) {
            port.GiveBack(&header);
        }
        return kNoError;
    });
}

ResultCode PortableOutputDriver::UnprepareHeader(DeviceHandle handle, MidiHeader& header) {
    return ports_.UnprepareHeader(handle, header);
}

void PortableOutputDriver::GiveBackHeaders() {
    for (const auto& port : ports_.All()) {
        port->GiveBackAll();
    }
}

ResultCode PortableOutputDriver::NameForVolume(std::uint32_t device, std::string& name) {
    DeviceCapabilities capabilities;
    const ResultCode result = ports_.Capabilities(device, capabilities);
    if (result != kNoError) {
        return result;
    }
    name = capabilities.productName;
    return (capabilities.support & DeviceCapabilities::kVolume) != 0 ? kNoError : kNotSupported;
}

ResultCode PortableOutputDriver::GetVolume(std::uint32_t device, std::uint32_t& volume) {
    std::string name;
    const ResultCode result = NameForVolume(device, name);
    if (result == kNoError) {
        const std::scoped_lock lock(volumeMutex_);
        const auto known = volumes_.find(name);
        volume = known != volumes_.end() ? known->second : kFullVolume;
    }
    return result;
}

ResultCode PortableOutputDriver::SetVolume(std::uint32_t device, std::uint32_t volume) {
    std::string name;
    ResultCode result = NameForVolume(device, name);
    for (const auto& port : ports_.All()) {
        if (result == kNoError && port->name == name) {
            const std::scoped_lock lock(port->sending);
            result = port->connection->SetVolume(volume >> 16);
        }
    }
    if (result == kNoError) {
        const std::scoped_lock lock(volumeMutex_);
        volumes_[name] = volume;
    }
    return result;
}

void PortableOutputDriver::RestoreVolume(const std::string& name, OutputConnection& connection) {
    const std::scoped_lock lock(volumeMutex_);
    const auto known = volumes_.find(name);
    if (known != volumes_.end()) {
        connection.SetVolume(known->second >> 16);
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
