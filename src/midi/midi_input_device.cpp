#include <utility>

#include "midi/errors.h"
#include "midi/find_device.h"
#include "midi/midi_input.h"
#include "midi/system_error_text.h"
#include "midi/texts.h"

// What a TMidiInput knows of its device, how one is chosen and set up.
namespace tracksmith::midi {

std::uint32_t TMidiInput::DeviceCount() {
    return driver_.DeviceCount();
}

void TMidiInput::SetDeviceID(std::uint32_t deviceID) {
    RequireClosed(texts::kDeviceIdOpen.english);
    if (deviceID >= DeviceCount()) {
        throw EMidiInputError(std::string(texts::kInvalidDeviceId.english));
    }
    DeviceCapabilities capabilities;
    Check(driver_.Capabilities(deviceID, capabilities));
    deviceId_ = deviceID;
    capabilities_ = std::move(capabilities);
    if (onDeviceChanged_) {
        onDeviceChanged_(*this);
    }
}

void TMidiInput::SetProductName(const std::string& name) {
    RequireClosed(texts::kProductNameOpen.english);
    const auto device = FindDevice(driver_, [&](const DeviceCapabilities& capabilities) {
        return capabilities.productName == name;
    });
    if (!device) {
        throw EMidiInputError(texts::InputNotInstalled(name));
    }
    SetDeviceID(*device);
}

void TMidiInput::SetSysexBufferSize(std::uint16_t bytes) {
    RequireClosed(texts::kSysexBufferSizeOpen.english);
    sysexBufferSize_ = bytes;
}

void TMidiInput::SetSysexBufferCount(std::uint16_t count) {
    RequireClosed(texts::kSysexBufferCountOpen.english);
    sysexBufferCount_ = count;
}

std::string TMidiInput::MidiInErrorString(ResultCode wError) {
    return SystemErrorText(driver_, wError);
}

} // namespace tracksmith::midi
