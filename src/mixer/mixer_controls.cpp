#include <algorithm>
#include <cmath>

#include "mixer/mixer.h"
#include "song/shared_byte.h"

// The sliders.

namespace tracksmith::mixer {

void Mixer::TB_Volume00Change(std::size_t channel, double position) {
    Change(channel, Control::Volume, position);
    if (enabled_ && link_.Linked()) {
        link_.TakeVolume(channel, master_, At(channel, Control::Volume).value);
    }
}

void Mixer::TB_PanoramaChange(std::size_t channel, double position) {
    Change(channel, Control::Pan, position);
}

void Mixer::TB_ExpressionChange(std::size_t channel, double position) {
    Change(channel, Control::Expression, position);
}

void Mixer::TB_ReverbChange(std::size_t channel, double position) {
    Change(channel, Control::Reverb, position);
}

void Mixer::TB_ChorusChange(std::size_t channel, double position) {
    Change(channel, Control::Chorus, position);
}

void Mixer::TB_Controller71Change(std::size_t channel, double position) {
    Change(channel, Control::Harmonic, position);
}

void Mixer::TB_Controller72Change(std::size_t channel, double position) {
    Change(channel, Control::Release, position);
}

void Mixer::TB_Controller73Change(std::size_t channel, double position) {
    Change(channel, Control::Attack, position);
}

void Mixer::TB_Controller74Change(std::size_t channel, double position) {
    Change(channel, Control::Brightness, position);
}

void Mixer::TB_Controller94Change(std::size_t channel, double position) {
    Change(channel, Control::Variation, position);
}

void Mixer::Move(std::size_t channel, Control control, double position) {
    if (control == Control::Volume) {
        TB_Volume00Change(channel, position);
    } else {
        Change(channel, control, position);
    }
}

void Mixer::Change(std::size_t channel, Control control, double position) {
    if (!enabled_ || session_.RefusesChange()) {
        return;
    }
    const auto value = static_cast<std::uint8_t>(std::clamp(std::lround(position), 0L, 127L));
    Stored& stored = At(channel, control);
    stored.value = value;
    stored.event = EventInEffect(channel, control);
    if (!stored.event) {
        return;
    }
    MarkModified();
    live_.Put(channel, control, value);
    song::WriteShared(stored.event->data2, value);
}

void Mixer::SetMasterLinked(bool on) {
    if (!on) {
        link_.Unlink();
        return;
    }
    Refresh();
    MasterLink::Volumes volumes{};
    for (std::size_t channel = 0; channel < volumes.size(); ++channel) {
        volumes[channel] = At(channel, Control::Volume).value;
    }
    masterAtLink_ = master_;
    link_.Link(master_, volumes);
}

void Mixer::TB_MasterVolChange(double position) {
    if (link_.Linked() && session_.RefusesChange()) {
        return;
    }
    master_ = static_cast<std::uint8_t>(std::clamp(std::lround(position), 0L, 127L));
    if (enabled_ && link_.Linked()) {
        for (std::size_t channel = 0; channel < song::kMidiChannels; ++channel) {
            Change(channel, Control::Volume, link_.VolumeAt(channel, master_));
        }
    }
}

} // namespace tracksmith::mixer
