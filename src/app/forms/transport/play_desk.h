#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include <QObject>
#include <QTimer>

#include "app/devices/midi_devices.h"
#include "app/output_choice.h"
#include "app/settings/settings_store.h"
#include "app/workspace.h"
#include "player/player.h"

namespace tracksmith::forms {

/// The player of the window with its devices, and the user's commands for it. Tells what changes by
/// signals. User-interface thread.
class PlayDesk : public QObject {
    Q_OBJECT

public:
    /// `workspace`, `store` and `host` must outlive the desk; `host` shows what the player has to
    /// tell, so it should not interrupt the user. Starts the player.
    PlayDesk(app::Workspace& workspace, settings::SettingsStore& store, MessageHost& host,
             devices::MidiDevices& devices, QObject* parent = nullptr);
    ~PlayDesk() override;

    player::TMidiPlayer& Player() { return player_; }
    app::OutputChoice& Outputs() { return outputs_; }

    /// Ends playing before the song in memory is replaced or cleared.
    void LeaveSong();
    /// Another song, or none, is in memory.
    void TakeSong();

    /// Changes the song by `edit` while nothing plays, and goes on playing where it was.
    void EditSong(const std::function<void()>& edit);

    void TogglePlay();
    void Stop();
    void Panic();
    void MoveToStart();
    void MoveToEnd();
    /// Moves by measures; back from the middle of a measure goes to its start first.
    void MoveByMeasures(int measures);
    void MoveToTick(std::int32_t tick);

    /// Sets one loop end to the current place and switches the loop on; the other end is the song's
    /// when it lies on the wrong side.
    void LoopFromHere();
    void LoopToHere();
    void SetLoop(std::int32_t startTick, std::int32_t endTick);
    void SetLooping(bool on);

    /// Loop ends in ticks; without a loop nothing.
    struct LoopRange {
        std::int32_t startTick = 0;
        std::int32_t endTick = 0;
        bool on = false;
    };
    const std::optional<LoopRange>& Loop() const { return loop_; }

    /// Moves the tempo by quarter notes per minute against what it is now; the tempo events of the
    /// song follow, so it counts as modified.
    void ChangeTempo(std::int32_t by);
    void ResetTempo();
    /// Sets the tempo at the current place to so many per cent of the file's there.
    void SetTempoPercent(std::int32_t percent);
    /// Quarter notes per minute at the current place, and per cent of the file's tempo there.
    std::int32_t Bpm() const;
    std::int32_t TempoPercent() const;

    /// The current place in ticks, and the time map that it is read by.
    std::int32_t Tick() const;
    std::int64_t Ms() const;
    std::shared_ptr<const player::TimeMap> Map() const { return player_.Place().map; }

    bool Playing() const { return player_.Playing(); }

    /// The built-in instrument takes its options anew.
    void ReopenSynth();
    /// True when a channel goes to the built-in instrument.
    bool PlaysOnSynth() const;
    /// Sends a channel (0-15) to an output, or all to the common one, and remembers it.
    void SetRoute(std::size_t channel, const app::OutputChoice::ChannelRoute& route);
    void ResetRoutes();
    /// Opens the chosen output already now, so that its trouble is known before playing.
    void OpenOutput();

signals:
    void PlayingChanged(bool playing);
    /// The place in the song has moved.
    void PlaceChanged();
    void LoopChanged();
    void TempoChanged();
    /// A channel goes to another output.
    void RoutesChanged();
    /// An output or its state has changed.
    void PortsChanged();

private:
    std::int32_t FileBpm() const;
    void OnPlaying(bool playing);
    void OnPorts();
    void MoveToMs(std::int64_t ms, std::int32_t tick);

    app::Workspace& workspace_;
    player::TMidiPlayer player_;
    app::OutputChoice outputs_;
    QTimer display_;
    QTimer portCheck_;
    std::optional<LoopRange> loop_;
    // The tick last moved to; milliseconds are too coarse to find it again.
    std::int64_t movedMs_ = 0;
    std::int32_t movedTick_ = 0;
};

} // namespace tracksmith::forms
