#include "player/player.h"

#include <algorithm>
#include <utility>

#include "player/chase.h"
#include "player/chase_messages.h"
#include "song/time_map.h"

namespace tracksmith::player {
namespace {

// How long a tempo change may wait for the pass that carries it out.
constexpr std::chrono::milliseconds kTempoPatience{500};

std::shared_ptr<const song::TimeMap> MapOf(song::TimeMap map) {
    return std::make_shared<const song::TimeMap>(std::move(map));
}

} // namespace

TMidiPlayer::TMidiPlayer(song::Song& song, std::unique_ptr<Stopwatch> stopwatch)
    : song_(song),
      stopwatch_(stopwatch ? std::move(stopwatch) : std::make_unique<SteadyStopwatch>()),
      position_(*stopwatch_),
      poster_(std::make_unique<system::MessagePoster>(
          [this](std::uint32_t notice) { OnNotice(notice); })),
      ports_(*stopwatch_, [this] { poster_->Post(PortTrouble); }),
      sender_(routing_, ports_, activity_, inEffect_),
      dispatcher_(song, position_, sender_, inEffect_),
      thread_(*stopwatch_, [this] { return PlayMidiData(); }) {}

TMidiPlayer::~TMidiPlayer() {
    FormDestroy();
}

std::int64_t TMidiPlayer::PlayMidiData() noexcept {
    if (!thread_.BeginPass()) {
        return Stopwatch::kForever;
    }
    std::int64_t next = kSongOver;
    try {
        TakeTempo();
        next = dispatcher_.Pass(thread_);
    } catch (...) {
        // Only memory can have run out: playing ends as at the song's end.
        next = kSongOver;
    }
    if (next == kSongOver) {
        EndOfSong();
    }
    thread_.EndPass();
    return thread_.State() == kStateStopped ? Stopwatch::kForever : next;
}

void TMidiPlayer::EndOfSong() noexcept {
    if (thread_.StopInPass()) {
        position_.Rest();
        EndSound();
        playing_ = false;
        poster_->Post(SongEnded);
    }
}

void TMidiPlayer::EndSound() noexcept {
    sender_.SilenceAll();
    if (restoreLocalControl_) {
        SendLocalControl();
    }
    activity_.ClearAll();
}

void TMidiPlayer::SendLocalControl() noexcept {
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        const std::size_t port = routing_.Port(channel);
        if (port < ports_.Count() && !ports_.At(port).SoftwareInstrument()) {
            sender_.SendChannel(channel, song::kControlChange, song::kLocalControl, 127);
        }
    }
}

void TMidiPlayer::SetLocalControlOptions(bool keyboardHasIt, bool restoreAtStop) {
    restoreLocalControl_ = keyboardHasIt && restoreAtStop;
}

void TMidiPlayer::SongLoaded() {
    Stop();
    const PassHold hold(thread_, *stopwatch_);
    if (hold) {
        tempoOffset_ = 0;
        SeekCursors(song_, 0);
        dispatcher_.SetLoop(false, 0, 0);
        position_.MoveTo(0);
        TakeSongOver(false);
    }
}

void TMidiPlayer::RebuildAfterEdit() {
    const PassHold hold(thread_, *stopwatch_);
    if (hold) {
        TakeSongOver(true);
    }
}

void TMidiPlayer::TakeSongOver(bool edited) {
    // The old cursors may point to events that are gone.
    SeekCursors(song_, 0);
    tempoEvents_.Collect(song_, edited);
    if (tempoOffset_ != 0) {
        // Tempos that stand in no event, and new events, are at the file's tempo now.
        tempoEvents_.Rewrite(tempoOffset_);
        song::RetimeSong(song_, song::MovedTimeMap(song_, tempoOffset_));
    }
    const PlayLoop loop = dispatcher_.Loop();
    dispatcher_.SetLoop(loop.on, loop.startTick, loop.endTick);
    const std::int64_t us = std::min(position_.Us(), dispatcher_.SongEndTime() * 1000);
    std::shared_ptr<const song::TimeMap> map = MapOf(song_);
    position_.MoveTo(us, map);
    FindCursors(us);
}

bool TMidiPlayer::Play() {
    if (Playing()) {
        return true;
    }
    if (!PreparePlay()) {
        return false;
    }
    StartPlay();
    return true;
}

bool TMidiPlayer::PreparePlay() {
    const PassHold hold(thread_, *stopwatch_);
    if (!hold || Playing() || song_.tracks.empty()) {
        return false;
    }
    if (position_.Ms() > SongEndTime()) {
        position_.MoveTo(0);
    }
    OpenRoutedPorts();
    FindCursors(position_.Us());
    if (position_.Us() > 0) {
        InitializeRealtimeData();
    }
    return true;
}

