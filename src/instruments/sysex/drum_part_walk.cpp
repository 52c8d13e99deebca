#include "instruments/sysex/drum_part_walk.h"

#include <vector>

#include "instruments/sysex/gs_ticks.h"
#include "instruments/sysex/sysex_edit.h"
#include "song/event_chain.h"

namespace tracksmith::instruments {
namespace {

using song::EventLink;

std::uint8_t GsDevice(DrumWay way) {
    return way == DrumWay::PartGs00 ? 0x00 : 0x10;
}

std::uint8_t BankOf(DrumWay way, bool drum) {
    if (way == DrumWay::BankXg) {
        return drum ? song::kXgDrumBank : 0;
    }
    return drum ? song::kGm2DrumBank : song::kGm2MelodyBank;
}

} // namespace

DrumPartWalk::DrumPartWalk(song::Song& song, SysexSession& session, DrumWay way)
    : song_(song), session_(session), way_(way), marks_(song, session), walk_(song), target_(way) {}

void DrumPartWalk::Run() {
    while (!walk_.AtEnd()) {
        const EventLink event = walk_.Event();
        const PlayPlace place = walk_.Place();
        walk_.Take();
        if (event->status == song::kSystemExclusive) {
            MeetMessage(event, place.track);
        } else if (event->length > 0) {
            MeetEvent(event, place);
        }
    }
}

void DrumPartWalk::MeetEvent(EventLink event, PlayPlace place) {
    const std::size_t channel = event->Channel();
    switch (event->Command()) {
        case song::kControlChange:
            MeetController(event, place.track);
            break;
        case song::kProgramChange: {
            source_.Meet(*event);
            target_.Meet(*event);
            Channel& state = channels_.at(channel);
            const EventLink bank = state.noteSinceBank ? EventLink() : state.bank;
            state.voice = {event, place.track, bank, state.bankTrack, true};
            state.bank = {};
            break;
        }
        case song::kNoteOn:
            MeetNote(channel, place);
            break;
        default:
            break;
    }
}

void DrumPartWalk::MeetController(EventLink event, std::int32_t track) {
    const std::size_t channel = event->Channel();
    const std::uint8_t value = event->data2 & 0x7FU;
    Channel& state = channels_.at(channel);
    if (event->data1 == song::kBankMsb) {
        source_.Meet(*event);
        target_.Meet(*event);
        if (!state.bank || state.noteSinceBank) {
            state.bank = event;
            state.bankTrack = track;
            state.noteSinceBank = false;
        }
    } else if (event->data1 == song::kBankLsb) {
        state.bankLsb = value;
    }
}

void DrumPartWalk::MeetMessage(EventLink event, std::int32_t track) {
    const SetUpMark mark = marks_.Of(event);
    resetPassed_ = resetPassed_ || event == session_.reset;
    switch (mark.effect) {
        case SetUpEffect::Resets:
            MeetReset(mark.reset, mark.removed);
            break;
        case SetUpEffect::ChangesPart:
            source_.SetPart(mark.part);
            if (!mark.removed) {
                target_.SetPart(mark.part);
            }
            channels_.at(mark.part.channel).voice = {event, track, {}, 0, false};
            channels_.at(mark.part.channel).bank = {};
            break;
        case SetUpEffect::UndoesPart:
            target_.SetPart(mark.part);
            break;
        default:
            break;
    }
}

// What a reset did that was taken out is done for banks, but not for GS parts.
void DrumPartWalk::MeetReset(ResetKind kind, bool removed) {
    source_.Reset(kind);
    if (!removed || !IsGs(way_)) {
        target_.Reset(kind);
    }
    for (Channel& channel : channels_) {
        channel.voice = {};
        channel.bank = {};
        channel.bankLsb = 0;
    }
}

void DrumPartWalk::MeetNote(std::size_t channel, PlayPlace place) {
    const PartVoice& wanted = source_.Of(channel);
    PartVoice& given = target_.Of(channel);
    if (wanted.drum != given.drum && wanted.certain) {
        ChannelReport& report = session_.report.channels.at(channel);
        if (Mend(channel, place)) {
            given = wanted;
            report.partKept = true;
        } else {
            ++report.lostDrumNotes;
        }
    }
    channels_.at(channel).played = true;
    channels_.at(channel).noteSinceBank = true;
}

bool DrumPartWalk::Mend(std::size_t channel, PlayPlace note) {
    if (IsGs(way_)) {
        return MakePart(channel, note);
    }
    if (way_ == DrumWay::None || !channels_.at(channel).voice.event) {
        return false;
    }
    SelectBank(channel);
    return true;
}

song::Track& DrumPartWalk::Track(std::int32_t track) {
    return song_.tracks[static_cast<std::size_t>(track)];
}

EventLink DrumPartWalk::PutShort(const VoicePlace& voice, EventLink behind, int status,
                                 std::uint8_t data1, std::uint8_t data2) {
    const EventLink event = song::NewShortEvent(song_.pool, voice.event->tick,
                                                static_cast<std::uint8_t>(status), data1, data2);
    event->timeMs = voice.event->timeMs;
    song::InsertAfter(Track(voice.track), behind, event);
    return event;
}

// In front of the program change that gave the voice, or with a program change behind the message
// that did.
void DrumPartWalk::SelectBank(std::size_t channel) {
    const PartVoice& wanted = source_.Of(channel);
    const Channel& state = channels_.at(channel);
    const VoicePlace& voice = state.voice;
    const int number = static_cast<int>(channel);
    const std::uint8_t bank = BankOf(way_, wanted.drum);
    EventLink behind = voice.program ? voice.event->prev : voice.event;
    behind = PutShort(voice, behind, song::kControlChange | number, song::kBankMsb, bank);
    if (wanted.drum && state.bankLsb != 0) {
        behind = PutShort(voice, behind, song::kControlChange | number, song::kBankLsb, 0);
    }
    if (!voice.program) {
        PutShort(voice, behind, song::kProgramChange | number, wanted.program, 0);
    }
    if (!state.bank) { // a later bank select still waits for its program change
        target_.SelectBank(channel, bank);
    }
    walk_.Refresh();
}

// At the part's own place behind the reset; where that is too late for the note, behind the reset
// too.
bool DrumPartWalk::MakePart(std::size_t channel, PlayPlace note) {
    const std::uint8_t value = source_.Of(channel).drum ? 1 : 0;
    const auto message = GsPartMessage(GsDevice(way_), channel, value);
    if (!session_.reset || channels_.at(channel).played) {
        return ChangePartLater(channel, message);
    }
    const PlayPlace place{PartTick(channel), session_.sysexTrack};
    if (!resetPassed_) {
        return false;
    }
    EventLink& part = session_.partEvents.at(channel);
    if (!part || part->length <= 0 || part->tick != place.tick) {
        part = InsertMessage(song_, session_, {place.track, place.tick, Track(place.track).first},
                             message);
        walk_.Refresh();
        session_.drumMap.at(channel) = value;
    } else if ((session_.drumMap.at(channel) != 0) != (value != 0)) {
        return false;
    }
    if (part && note <= place) {
        PutMessage(song_, session_, {place.track, session_.reset->tick, session_.reset},
                   part->data.Bytes());
        walk_.Refresh();
    }
    return static_cast<bool>(part);
}

// Where InsertGSSysex will look for it.
std::int32_t DrumPartWalk::PartTick(std::size_t channel) const {
    const std::int32_t usual = RhythmTick(session_.insertionTick, channel);
    const std::int32_t reset = session_.reset->tick;
    return usual > reset ? usual : RhythmTick(reset, channel);
}

// A part that changes later gets its message in front of the bank select or program change that
// does it. Among the first measures InsertGSSysex, where the instrument has it, would move it.
bool DrumPartWalk::ChangePartLater(std::size_t channel, SysexBytes message) {
    const VoicePlace& voice = channels_.at(channel).voice;
    const EventLink at = voice.bank ? voice.bank : voice.event;
    const std::int32_t searched = SearchEnd(song_, RhythmTick(session_.insertionTick, kParts));
    if (!at || (session_.reset && at->tick <= searched)) {
        return false;
    }
    const std::int32_t track = voice.bank ? voice.bankTrack : voice.track;
    PutMessage(song_, session_, {track, at->tick, voice.program ? at->prev : at}, message);
    walk_.Refresh();
    return true;
}

} // namespace tracksmith::instruments
