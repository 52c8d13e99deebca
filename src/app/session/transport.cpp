#include "app/session/transport.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "app/session/texts.h"
#include "song/practice_tempo.h"
#include "song/song_position.h"

namespace tracksmith::session {

Transport::Transport(const Workspace& workspace, player::TMidiPlayer& player,
                     settings::SettingsStore* store, const ListenerList& listeners,
                     MessageHost& host)
    : workspace_(workspace), player_(player), listeners_(listeners), host_(host) {
    if (store != nullptr) {
        outputs_.emplace(player, *store);
    }
    player_.SetListener({[this](bool playing) { OnPlaying(playing); },
                         [this] { OnPorts(); },
                         {},
                         [this] { OnPorts(); }});
}

void Transport::TakeSong() {
    Told(player_.SongLoaded());
    const bool heardOther = std::exchange(other_, nullptr) != nullptr;
    ownMap_.reset();
    loop_.reset();
    movedMs_ = 0;
    movedTick_ = 0;
    if (heardOther) {
        listeners_.Tell(&SessionListener::OnHeardSong);
    }
    listeners_.Tell(&SessionListener::OnLoop);
    listeners_.Tell(&SessionListener::OnTempo);
    listeners_.Tell(&SessionListener::OnPlace);
}

// What the player answers with "not now" is told with the port that is to blame.
bool Transport::Told(bool done) const {
    if (!done && !HangingPort().empty()) {
        host_.ShowMessage(texts::PortHangs(host_.CurrentLanguage(), HangingPort()));
    }
    return done;
}

bool Transport::Play() {
    if (!workspace_.hasSong) {
        return false;
    }
    // At the end there is nothing left to hear: the song begins again.
    if (player_.Position() >= player_.SongEndTime()) {
        MoveToStart();
    }
    const bool plays = Told(static_cast<bool>(player_.Play()));
    listeners_.Tell(&SessionListener::OnPorts);
    return plays;
}

bool Transport::Stop() {
    return player_.Stop();
}

void Transport::TogglePlay() {
    if (Playing()) {
        Told(Stop());
    } else {
        Play();
    }
}

void Transport::Panic() {
    player_.Panic();
}

std::string Transport::HangingPort() const {
    return player_.HangingPort();
}

void Transport::MoveToStart() {
    MoveToMs(0, 0);
}

void Transport::MoveToEnd() {
    const std::int64_t end = player_.SongEndTime();
    MoveToMs(end, OwnTick(song::MsToTick(*player_.Place().map, end)));
}

void Transport::MoveByMeasures(int measures) {
    if (!workspace_.hasSong) {
        return;
    }
    const auto map = Map();
    const std::int32_t here = Tick();
    const song::MeasureBeatTick place = song::GetMeasureBeatFromSongPos(*map, here);
    const bool inside = measures < 0 && place.beat > 1;
    const std::int64_t target =
        std::max<std::int64_t>(std::int64_t{place.measure} + measures + (inside ? 1 : 0), 1);
    const std::int32_t tick =
        song::MTCToSongPosition(*map, static_cast<std::int32_t>(target), 1, 0);
    if (tick >= 0) { // else the song ends before
        MoveToTick(tick);
    }
}

void Transport::MoveToTick(std::int32_t tick) {
    const std::int32_t own = std::max(tick, 0);
    MoveToMs(song::TickToMs(*player_.Place().map, PlayedTick(own)), own);
}

void Transport::MoveToMs(std::int64_t ms, std::int32_t tick) {
    if (!workspace_.hasSong || ms > player_.SongEndTime()) {
        return;
    }
    if (!Told(player_.MoveToTimePosition(ms))) {
        return;
    }
    movedMs_ = ms;
    movedTick_ = tick;
    listeners_.Tell(&SessionListener::OnPlace);
}

std::int32_t Transport::Tick() const {
    const player::PlayPlace place = player_.Place();
    if (!workspace_.hasSong || place.map->timeZones.empty()) {
        return 0;
    }
    return place.ms == movedMs_ ? movedTick_ : OwnTick(song::MsToTick(*place.map, place.ms));
}

void Transport::LoopFromHere() {
    const std::int32_t end =
        loop_ && loop_->endTick > Tick() ? loop_->endTick : workspace_.song.songLength;
    SetLoop(Tick(), end);
}

void Transport::LoopToHere() {
    const std::int32_t start = loop_ && loop_->startTick < Tick() ? loop_->startTick : 0;
    SetLoop(start, Tick());
}

void Transport::SetLoop(std::int32_t startTick, std::int32_t endTick) {
    if (!workspace_.hasSong || startTick == endTick) {
        return;
    }
    if (!Told(player_.SetLoop(PlayedTick(startTick), PlayedTick(endTick)))) {
        return;
    }
    loop_ = LoopRange{std::min(startTick, endTick), std::max(startTick, endTick), true};
    SetLooping(true);
}

void Transport::SetLooping(bool on) {
    if (!loop_ && on && workspace_.hasSong) {
        SetLoop(0, workspace_.song.songLength);
        return;
    }
    if (!Told(player_.SetLooping(on))) {
        return;
    }
    if (loop_) {
        loop_->on = on;
    }
    listeners_.Tell(&SessionListener::OnLoop);
}

void Transport::TakeLoop(const std::optional<LoopRange>& loop) {
    if (loop) {
        SetLoop(loop->startTick, loop->endTick);
    }
    SetLooping(loop && loop->on);
    if (!loop) {
        loop_.reset();
        listeners_.Tell(&SessionListener::OnLoop);
    }
}

void Transport::SetTempoOffset(std::int32_t offset) {
    if (!workspace_.hasSong || offset == player_.TempoOffset()) {
        return;
    }
    if (!Told(player_.SetTempoOffset(offset))) {
        return;
    }
    if (other_) {
        ownMap_ = std::make_shared<const song::TimeMap>(song::MovedTimeMap(*ownMap_, offset));
    }
    listeners_.Tell(&SessionListener::OnTempo);
    listeners_.Tell(&SessionListener::OnFileState);
}

void Transport::SetBpm(std::int32_t bpm) {
    SetTempoOffset(song::TempoOffsetForBpm(*Map(), Tick(), bpm));
}

void Transport::SetTempoPercent(std::int32_t percent) {
    const auto map = Map();
    SetTempoOffset(
        song::TempoOffsetForBpm(*map, Tick(), song::BpmOfPercent(*map, Tick(), percent)));
}

void Transport::ResetTempo() {
    SetTempoOffset(0);
}

std::int32_t Transport::Bpm() const {
    return song::BpmAt(*Map(), Tick());
}

std::int32_t Transport::TempoPercent() const {
    return song::TempoPercentAt(*Map(), Tick());
}

void Transport::TakeTempoAsFile() {
    if (player_.TempoOffset() != 0 && Told(player_.TakeTempoAsFile())) {
        listeners_.Tell(&SessionListener::OnTempo);
    }
}

void Transport::SetRoute(std::size_t channel, const OutputChoice::ChannelRoute& route) {
    outputs_->SetRoute(channel, route);
    listeners_.Tell(&SessionListener::OnRoutes);
}

void Transport::ResetRoutes() {
    outputs_->ResetRoutes();
    listeners_.Tell(&SessionListener::OnRoutes);
}

void Transport::ChooseOutput(const std::string& productName) {
    outputs_->ChooseOutput(productName);
    OpenOutput();
}

void Transport::OpenOutput() {
    player_.OpenPort(player_.Routes().Port(0));
    listeners_.Tell(&SessionListener::OnPorts);
}

void Transport::ReopenSynth() {
    for (const player::OutputDevice& output : player_.OutputDevices()) {
        if (output.softwareInstrument) {
            player_.ReopenPort(output.port);
        }
    }
    listeners_.Tell(&SessionListener::OnPorts);
}

bool Transport::PlaysOnSynth() const {
    for (const player::OutputDevice& output : player_.OutputDevices()) {
        if (output.softwareInstrument && player_.Routes().Port(0) == output.port) {
            return true;
        }
    }
    return false;
}

void Transport::OnPlaying(bool playing) {
    listeners_.Tell(&SessionListener::OnPlaying, playing);
    listeners_.Tell(&SessionListener::OnPlace);
}

void Transport::OnPorts() {
    if (outputs_) {
        outputs_->Apply();
    }
    listeners_.Tell(&SessionListener::OnPorts);
}

} // namespace tracksmith::session
