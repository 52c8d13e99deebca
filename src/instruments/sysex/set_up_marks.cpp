#include "instruments/sysex/set_up_marks.h"

#include <algorithm>

#include "instruments/sysex/set_up_pauses.h"
#include "instruments/sysex/sysex_edit.h"
#include "instruments/sysex/sysex_patterns.h"

namespace tracksmith::instruments {
namespace {

using What = SysexNote::What;

constexpr std::uint8_t kGsDevice = 0x10;

// A rhythm message of GS, also one with a wrong checksum: it stays where the operations left it.
bool IsRhythmPart(SysexBytes data) {
    const auto gs = GsMessage(data);
    return gs && gs->high == 0x40 && (gs->middle & 0xF0) == 0x10 && gs->low == 0x15;
}

SetUpMark MarkOf(SysexBytes data, bool putIn) {
    SetUpMark mark;
    mark.reset = ResetKindOf(data);
    const auto part = PartModeOf(data);
    if (mark.reset != ResetKind::None) {
        mark.effect = putIn ? SetUpEffect::Undoes : SetUpEffect::Resets;
    } else if (part) {
        mark.effect = putIn ? SetUpEffect::UndoesPart : SetUpEffect::ChangesPart;
        mark.part = *part;
    } else if (putIn || IsRhythmPart(data)) {
        mark.effect = SetUpEffect::Placed;
    }
    return mark;
}

} // namespace

bool HearsPartMode(DrumWay way, SysexBytes data) {
    if (const auto gs = GsMessage(data)) {
        return way == DrumWay::PartGs ? gs->device == kGsDevice
                                      : way == DrumWay::PartGs00 && gs->device == 0;
    }
    return way == DrumWay::BankXg;
}

SetUpMarks::SetUpMarks(song::Song& song, SysexSession& session) {
    for (const SysexChange& change : session.changes) {
        Add(change);
    }
    AddDeaf(song, session, DrumWayOf(session.report.instrument));
}

void SetUpMarks::AddDeaf(song::Song& song, SysexSession& session, DrumWay way) {
    for (const song::SysexPlace& place : IndexOf(song, session).Places()) {
        const SysexBytes data = Live(place);
        if (PartModeOf(data) && !HearsPartMode(way, data)) {
            SetUpMark& mark = marks_[place.event.Unit()];
            mark = MarkOf(data, false);
            mark.removed = true;
            mark.deaf = true;
            ++count_;
        }
    }
}

void SetUpMarks::Add(const SysexChange& change) {
    if (change.what == What::Found) {
        return;
    }
    const bool putIn = change.what == What::Inserted;
    SetUpMark mark = MarkOf(change.place.event->data.Bytes(), putIn);
    mark.removed = !putIn;
    marks_[change.place.event.Unit()] = mark;
    const bool matters = mark.effect != SetUpEffect::None && mark.effect != SetUpEffect::Placed;
    count_ += matters ? 1 : 0;
    if (putIn) {
        placed_.push_back(change.place.event);
    }
}

SetUpMark SetUpMarks::Of(song::EventLink event) const {
    const auto known = marks_.find(event.Unit());
    if (known != marks_.end()) {
        return known->second;
    }
    return event->length > 0 ? MarkOf(event->Payload(), false) : SetUpMark{};
}

std::int32_t SetUpMarks::ReadyMs(const InsertionClock& clock) const {
    std::int32_t ready = 0;
    for (const song::EventLink event : placed_) {
        const bool reset = ResetKindOf(event->data.Bytes()) != ResetKind::None;
        const std::int32_t pause = reset ? kResetPauseMs : kSetUpPauseMs;
        ready = std::max(ready, clock.MsOf(event->tick) + pause);
    }
    return ready;
}

} // namespace tracksmith::instruments
