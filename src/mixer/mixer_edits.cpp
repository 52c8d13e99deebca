#include <algorithm>
#include <cmath>

#include "instruments/picker/voice_place.h"
#include "mixer/mixer.h"
#include "mixer/texts.h"
#include "song/event_chain.h"
#include "song/shared_byte.h"

// What the mixer does to more than the one event in effect.

namespace tracksmith::mixer {
namespace {

constexpr session::ChangeKind kInsertAtStart{
    .name = texts::kInsertAtStart, .takeBack = true, .playsOn = true};

// `value` of the file, changed as `from` has become `to`.
std::uint8_t Scaled(Control control, int value, int from, int to) {
    const bool byFactor = !IsBipolar(control) && from > 0;
    const int scaled = byFactor ? (2 * value * to + from) / (2 * from) : value + to - from;
    return static_cast<std::uint8_t>(std::clamp(scaled, 0, 127));
}

} // namespace

void Mixer::ResetControl(std::size_t channel, Control control) {
    if (session_.RefusesChange()) {
        return;
    }
    if (const song::EventLink event = EventInEffect(channel, control)) {
        Move(channel, control, event->origData2 & 0x7F);
    } else {
        Renew();
    }
}

void Mixer::RestoreFile(std::size_t channel, Control control) {
    for (const ControllerPlace& place : index_.Places(channel, control)) {
        if (song::ReadShared(place.event->data2) != place.event->origData2) {
            MarkModified();
            song::WriteShared(place.event->data2, place.event->origData2);
        }
    }
    const std::uint8_t before = At(channel, control).value;
    const song::EventLink event = EventInEffect(channel, control);
    if (event && (event->origData2 & 0x7F) != before) {
        Move(channel, control, event->origData2 & 0x7F);
    }
}

void Mixer::Btn_ResetClick(std::size_t channel) {
    if (session_.RefusesChange()) {
        return;
    }
    for (const Control control : kAllControls) {
        RestoreFile(channel, control);
    }
    static_cast<void>(TransposeChannel(channel, 0));
    Renew();
}

void Mixer::ResetAll() {
    if (session_.RefusesChange()) {
        return;
    }
    master_ = masterAtLink_;
    for (std::size_t channel = 0; channel < song::kMidiChannels; ++channel) {
        Btn_ResetClick(channel);
    }
    static_cast<void>(TransposeChange(0));
}

void Mixer::SameForAll(std::size_t channel, Control control) {
    if (session_.RefusesChange()) {
        return;
    }
    const std::uint8_t value = At(channel, control).value;
    for (std::size_t other = 0; other < song::kMidiChannels; ++other) {
        if (other != channel && Used(other)) {
            Move(other, control, value);
        }
    }
}

void Mixer::ScaleAll(std::size_t channel, Control control) {
    if (session_.RefusesChange()) {
        return;
    }
    const song::EventLink event = EventInEffect(channel, control);
    if (!event) {
        return;
    }
    const int from = event->origData2 & 0x7F;
    const int to = song::ReadShared(event->data2) & 0x7F;
    for (const ControllerPlace& place : index_.Places(channel, control)) {
        if (place.event == event) {
            continue;
        }
        const std::uint8_t value = Scaled(control, place.event->origData2 & 0x7F, from, to);
        if (value != song::ReadShared(place.event->data2)) {
            MarkModified();
            song::WriteShared(place.event->data2, value);
        }
    }
    Renew();
}

bool Mixer::CanInsertAtStart(std::size_t channel, Control control) const {
    if (!enabled_ || !Used(channel)) {
        return false;
    }
    const auto places = index_.Places(channel, control);
    const auto firstNote = index_.FirstNote(channel);
    return places.empty() || (firstNote && places.front().tick > *firstNote);
}

bool Mixer::InsertAtStart(std::size_t channel, Control control, MessageHost& host) {
    if (!CanInsertAtStart(channel, control)) {
        return false;
    }
    const std::uint8_t value = At(channel, control).value;
    return session_.Change(kInsertAtStart, host, [&](session::Workspace& work) {
        const instruments::VoicePlace place = instruments::PlaceForVoice(work.song, channel);
        if (!place.behind) {
            return false;
        }
        const auto status = static_cast<std::uint8_t>(song::kControlChange | channel);
        song::InsertAfter(
            work.song.tracks[place.track], place.behind,
            song::NewShortEvent(work.song.pool, place.tick, status, ControllerOf(control), value));
        return true;
    });
}

} // namespace tracksmith::mixer
