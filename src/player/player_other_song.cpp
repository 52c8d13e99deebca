#include <algorithm>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "player/player.h"
#include "song/mode_message.h"
#include "song/song_position.h"

// Another song than the program's own is played for a while.

namespace tracksmith::player {
namespace {

constexpr std::int64_t kResetPauseMs = 50;

} // namespace

bool TMidiPlayer::PlaySong(song::Song* other, const SongPlace& place) {
    const Hold hold(*this);
    if (!hold || thread_.Passes().Stuck()) {
        return false;
    }
    if (hold.WasPlaying()) {
        sender_.SilenceAll();
    }
    dispatcher_.Preparing().Cancel();
    ChangeSong(other);
    keeper_.MakeRoom(*song_);
    keeper_.ForgetSetUps(PortSet().set());
    dispatcher_.SetLoop(Loop().on, place.loopStart, place.loopEnd);
    const std::int64_t ms =
        std::clamp<std::int64_t>(song::TickToMs(*song_, place.tick), 0, SongEndTime());
    std::vector<SetUpMessage> setUp = FindCursors(ms * 1000);
    std::shared_ptr<const song::TimeMap> map =
        std::make_shared<const song::TimeMap>(static_cast<const song::TimeMap&>(*song_));
    position_.MoveTo(ms * 1000, map);
    const bool resets = std::ranges::any_of(setUp, [](const SetUpMessage& message) {
        return song::ModeOfReset(song::WithoutFrame(message.event->Payload())).has_value();
    });
    if (place.reset && !resets) {
        setUp.insert(setUp.begin(), {place.reset, kResetPauseMs});
    }
    if (hold.WasPlaying()) {
        BringToPlace(std::move(setUp));
        dispatcher_.Preparing().HoldsMusic() ? position_.Rest() : position_.Run();
    }
    return true;
}

// What may fail comes first.
void TMidiPlayer::ChangeSong(song::Song* other) {
    song::Song& next = other != nullptr ? *other : own_;
    if (&next == song_) {
        return;
    }
    song::TempoEvents tempos;
    if (other != nullptr) {
        tempos.Collect(*other, false);
    }
    const std::int32_t applied = other != nullptr ? 0 : ownTempoOffset_;
    if (song_ == &own_) {
        ownTempoEvents_ = std::move(tempoEvents_);
        ownTempoOffset_ = tempoOffset_;
    } else if (tempoOffset_ != 0) {
        MoveTempos(0);
    }
    tempoEvents_ = other != nullptr ? std::move(tempos) : std::move(ownTempoEvents_);
    song_ = &next;
    dispatcher_.SetSong(next);
    if (tempoOffset_ != applied) {
        MoveTempos(tempoOffset_);
    }
}

} // namespace tracksmith::player
