#include "midi/errors.h"
#include "midi/find_device.h"
#include "midi/midi_output.h"
#include "midi/texts.h"

// What a TMidiOutput knows of its device and how one is chosen.
namespace tracksmith::midi {
namespace {

OutPortTech TechnologyOf(const DeviceCapabilities& capabilities) {
    const bool known = capabilities.technology <= static_cast<int>(OutPortTech::opt_Mapper);
    return known ? static_cast<OutPortTech>(capabilities.technology) : OutPortTech::opt_None;
}

} // namespace

std::string_view OutPortTechName(OutPortTech technology) {
    return texts::kTechnologyNames[static_cast<std::size_t>(technology)].english;
}

std::uint32_t TMidiOutput::DeviceCount() {
    return driver_.DeviceCount();
}

void TMidiOutput::SetDeviceID(std::uint32_t deviceID) {
    RequireClosed(texts::kDeviceIdOpen.english);
    if (deviceID >= DeviceCount()) {
        throw EMidiOutputError(std::string(texts::kInvalidDeviceId.english));
    }
    DeviceCapabilities capabilities;
    Check(OutputOperation::Other, driver_.Capabilities(deviceID, capabilities));
    deviceId_ = deviceID;
    capabilities_ = std::move(capabilities);
    if (onDeviceChanged_) {
        onDeviceChanged_(*this);
    }
}

void TMidiOutput::SetProductName(const std::string& name) {
    RequireClosed(texts::kProductNameOpen.english);
    const auto device = FindDevice(driver_, [&](const DeviceCapabilities& capabilities) {
        return capabilities.productName == name;
    });
    if (!device) {
        throw EMidiOutputError(texts::OutputNotInstalled(name));
    }
    SetDeviceID(*device);
}

OutPortTech TMidiOutput::Technology() const {
    return TechnologyOf(capabilities_);
}

void TMidiOutput::SetTechnology(OutPortTech technology) {
    RequireClosed(texts::kTechnologyOpen.english);
    const auto device = FindDevice(driver_, [&](const DeviceCapabilities& capabilities) {
        return TechnologyOf(capabilities) == technology;
    });
    if (!device) {
        throw EMidiOutputError(texts::TechnologyNotInstalled(OutPortTechName(technology)));
    }
    SetDeviceID(*device);
}

bool TMidiOutput::ChangeDevice(std::uint32_t newDeviceID, bool openAfterChange) {
    if (state_ != MidiOutputState::mosClosed) {
        Close();
    }
    SetDeviceID(newDeviceID);
    return openAfterChange && Open();
}

bool TMidiOutput::Has(std::uint32_t capability) const {
    return (capabilities_.support & capability) != 0;
}

TFeatures TMidiOutput::SupportedFeatures() const {
    TFeatures features;
    const auto addIf = [&](bool supported, TFeature feature) {
        if (supported) {
            features.insert(feature);
        }
    };
    addIf(SupportsCaching(), TFeature::ftCaching);
    addIf(SupportsStreaming(), TFeature::ftStreaming);
    addIf(SupportsVolumeControl(), TFeature::ftVolume);
    addIf(SupportsStereoVolumeControl(), TFeature::ftStereoVolume);
    return features;
}

bool TMidiOutput::SupportsCaching() const {
    return Has(DeviceCapabilities::kCache);
}

bool TMidiOutput::SupportsStreaming() const {
    return Has(DeviceCapabilities::kStream);
}

bool TMidiOutput::SupportsVolumeControl() const {
    return Has(DeviceCapabilities::kVolume);
}

bool TMidiOutput::SupportsStereoVolumeControl() const {
    return Has(DeviceCapabilities::kStereoVolume);
}

} // namespace tracksmith::midi
