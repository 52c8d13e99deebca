#include "instruments/sysex/insert_gs.h"

#include <algorithm>
#include <array>
#include <limits>
#include <vector>

#include "instruments/sysex/gs_ticks.h"
#include "instruments/sysex/insert_message.h"
#include "instruments/sysex/sysex_edit.h"
#include "instruments/sysex/sysex_patterns.h"
#include "instruments/sysex/sysex_templates.h"

namespace tracksmith::instruments {
namespace {

using song::EventLink;
using song::SysexPlace;

// What sets the device numbers apart.
struct GsVariant {
    SysexBytes reset;
    SysexBytes rhythmPart;
    SysexBytes prefix;
};

constexpr GsVariant kDevice10{templates::kGsReset, templates::kGsRhythmPart, templates::kGsPrefix};
constexpr GsVariant kDevice00{templates::kGsReset00, templates::kGsRhythmPart00,
                              templates::kGsPrefix00};

constexpr std::size_t kPartByte = 5;
constexpr std::size_t kParameterByte = 6;
constexpr std::size_t kValueByte = 7;
constexpr std::uint8_t kRhythmParameter = 0x15;

class GsSetUp {
public:
    GsSetUp(song::Song& song, SysexSession& session, const GsVariant& variant)
        : song_(song), session_(session), variant_(variant) {}

    void Run() {
        PlaceReset();
        if (session_.sysexTrack < 0) {
            return;
        }
        CollectParts();
        ClearOldPlaces();
        for (std::size_t part = 0; part < kParts; ++part) {
            PlacePart(part);
        }
    }

private:
    static constexpr std::int32_t kNone = std::numeric_limits<std::int32_t>::min();

    std::int32_t TickOf(std::size_t part) const { return RhythmTick(session_.insertionTick, part); }

    song::Track& Track() const {
        return song_.tracks[static_cast<std::size_t>(session_.sysexTrack)];
    }

    void PlaceReset() {
        session_.insertionTick = session_.options.gmBeforeGs ? kTickAfterGm : kSetUpTick;
        const std::int32_t tick = session_.insertionTick;
        const SysexBytes reset = variant_.reset;
        if (const EventLink found = FindSetUp(song_, session_, tick, reset, reset.size())) {
            ownReset_ = found->tick;
            session_.resetInserted = false;
            session_.reset = found;
        } else {
            session_.reset = InsertSetUp(song_, session_, tick, reset);
            session_.resetInserted = static_cast<bool>(session_.reset);
        }
    }

    bool IsRhythmMessage(SysexBytes data) const {
        return data.size() == DataOf(variant_.rhythmPart).size() &&
               StartsWith(data, DataOf(variant_.prefix)) && (data[kPartByte] & 0xF0) == 0x10 &&
               data[kParameterByte] == kRhythmParameter;
    }

    void CollectParts() {
        VisitEach(song_, session_, SearchEnd(song_, TickOf(kParts)), [this](const SysexPlace& at) {
            if (IsRhythmMessage(Live(at))) {
                WithMemory(session_, [&] { all_.push_back(at); });
                kept_.at(GsChannel(Live(at)[kPartByte])) = at;
            }
        });
    }

    // In its place, or where moving it would put it in front of the reset or behind the track's
    // end.
    bool Stays(std::size_t part) const {
        const SysexPlace& place = kept_.at(part);
        const std::int32_t tick = TickOf(part);
        return (place.track == session_.sysexTrack && place.event->tick == tick) ||
               (place.event->tick > ownReset_ && tick <= ownReset_) || Track().last->tick <= tick;
    }

    // What KeepDrumParts has put behind the reset, beside the message in its place.
    bool IsEarlyCopy(const SysexPlace& place, std::size_t part) const {
        const SysexPlace& kept = kept_.at(part);
        return session_.reset && place.track == session_.sysexTrack &&
               place.event->tick == session_.reset->tick && kept.track == session_.sysexTrack &&
               kept.event->tick == TickOf(part) && std::ranges::equal(Live(place), Live(kept));
    }

    void ClearOldPlaces() {
        for (const SysexPlace& place : all_) {
            const std::size_t part = GsChannel(Live(place)[kPartByte]);
            const bool kept = kept_.at(part).event == place.event && Stays(part);
            if (!kept && !IsEarlyCopy(place, part)) {
                RemoveMessage(session_, place);
            }
        }
    }

    void PlacePart(std::size_t part) {
        const SysexPlace& kept = kept_.at(part);
        EventLink& event = session_.partEvents.at(part);
        const Insertion where{session_.sysexTrack, TickOf(part), start_ ? start_ : Track().first};
        if (!kept.event) {
            event = InsertPlaceholder(song_, session_, where, DataOf(variant_.rhythmPart));
        } else if (kept.event->length > 0) {
            event = kept.event;
        } else {
            event = InsertMessage(song_, session_, where, kept.event->data.Bytes());
        }
        if (kept.event) {
            session_.drumMap.at(part) = kept.event->data[kValueByte];
        }
        if (event && event->tick == where.tick && event != kept.event) {
            start_ = event;
        }
    }

    song::Song& song_;
    SysexSession& session_;
    const GsVariant& variant_;
    std::int32_t ownReset_ = kNone; // tick of a reset that the song has itself
    std::vector<SysexPlace> all_;
    std::array<SysexPlace, kParts> kept_{};
    EventLink start_; // the last event put, where the search for the next place begins
};

} // namespace

void InsertGSSysex(song::Song& song, SysexSession& session) {
    GsSetUp(song, session, kDevice10).Run();
}

void InsertMBMusicSysex(song::Song& song, SysexSession& session) {
    GsSetUp(song, session, kDevice00).Run();
}

void InsertMP11Sysex(song::Song& song, SysexSession& session) {
    GsSetUp(song, session, kDevice00).Run();
}

} // namespace tracksmith::instruments
