#include "player/player.h"

#include <algorithm>
#include <utility>

#include "player/chase.h"
#include "player/texts.h"
#include "song/time_map.h"

namespace tracksmith::player {
namespace {

// How long a tempo change waits for the pass that carries it out.
constexpr std::chrono::milliseconds kTempoPatience{50};

// Longest wait for an instrument that needs no word.
constexpr std::int64_t kUnnoticedMs = 300;

std::shared_ptr<const song::TimeMap> MapOf(song::TimeMap map) {
    return std::make_shared<const song::TimeMap>(std::move(map));
}

} // namespace

TMidiPlayer::TMidiPlayer(song::Song& song, std::unique_ptr<Stopwatch> stopwatch)
    : own_(song),
      song_(&song),
      stopwatch_(stopwatch ? std::move(stopwatch) : std::make_unique<SteadyStopwatch>()),
      position_(*stopwatch_),
      poster_(std::make_unique<system::MessagePoster>(
          [this](std::uint32_t notice) { OnNotice(notice); })),
      ports_(stopwatch_, [this] { poster_->Post(PortTrouble); }),
      keeper_(routing_),
      sender_(routing_, ports_, activity_, inEffect_, keeper_),
      dispatcher_(song, position_, sender_, inEffect_, keeper_),
      thread_(
          stopwatch_, [this](PassState& pass) { return PlayMidiData(pass); },
          [this] { poster_->Post(HangOver); }) {}

TMidiPlayer::~TMidiPlayer() {
    FormDestroy();
}

std::int64_t TMidiPlayer::PlayMidiData(PassState& pass) noexcept {
    std::int64_t next = kSongOver;
    try {
        TakeTempo();
        next = dispatcher_.Pass(pass);
    } catch (...) {
        // Only memory can have run out: playing ends as at the song's end.
        next = kSongOver;
    }
    if (next == kGivenUp || (next == kSongOver && !EndOfSong(pass))) {
        // The player may be gone.
        return Stopwatch::kForever;
    }
    return pass.State() == kStateStopped ? Stopwatch::kForever : next;
}

bool TMidiPlayer::EndOfSong(PassState& pass) noexcept {
    if (pass.StopInPass()) {
        position_.Rest();
        if (!EndSound(&pass)) {
            return false;
        }
        playing_ = false;
        poster_->Post(SongEnded);
    }
    return true;
}

// Within a pass false when that was given up meanwhile.
bool TMidiPlayer::EndSound(PassState* pass) noexcept {
    if (!sender_.SilenceAll(pass) ||
        (restoreLocalControl_ && !sender_.SwitchLocalControlOn(pass))) {
        return false;
    }
    activity_.ClearAll();
    return true;
}

void TMidiPlayer::SetLocalControlOptions(bool keyboardHasIt, bool restoreAtStop) {
    restoreLocalControl_ = keyboardHasIt && restoreAtStop;
}

bool TMidiPlayer::SongLoaded() {
    const bool stopped = Stop();
    tempoOffset_ = 0;
    song_ = &own_;
    dispatcher_.SetSong(own_);
    SeekCursors(*song_, 0);
    dispatcher_.SetLoop(false, 0, 0);
    position_.MoveTo(0);
    TakeSongOver(false);
    return stopped;
}

bool TMidiPlayer::RebuildAfterEdit() {
    if (const Hold hold(*this); hold) {
        TakeSongOver(true);
        return !thread_.Passes().Stuck();
    }
    // A pass that hangs would go on in a song that has changed.
    const bool stopped = Stop();
    TakeSongOver(true);
    return stopped;
}

void TMidiPlayer::TakeSongOver(bool edited) {
    // The old cursors may point to events that are gone.
    SeekCursors(*song_, 0);
    tempoEvents_.Collect(*song_, edited);
    if (tempoOffset_ != 0) {
        // Tempos that stand in no event, and new events, are at the file's tempo now.
        MoveTempos(tempoOffset_);
    }
    if (edited) {
        dispatcher_.Preparing().Cancel();
    }
    keeper_.MakeRoom(*song_);
    keeper_.ForgetSetUps(PortSet().set());
    const PlayLoop loop = dispatcher_.Loop();
    dispatcher_.SetLoop(loop.on, loop.startTick, loop.endTick);
    const std::int64_t us = std::min(position_.Us(), dispatcher_.SongEndTime() * 1000);
    std::shared_ptr<const song::TimeMap> map = MapOf(static_cast<const song::TimeMap&>(*song_));
    position_.MoveTo(us, map);
    FindCursors(us);
}

void TMidiPlayer::MoveTempos(std::int32_t offset) {
    tempoEvents_.Rewrite(offset);
    song::RetimeSong(*song_, song::MovedTimeMap(*song_, offset));
}

PlayResult TMidiPlayer::Play() {
    if (!Playing()) {
        if (!PreparePlay()) {
            return {};
        }
        if (dispatcher_.Preparing().LeftMs() > kUnnoticedMs) {
            Tell(std::string(texts::kPreparing.In(host_->CurrentLanguage())));
        }
        StartPlay();
    }
    return {true, SilentPorts()};
}

bool TMidiPlayer::PreparePlay() {
    const Hold hold(*this);
    if (!hold || thread_.Passes().Stuck() || Playing() || song_->tracks.empty()) {
        return false;
    }
    if (position_.Ms() > SongEndTime()) {
        position_.MoveTo(0);
    }
    OpenPorts(routing_.Ports());
    dispatcher_.Preparing().Cancel();
    keeper_.ForgetSetUps(PortSet().set());
    BringToPlace(FindCursors(position_.Us()));
    return true;
}

void TMidiPlayer::StartPlay() {
    playing_ = true;
    if (listener_.onPlaying) {
        listener_.onPlaying(true);
    }
    if (!dispatcher_.Preparing().HoldsMusic()) {
        position_.Run();
    }
    thread_.AllowPasses();
    TraceMIDIProc("PLAY started !!!!!!!!!!!!!!!!!!!!!!!!!!!!!");
}

bool TMidiPlayer::Stop() {
    const bool ended = thread_.Passes().Forbid(PassHold::kPatience, true).ended;
    position_.Rest();
    dispatcher_.Preparing().Cancel();
    EndSound();
    WaitUntilSent(sendPatience_);
    if (playing_.exchange(false) && listener_.onPlaying) {
        listener_.onPlaying(false);
    }
    TraceMIDIProc(ended ? "STOP: Error Level 0" : "STOP: Error Level 1");
    return ended;
}

// What was due at a fraction of a millisecond before `us` has been sent already.
std::vector<SetUpMessage> TMidiPlayer::FindCursors(std::int64_t us) {
    SeekCursors(*song_, (us + 999) / 1000);
    dispatcher_.CursorsMoved();
    ChaseMemory memory = Chase();
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        inEffect_.Set(channel, memory.controls[channel]);
    }
    keeper_.Set(memory.channels);
    return std::move(memory.setUp);
}

