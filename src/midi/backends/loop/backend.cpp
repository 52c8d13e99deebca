#include "midi/backends/loop/backend.h"

#include <string>
#include <utility>

namespace tracksmith::midi::loop {
namespace {

constexpr std::uint16_t kMidiPort = 1;
constexpr std::uint32_t kVersion = 0x0100;

std::string Name(std::size_t index) {
    return "Loop " + std::to_string(index + 1);
}

class LoopOutput : public OutputConnection {
public:
    explicit LoopOutput(std::shared_ptr<LoopCable> cable) : cable_(std::move(cable)) {}

    ResultCode Send(std::span<const std::uint8_t> message) override {
        return cable_->Send(message);
    }

    ResultCode SetVolume(std::uint32_t volume) override {
        cable_->SetVolume(volume);
        return kNoError;
    }

private:
    std::shared_ptr<LoopCable> cable_;
};

class LoopInput : public InputConnection {
public:
    LoopInput(std::shared_ptr<LoopCable> cable, MessageReceiver receiver)
        : cable_(std::move(cable)) {
        cable_->AddReceiver(this, std::move(receiver));
    }
    LoopInput(const LoopInput&) = delete;
    LoopInput& operator=(const LoopInput&) = delete;
    ~LoopInput() override { cable_->RemoveReceiver(this); }

private:
    std::shared_ptr<LoopCable> cable_;
};

} // namespace

LoopBackend::LoopBackend(std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        cables_.push_back(std::make_shared<LoopCable>());
    }
}

std::vector<DeviceCapabilities> LoopBackend::List(std::uint32_t support) const {
    std::vector<DeviceCapabilities> ports;
    for (std::size_t i = 0; i < cables_.size(); ++i) {
        if (cables_[i]->Present()) {
            DeviceCapabilities& port = ports.emplace_back();
            port.productName = Name(i);
            port.driverVersion = kVersion;
            port.technology = kMidiPort;
            port.support = support;
        }
    }
    return ports;
}

std::vector<DeviceCapabilities> LoopBackend::Outputs() {
    return List(DeviceCapabilities::kVolume);
}

std::vector<DeviceCapabilities> LoopBackend::Inputs() {
    return List(0);
}

std::shared_ptr<LoopCable> LoopBackend::Find(const std::string& productName,
                                             ResultCode& result) const {
    for (std::size_t i = 0; i < cables_.size(); ++i) {
        if (Name(i) == productName) {
            result = cables_[i]->Present() ? cables_[i]->TakeFailure() : kNoDriver;
            return result == kNoError ? cables_[i] : nullptr;
        }
    }
    result = kNoDevice;
    return nullptr;
}

std::unique_ptr<OutputConnection> LoopBackend::OpenOutput(const std::string& productName,
                                                          ResultCode& result) {
    auto cable = Find(productName, result);
    return cable != nullptr ? std::make_unique<LoopOutput>(std::move(cable)) : nullptr;
}

std::unique_ptr<InputConnection> LoopBackend::OpenInput(const std::string& productName,
                                                        MessageReceiver receiver,
                                                        ResultCode& result) {
    auto cable = Find(productName, result);
    return cable != nullptr ? std::make_unique<LoopInput>(std::move(cable), std::move(receiver))
                            : nullptr;
}

} // namespace tracksmith::midi::loop
