#include "mixer/mixer.h"

#include <algorithm>
#include <utility>

#include "instruments/sysex/drum_channels.h"
#include "player/player.h"
#include "song/shared_byte.h"

// What the mixer knows of the song, and what is heard: lamps and transposition.

namespace tracksmith::mixer {

Mixer::Mixer(session::Session& session, Clock clock)
    : session_(session), live_(session, std::move(clock)) {
    session_.AddListener(*this);
    OnSongChanged(session::kReplaceSong);
}

Mixer::~Mixer() {
    session_.RemoveListener(*this);
}

// Links of the song before are gone.
void Mixer::OnSongChanged(const session::ChangeKind& kind) {
    live_.Clear();
    enabled_ = session_.HasSong();
    revision_ = session_.Revision();
    index_ = enabled_ ? ControllerIndex(session_.Song()) : ControllerIndex();
    if (kind.replaces) {
        ForgetSong();
    }
    transposition_.drums = enabled_ ? FindDrums() : 0;
    // A song that was put back has the pitches of its time.
    if (kind.exchanges || transposition_.Any()) {
        const Transposition wanted = transposition_;
        transposition_.drums = ~0U; // nothing is moved yet
        static_cast<void>(Transpose(wanted));
        transposition_ = wanted;
    }
    stored_ = {};
    Renew();
}

void Mixer::ForgetSong() {
    transposition_ = {};
    link_.Unlink();
    master_ = masterAtLink_ = UsualValue(Control::Volume);
    currentChannel_ = 0;
    ClearMutes();
    ClearSolos();
}

std::uint32_t Mixer::FindDrums() const {
    const session::Workspace& work = session_.Work();
    return instruments::DrumChannels(
        work.song, work.sysexOptions.automatic
                       ? std::optional(instruments::DrumWayOf(work.outputs.outputs.front().id))
                       : std::nullopt);
}

void Mixer::OnSaved() {
    if (transposition_.Any()) {
        KeepPitches(session_.Song());
        transposition_.song = 0;
        transposition_.channels = {};
    }
}

void Mixer::OnPlaying(bool playing) {
    if (playing) {
        live_.PlayingBegun();
    }
    Renew();
}

void Mixer::MarkModified() {
    session_.MarkModified();
}

bool Mixer::AtStart() const {
    return !session_.HasPlayer() || session_.Controls().Ms() == 0;
}

song::EventLink Mixer::EventInEffect(std::size_t channel, Control control) const {
    if (!enabled_ || !Current()) {
        return {};
    }
    if (session_.HasPlayer()) {
        const auto effect =
            session_.Controls().Player().InEffect().Controller(channel, ControllerOf(control));
        if (effect.event) {
            return effect.event;
        }
    }
    const auto places = index_.Places(channel, control);
    return !places.empty() && AtStart() ? places.front().event : song::EventLink();
}

// Within a change of the song others are told before the mixer has found its events again. What is
// in effect in another song that is heard is none of this one's.
bool Mixer::Current() const {
    return revision_ == session_.Revision() && !session_.HearsOther();
}

void Mixer::Refresh() {
    if (!Current()) {
        return;
    }
    for (std::size_t channel = 0; channel < stored_.size(); ++channel) {
        for (const Control control : kAllControls) {
            Stored& stored = At(channel, control);
            stored.event = EventInEffect(channel, control);
            if (stored.event) {
                stored.value =
                    static_cast<std::uint8_t>(song::ReadShared(stored.event->data2) & 0x7F);
            }
        }
    }
}

// Where nothing is in effect a control shows what the song sets first.
void Mixer::Renew() {
    if (!Current()) {
        return;
    }
    for (std::size_t channel = 0; channel < stored_.size(); ++channel) {
        for (const Control control : kAllControls) {
            const auto places = index_.Places(channel, control);
            At(channel, control).value =
                places.empty() ? UsualValue(control)
                               : static_cast<std::uint8_t>(
                                     song::ReadShared(places.front().event->data2) & 0x7F);
        }
    }
    Refresh();
}

ControlState Mixer::State(std::size_t channel, Control control) const {
    const Stored& stored = At(channel, control);
    return {stored.value, index_.Places(channel, control).size(), static_cast<bool>(stored.event)};
}

LampResult Mixer::Press(std::size_t channel) const {
    if (!enabled_) {
        return LampResult::NoSong;
    }
    return Used(channel) ? LampResult::Done : LampResult::NotUsed;
}

LampResult Mixer::Btn_Mute00MouseDown(std::size_t channel, bool ctrl) {
    const LampResult result = Press(channel);
    if (result == LampResult::Done && ctrl) {
        ClearMutes();
    } else if (result == LampResult::Done) {
        SetMidiChannel(channel);
        SetMuted(channel, !Muted(channel));
    }
    return result;
}

LampResult Mixer::Btn_Solo00MouseDown(std::size_t channel, bool ctrl) {
    const LampResult result = Press(channel);
    if (result == LampResult::Done && ctrl) {
        ClearSolos();
    } else if (result == LampResult::Done) {
        SetMidiChannel(channel);
        SetSolo(channel, !Solo(channel));
    }
    return result;
}

// The notes of a channel with an open drum editor sound on channel 10, too.
void Mixer::SetMuted(std::size_t channel, bool on) {
    if (muted_.at(channel) == on) {
        return;
    }
    muted_.at(channel) = on;
    if (!session_.HasPlayer()) {
        return;
    }
    player::TMidiPlayer& player = session_.Controls().Player();
    player.SetChannelMuted(channel, on);
    const std::size_t sending = live_.SendingChannel(channel);
    if (on && sending != channel) {
        player.SendChannel(sending, song::kControlChange, song::kAllSoundOff, 0);
        player.SendChannel(sending, song::kControlChange, song::kAllNotesOff, 0);
    }
}

void Mixer::SetSolo(std::size_t channel, bool on) {
    if (solo_.at(channel) != on) {
        solo_.at(channel) = on;
        if (session_.HasPlayer()) {
            session_.Controls().Player().SetChannelSolo(channel, on);
        }
    }
}

std::size_t Mixer::SoloCount() const {
    return static_cast<std::size_t>(std::ranges::count(solo_, true));
}

bool Mixer::Audible(std::size_t channel) const {
    return !Muted(channel) && (Solo(channel) || SoloCount() == 0);
}

void Mixer::ClearMutes() {
    for (std::size_t channel = 0; channel < muted_.size(); ++channel) {
        SetMuted(channel, false);
    }
}

void Mixer::ClearSolos() {
    for (std::size_t channel = 0; channel < solo_.size(); ++channel) {
        SetSolo(channel, false);
    }
}

std::optional<unsigned> Mixer::Level(std::size_t channel) const {
    return session_.HasPlayer() && session_.Controls().Playing()
               ? std::optional(session_.Controls().Player().Activity().Level(channel))
               : std::nullopt;
}

void Mixer::LetLevelsFall() {
    if (session_.HasPlayer()) {
        session_.Controls().Player().UpdateRMS();
    }
}

bool Mixer::TransposeChange(int semitones) {
    Transposition wanted = transposition_;
    wanted.song = std::clamp(semitones, -kMostSemitones, kMostSemitones);
    return TransposeAsUser(wanted);
}

bool Mixer::TransposeChannel(std::size_t channel, int semitones) {
    Transposition wanted = transposition_;
    wanted.channels.at(channel) = std::clamp(semitones, -kMostSemitones, kMostSemitones);
    return TransposeAsUser(wanted);
}

bool Mixer::TransposeAsUser(const Transposition& wanted) {
    if (!enabled_ || wanted == transposition_) {
        return enabled_;
    }
    if (session_.RefusesChange() || !Transpose(wanted)) {
        return false;
    }
    MarkModified();
    return true;
}

bool Mixer::Transpose(const Transposition& wanted) {
    std::uint32_t moved = 0;
    for (std::size_t channel = 0; channel < song::kMidiChannels; ++channel) {
        moved |= wanted.Of(channel) != transposition_.Of(channel) ? 1U << channel : 0U;
    }
    const auto write = [&] { WritePitches(session_.Song(), wanted); };
    if (!session_.HasPlayer()) {
        write();
    } else if (!session_.Controls().Player().ChangePitches(moved, write)) {
        return false;
    }
    transposition_ = wanted;
    return true;
}

} // namespace tracksmith::mixer
