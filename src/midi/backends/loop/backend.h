#pragma once

#include <chrono>
#include <memory>
#include <vector>

#include "midi/backends/loop/loop_cable.h"
#include "midi/port_backend.h"

namespace tracksmith::midi::loop {

/// Ports inside the process: what is sent to the output "Loop 1" is received at once from the input
/// of that name, on the sending thread. For trying out and for tests, which can give every loop
/// faults. `index` counts from 0.
class LoopBackend : public PortBackend {
public:
    explicit LoopBackend(std::size_t count = 1);

    std::vector<DeviceCapabilities> Outputs() override;
    std::vector<DeviceCapabilities> Inputs() override;
    std::unique_ptr<OutputConnection> OpenOutput(const std::string& productName,
                                                 ResultCode& result) override;
    std::unique_ptr<InputConnection> OpenInput(const std::string& productName,
                                               MessageReceiver receiver,
                                               ResultCode& result) override;

    /// Takes the ports away and brings them back. What is open then fails with kNoDriver.
    void Vanish(std::size_t index) { cables_.at(index)->SetPresent(false); }
    void Return(std::size_t index) { cables_.at(index)->SetPresent(true); }
    /// Lets the next opening or sending fail.
    void FailNext(std::size_t index, ResultCode code) { cables_.at(index)->FailNext(code); }
    /// Lets every sending take longer; a delay of 0 also ends those that wait.
    void SetDelay(std::size_t index, std::chrono::milliseconds delay) {
        cables_.at(index)->SetDelay(delay);
    }
    /// Hands a message to the open inputs only.
    void Deliver(std::size_t index, std::span<const std::uint8_t> message) {
        cables_.at(index)->Deliver(message);
    }
    /// Begins or ends recording what is sent, with the time at which it arrived.
    void SetRecording(std::size_t index, bool recording) {
        cables_.at(index)->SetRecording(recording);
    }
    /// Takes what has been recorded.
    std::vector<LoopMessage> TakeSent(std::size_t index) { return cables_.at(index)->TakeSent(); }
    /// Volume 0-0xFFFF that the output was given last.
    std::uint32_t Volume(std::size_t index) const { return cables_.at(index)->Volume(); }

private:
    std::vector<DeviceCapabilities> List(std::uint32_t support) const;
    std::shared_ptr<LoopCable> Find(const std::string& productName, ResultCode& result) const;

    std::vector<std::shared_ptr<LoopCable>> cables_;
};

} // namespace tracksmith::midi::loop
