#include "app/forms/transport/play_desk.h"

#include <algorithm>

#include "base/system/message_poster.h"
#include <QCoreApplication>

#include "song/song_position.h"
#include "song/time_map.h"

namespace tracksmith::forms {
namespace {

constexpr int kDisplayMs = 33;
constexpr int kPortCheckMs = 500;

} // namespace

PlayDesk::PlayDesk(app::Workspace& workspace, settings::SettingsStore& store, MessageHost& host,
                   devices::MidiDevices& devices, QObject* parent)
    : QObject(parent), workspace_(workspace), player_(workspace.song), outputs_(player_, store) {
    system::SetMessageWakeUp([this] {
        QMetaObject::invokeMethod(this, &system::DispatchMessages, Qt::QueuedConnection);
    });
    player_.SetListener({[this](bool playing) { OnPlaying(playing); }, [this] { OnPorts(); }, {}});
    player_.FormCreate({devices.Outputs(), &devices.Input(),
                        store.ReadStrFromUserRegistry("MidiInput", ""), host});
    outputs_.Apply();
    connect(&display_, &QTimer::timeout, this, &PlayDesk::PlaceChanged);
    connect(&portCheck_, &QTimer::timeout, this, [this] { player_.CheckPorts(); });
    portCheck_.start(kPortCheckMs);
}

PlayDesk::~PlayDesk() {
    player_.FormDestroy();
    system::SetMessageWakeUp({});
}

void PlayDesk::LeaveSong() {
    player_.Stop();
}

void PlayDesk::TakeSong() {
    player_.SongLoaded();
    loop_.reset();
    movedMs_ = 0;
    movedTick_ = 0;
    emit LoopChanged();
    emit TempoChanged();
    emit PlaceChanged();
}

void PlayDesk::SetRoute(std::size_t channel, const app::OutputChoice::ChannelRoute& route) {
    outputs_.SetRoute(channel, route);
    emit RoutesChanged();
}

void PlayDesk::ResetRoutes() {
    outputs_.ResetRoutes();
    emit RoutesChanged();
}

void PlayDesk::EditSong(const std::function<void()>& edit) {
    const bool playing = Playing();
    if (!player_.Stop()) {
        return; // a driver hangs and has been told of; the song is still in use
    }
    edit();
    player_.RebuildAfterEdit();
    if (playing) {
        player_.Play();
    }
    emit PlaceChanged();
}

void PlayDesk::TogglePlay() {
    if (Playing()) {
        Stop();
        return;
    }
    // At the end there is nothing left to hear: the song begins again.
    if (Ms() >= player_.SongEndTime()) {
        MoveToStart();
    }
    player_.Play();
    emit PortsChanged();
}

void PlayDesk::Stop() {
    player_.Stop();
}

void PlayDesk::Panic() {
    player_.Panic();
}

void PlayDesk::MoveToStart() {
    MoveToMs(0, 0);
}

void PlayDesk::MoveToEnd() {
    const std::int64_t end = player_.SongEndTime();
    MoveToMs(end, static_cast<std::int32_t>(song::MsToTick(*Map(), end)));
}

void PlayDesk::MoveByMeasures(int measures) {
    const auto map = Map();
    const std::int32_t here = Tick();
    const song::MeasureBeatTick place = song::GetMeasureBeatFromSongPos(*map, here);
    const bool inside = measures < 0 && place.beat > 1;
    const std::int64_t target =
        std::max<std::int64_t>(std::int64_t{place.measure} + measures + (inside ? 1 : 0), 1);
    MoveToTick(song::MTCToSongPosition(*map, static_cast<std::int32_t>(target), 1, 0));
}

void PlayDesk::MoveToTick(std::int32_t tick) {
    const std::int64_t ms = song::TickToMs(*Map(), std::max(tick, 0));
    MoveToMs(ms, std::max(tick, 0));
}

void PlayDesk::MoveToMs(std::int64_t ms, std::int32_t tick) {
    if (!workspace_.hasSong || ms > player_.SongEndTime()) {
        return;
    }
    player_.MoveToTimePosition(ms);
    movedMs_ = ms;
    movedTick_ = tick;
    emit PlaceChanged();
}

std::int64_t PlayDesk::Ms() const {
    return player_.Position();
}

std::int32_t PlayDesk::Tick() const {
    const player::PlayPlace place = player_.Place();
    if (!workspace_.hasSong || place.map->timeZones.empty()) {
        return 0;
    }
    return place.ms == movedMs_ ? movedTick_
                                : static_cast<std::int32_t>(song::MsToTick(*place.map, place.ms));
}

void PlayDesk::LoopFromHere() {
    const std::int32_t end =
        loop_ && loop_->endTick > Tick() ? loop_->endTick : workspace_.song.songLength;
    SetLoop(Tick(), end);
}

void PlayDesk::LoopToHere() {
    const std::int32_t start = loop_ && loop_->startTick < Tick() ? loop_->startTick : 0;
    SetLoop(start, Tick());
}

void PlayDesk::SetLoop(std::int32_t startTick, std::int32_t endTick) {
    if (!workspace_.hasSong || startTick == endTick) {
        return;
    }
    loop_ = LoopRange{std::min(startTick, endTick), std::max(startTick, endTick), true};
    player_.SetLoop(loop_->startTick, loop_->endTick);
    SetLooping(true);
}

void PlayDesk::SetLooping(bool on) {
    if (!loop_ && on && workspace_.hasSong) {
        SetLoop(0, workspace_.song.songLength);
        return;
    }
    if (loop_) {
        loop_->on = on;
    }
    player_.SetLooping(on);
    emit LoopChanged();
}

void PlayDesk::ChangeTempo(std::int32_t by) {
    if (!workspace_.hasSong || by == 0) {
        return;
    }
    player_.SetTempoOffset(player_.TempoOffset() + by);
    workspace_.modified = true;
    emit TempoChanged();
}

void PlayDesk::ResetTempo() {
    ChangeTempo(-player_.TempoOffset());
}

std::int32_t PlayDesk::Bpm() const {
    const auto map = Map();
    return map->timeZones.empty() ? 120 : map->timeZones[song::ZoneOfTick(*map, Tick())].bpm;
}

std::int32_t PlayDesk::FileBpm() const {
    const auto map = Map();
    const std::int32_t here = Tick();
    std::int32_t tempo = song::kDefaultTempo;
    for (const song::TempoEntry& entry : map->tempos) {
        tempo = entry.tick >= 0 && entry.tick <= here ? entry.fileTempo : tempo;
    }
    return std::max<std::int32_t>(song::BpmOfTempo(tempo), 1);
}

std::int32_t PlayDesk::TempoPercent() const {
    return (Bpm() * 100 + FileBpm() / 2) / FileBpm();
}

void PlayDesk::SetTempoPercent(std::int32_t percent) {
    ChangeTempo((FileBpm() * percent + 50) / 100 - Bpm());
}

void PlayDesk::OpenOutput() {
    player_.OpenPort(player_.Routes().Port(0));
    emit PortsChanged();
}

void PlayDesk::ReopenSynth() {
    for (const player::OutputDevice& output : player_.OutputDevices()) {
        if (output.softwareInstrument) {
            player_.ReopenPort(output.port);
        }
    }
    emit PortsChanged();
}

bool PlayDesk::PlaysOnSynth() const {
    for (const player::OutputDevice& output : player_.OutputDevices()) {
        if (output.softwareInstrument && player_.Routes().Port(0) == output.port) {
            return true;
        }
    }
    return false;
}

void PlayDesk::OnPlaying(bool playing) {
    if (playing) {
        display_.start(kDisplayMs);
    } else {
        display_.stop();
    }
    emit PlayingChanged(playing);
    emit PlaceChanged();
}

void PlayDesk::OnPorts() {
    outputs_.Apply();
    emit PortsChanged();
}

} // namespace tracksmith::forms
