#include "midi/portable_input_driver.h"

#include <algorithm>
#include <chrono>
#include <deque>
#include <mutex>
#include <utility>

#include "midi/portable_error_text.h"

namespace tracksmith::midi {
namespace {

constexpr std::size_t kLongestShortMessage = 3;

bool IsLong(std::span<const std::uint8_t> message) {
    return message.size() > kLongestShortMessage || message[0] == 0xF0 || message[0] == 0xF7;
}

std::uint32_t Packed(std::span<const std::uint8_t> message) {
    std::uint32_t packed = 0;
    for (std::size_t i = message.size(); i > 0; --i) {
        packed = packed << 8 | message[i - 1];
    }
    return packed;
}

std::uint64_t NowMs() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(
        std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
}

} // namespace

/// Callbacks run under the lock, so that there is one at a time although Reset and the back end
/// work on different threads.
struct PortableInputDriver::Port {
    DriverCallback callback = nullptr;
    void* instance = nullptr;
    std::mutex mutex;
    DeviceHandle handle = 0;
    std::deque<MidiHeader*> buffers;
    bool started = false;
    std::uint64_t startMs = 0;
    std::uint64_t lastMs = 0;
    // Last, so that receiving ends before the rest goes
    std::unique_ptr<InputConnection> connection;

    ResultCode End() {
        {
            const std::scoped_lock lock(mutex);
            if (!buffers.empty()) {
                return kStillPlaying;
            }
            started = false;
        }
        // Not under the lock, which the back end's thread may wait for
        connection.reset();
        return kNoError;
    }

    /// The back end's thread.
    void Receive(std::span<const std::uint8_t> message, std::uint64_t timeMs) {
        const std::scoped_lock lock(mutex);
        if (!started || message.empty()) {
            return;
        }
        lastMs = timeMs > startMs ? timeMs - startMs : 0;
        if (IsLong(message)) {
            FillBuffers(message);
        } else {
            Notify(kInputData, Packed(message));
        }
    }

    void FillBuffers(std::span<const std::uint8_t> message) {
        const bool ended = message.back() == 0xF7;
        while (!message.empty() && !buffers.empty()) {
            MidiHeader& header = *buffers.front();
            buffers.pop_front();
            const std::size_t size = std::min<std::size_t>(header.bufferLength, message.size());
            std::copy_n(message.data(), size, header.data);
            header.bytesRecorded = static_cast<std::uint32_t>(size);
            message = message.subspan(size);
            const bool failed = message.empty() ? !ended : buffers.empty();
            GiveBackBuffer(header, failed ? kInputLongError : kInputLongData);
        }
    }

    void GiveBackAll() {
        for (MidiHeader* header : std::exchange(buffers, {})) {
            header->bytesRecorded = 0;
            GiveBackBuffer(*header, kInputLongData);
        }
    }

    void GiveBackBuffer(MidiHeader& header, std::uint32_t message) {
        GiveBack(header);
        Notify(message, reinterpret_cast<std::uintptr_t>(&header));
    }

    void Notify(std::uint32_t message, std::uintptr_t parameter) {
        callback(handle, message, instance, parameter, static_cast<std::uintptr_t>(lastMs));
    }
};

PortableInputDriver::PortableInputDriver(std::shared_ptr<PortBackend> backend)
    : backend_(std::move(backend)), ports_([this] { return backend_->Inputs(); }) {}

PortableInputDriver::~PortableInputDriver() = default;

std::uint32_t PortableInputDriver::DeviceCount() {
    return ports_.Count();
}

ResultCode PortableInputDriver::Capabilities(std::uint32_t device,
                                             DeviceCapabilities& capabilities) {
    return ports_.Capabilities(device, capabilities);
}

ResultCode PortableInputDriver::Open(std::uint32_t device, DriverCallback callback, void* instance,
                                     DeviceHandle& handle) {
    return ports_.Open(device, callback, instance, handle,
                       [this](Port& port, const std::string& name, ResultCode& result) {
                           // The port outlives its connection, hence the plain reference
                           return backend_->OpenInput(
                               name,
                               [&port](std::span<const std::uint8_t> message,
                                       std::uint64_t timeMs) { port.Receive(message, timeMs); },
                               result);
                       });
}

ResultCode PortableInputDriver::Close(DeviceHandle handle) {
    return ports_.Close(handle);
}

ResultCode PortableInputDriver::Reset(DeviceHandle handle) {
    return ports_.WithLocked(handle, [](Port& port) {
        port.started = false;
        port.GiveBackAll();
        return kNoError;
    });
}

ResultCode PortableInputDriver::PrepareHeader(DeviceHandle handle, MidiHeader& header) {
    return ports_.PrepareHeader(handle, header);
}

ResultCode PortableInputDriver::AddBuffer(DeviceHandle handle, MidiHeader& header) {
    return ports_.WithLocked(handle, [&header](Port& port) {
        const ResultCode lent = Lend(header);
        if (lent == kNoError) {
            header.bytesRecorded = 0;
            port.buffers.push_back(&header);
        }
        return lent;
    });
}

ResultCode PortableInputDriver::UnprepareHeader(DeviceHandle handle, MidiHeader& header) {
    return ports_.UnprepareHeader(handle, header);
}

ResultCode PortableInputDriver::Start(DeviceHandle handle) {
    return ports_.WithLocked(handle, [](Port& port) {
        port.started = true;
        port.startMs = NowMs();
        port.lastMs = 0;
        return kNoError;
    });
}

ResultCode PortableInputDriver::Stop(DeviceHandle handle) {
    return ports_.WithLocked(handle, [](Port& port) {
        port.started = false;
        return kNoError;
    });
}

std::string PortableInputDriver::ErrorText(ResultCode code) {
    return PortableErrorText(code);
}

} // namespace tracksmith::midi