void TMidiPlayer::StartPlay() {
    playing_ = true;
    if (listener_.onPlaying) {
        listener_.onPlaying(true);
    }
    position_.Run();
    thread_.AllowPasses();
    stopwatch_->Wake();
    TraceMIDIProc("PLAY started !!!!!!!!!!!!!!!!!!!!!!!!!!!!!");
}

bool TMidiPlayer::Stop() {
    const TMidiPlayerThread::Halt halt = thread_.ForbidPasses();
    position_.Rest();
    EndSound();
    if (playing_.exchange(false) && listener_.onPlaying) {
        listener_.onPlaying(false);
    }
    TraceMIDIProc(halt.ended ? "STOP: Error Level 0" : "STOP: Error Level 1");
    return halt.ended;
}

// What was due at a fraction of a millisecond before `us` has been sent already.
void TMidiPlayer::FindCursors(std::int64_t us) {
    SeekCursors(song_, (us + 999) / 1000);
    dispatcher_.CursorsMoved();
    const ChaseMemory memory = CollectChase(song_);
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        inEffect_.Set(channel, memory.channels[channel]);
    }
}

void TMidiPlayer::MoveToTimePosition(std::int64_t ms) {
    const std::int64_t target = std::max<std::int64_t>(ms, 0);
    if (target <= SongEndTime() && target != Position()) {
        MoveTo(target);
    }
}

void TMidiPlayer::MoveTo(std::int64_t ms) {
    const PassHold hold(thread_, *stopwatch_);
    if (!hold) {
        return;
    }
    if (hold.WasPlaying()) {
        sender_.SilenceAll();
    }
    FindCursors(ms * 1000);
    if (hold.WasPlaying()) {
        InitializeRealtimeData();
    }
    position_.MoveTo(ms * 1000);
}

void TMidiPlayer::InitializeRealtimeData() {
    const PassHold hold(thread_, *stopwatch_);
    if (!hold) {
        return;
    }
    const ChaseMemory memory = CollectChase(song_);
    SendSetUp(memory, sender_);
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        SendChannelChase(memory.channels[channel], channel, sender_);
    }
}

void TMidiPlayer::SetTempoOffset(std::int32_t bpm) {
    if (bpm == tempoOffset_ || song_.tracks.empty()) {
        return;
    }
    tempoOffset_ = bpm;
    tempoRequest_.Put(MapOf(song::MovedTimeMap(*position_.Map(), bpm)), bpm);
    stopwatch_->Wake();
    if (Playing() && tempoRequest_.WaitUntilDone(kTempoPatience)) {
        return;
    }
    // Stopped, or the song has ended meanwhile.
    const PassHold hold(thread_, *stopwatch_);
    if (hold) {
        TakeTempo();
    }
}

void TMidiPlayer::TakeTempoAsFile() {
    const PassHold hold(thread_, *stopwatch_);
    if (hold && tempoOffset_ != 0) {
        tempoOffset_ = 0;
        song::UpdateTimeZoneData(song_);
        TakeSongOver(false);
    }
}

void TMidiPlayer::TakeTempo() {
    tempoRequest_.Take([this](std::shared_ptr<const song::TimeMap>& map, std::int32_t offset) {
        ApplyTempo(map, offset);
    });
}

// The position goes on by the old map until all is done, so that no time is lost.
void TMidiPlayer::ApplyTempo(std::shared_ptr<const song::TimeMap>& map, std::int32_t offset) {
    tempoEvents_.Rewrite(offset);
    song::RetimeSong(song_, *map);
    dispatcher_.TimesChanged();
    const std::shared_ptr<const song::TimeMap> before = position_.Map();
    position_.MoveTo(song::SamePlace(*before, *map, position_.Us()), map);
}

void TMidiPlayer::SetLoop(std::int32_t startTick, std::int32_t endTick) {
    const PassHold hold(thread_, *stopwatch_);
    if (hold) {
        dispatcher_.SetLoop(Loop().on, startTick, endTick);
    }
}

void TMidiPlayer::SetLooping(bool on) {
    const PassHold hold(thread_, *stopwatch_);
    if (hold) {
        dispatcher_.SetLoop(on, Loop().startTick, Loop().endTick);
    }
}

void TMidiPlayer::TraceMIDIProc(std::string_view text) const {
    if (listener_.onTrace) {
        listener_.onTrace(stopwatch_->ElapsedUs() / 1000, text);
    }
}

} // namespace tracksmith::player