ChaseMemory TMidiPlayer::Chase() const {
    return CollectChase(*song_, sender_.Rules());
}

// The port of the set-up messages may have had some of them, and nothing else since.
void TMidiPlayer::BringToPlace(std::vector<SetUpMessage> setUp) {
    keeper_.MakeRoomForPorts();
    const std::size_t port = routing_.Port(0);
    const PortSet ports = InUse({port});
    const auto had = static_cast<std::ptrdiff_t>(
        dispatcher_.Preparing().Active() ? 0 : keeper_.SetUpsHad(port, setUp));
    if (had == 0) {
        keeper_.ForgetSetUps(ports);
    }
    setUp.erase(setUp.begin(), setUp.begin() + had);
    dispatcher_.Prepare({std::move(setUp), ports, PortSet().set(), Extent::Everything, true});
}

bool TMidiPlayer::MoveToTimePosition(std::int64_t ms) {
    const std::int64_t target = std::max<std::int64_t>(ms, 0);
    return target > SongEndTime() || target == Position() || MoveTo(target);
}

bool TMidiPlayer::MoveTo(std::int64_t ms) {
    const Hold hold(*this);
    if (!hold) {
        return false;
    }
    if (hold.WasPlaying()) {
        sender_.SilenceAll();
    }
    std::vector<SetUpMessage> setUp = FindCursors(ms * 1000);
    position_.MoveTo(ms * 1000);
    if (hold.WasPlaying()) {
        BringToPlace(std::move(setUp));
        dispatcher_.Preparing().HoldsMusic() ? position_.Rest() : position_.Run();
    }
    return true;
}

void TMidiPlayer::InitializeRealtimeData() {
    const Hold hold(*this);
    if (!hold) {
        return;
    }
    ChaseMemory memory = Chase();
    keeper_.Set(memory.channels);
    BringToPlace(std::move(memory.setUp));
}

bool TMidiPlayer::SetTempoOffset(std::int32_t bpm) {
    if (bpm == tempoOffset_ || song_->tracks.empty()) {
        return true;
    }
    tempoRequest_.Put(MapOf(song::MovedTimeMap(*position_.Map(), bpm)), bpm);
    stopwatch_->Wake();
    if (!Playing() || !tempoRequest_.WaitUntilDone(kTempoPatience)) {
        // Stopped, the song has ended meanwhile, or a driver hangs.
        const Hold hold(*this);
        if (hold) {
            TakeTempo();
        } else if (tempoRequest_.Withdraw()) {
            return false;
        }
    }
    tempoOffset_ = bpm;
    return true;
}

bool TMidiPlayer::TakeTempoAsFile() {
    const Hold hold(*this);
    if (hold && tempoOffset_ != 0) {
        tempoOffset_ = 0;
        song::UpdateTimeZoneData(*song_);
        TakeSongOver(false);
    }
    return static_cast<bool>(hold);
}

void TMidiPlayer::TakeTempo() {
    tempoRequest_.Take([this](std::shared_ptr<const song::TimeMap>& map, std::int32_t offset) {
        ApplyTempo(map, offset);
    });
}

// The position goes on by the old map until all is done, so that no time is lost.
void TMidiPlayer::ApplyTempo(std::shared_ptr<const song::TimeMap>& map, std::int32_t offset) {
    tempoEvents_.Rewrite(offset);
    song::RetimeSong(*song_, *map);
    dispatcher_.TimesChanged();
    const std::shared_ptr<const song::TimeMap> before = position_.Map();
    position_.MoveTo(song::SamePlace(*before, *map, position_.Us()), map);
}

bool TMidiPlayer::SetLoop(std::int32_t startTick, std::int32_t endTick) {
    const Hold hold(*this);
    if (hold) {
        dispatcher_.SetLoop(Loop().on, startTick, endTick);
    }
    return static_cast<bool>(hold);
}

bool TMidiPlayer::SetLooping(bool on) {
    const Hold hold(*this);
    if (hold) {
        dispatcher_.SetLoop(on, Loop().startTick, Loop().endTick);
    }
    return static_cast<bool>(hold);
}

void TMidiPlayer::TraceMIDIProc(std::string_view text) const {
    if (listener_.onTrace) {
        listener_.onTrace(stopwatch_->ElapsedUs() / 1000, text);
    }
}

} // namespace tracksmith::player
