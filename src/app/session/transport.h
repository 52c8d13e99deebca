#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "base/message_host.h"

#include "app/session/listener_list.h"
#include "app/session/other_song.h"
#include "app/session/output_choice.h"
#include "app/session/workspace.h"
#include "app/settings/settings_store.h"
#include "player/player.h"

namespace tracksmith::session {

/// The user's controls of the player: playing, moving, loop, tempo, outputs. Tells the session's
/// listeners what changes. Owner's thread of the player.
class Transport {
public:
    /// All must outlive the object. Becomes the player's listener. `host` shows why something
    /// cannot be done just now.
    Transport(const Workspace& workspace, player::TMidiPlayer& player,
              settings::SettingsStore* store, const ListenerList& listeners, MessageHost& host);

    player::TMidiPlayer& Player() { return player_; }
    /// The remembered choice of outputs; only where there is a store.
    OutputChoice& Outputs() { return *outputs_; }

    /// Another song, or none, is in memory: position 0, no loop, the file's tempo.
    void TakeSong();

    bool Playing() const { return player_.Playing(); }
    /// Begins at the current place, or from the start when that is the song's end. False when
    /// nothing is played; why has been told.
    bool Play();
    /// False while a driver hangs: then the song is still in use.
    bool Stop();
    void TogglePlay();
    void Panic();
    /// Product name of an output whose driver does not return; empty when there is none.
    std::string HangingPort() const;

    void MoveToStart();
    void MoveToEnd();
    /// Moves by measures; back from the middle of a measure goes to its start first. Nothing
    /// happens behind the song's last measure.
    void MoveByMeasures(int measures);
    void MoveToTick(std::int32_t tick);

    /// The current place in ticks and milliseconds of the song in memory, and the time map that it
    /// is read by.
    std::int32_t Tick() const;
    std::int64_t Ms() const;
    std::shared_ptr<const song::TimeMap> Map() const;

    /// Lets `other` be heard from the place that belongs to the current one, in place of the song
    /// in memory, which stays as it is; for null that one again. Playing goes on. All places remain
    /// those of the song in memory. Another song in memory ends it. False, and told, while a driver
    /// hangs. Throws std::bad_alloc.
    bool Hear(std::shared_ptr<OtherSong> other);
    /// The song that is heard in place of the one in memory; null when that one is heard.
    const std::shared_ptr<OtherSong>& Heard() const { return other_; }

    /// Loop ends in ticks.
    struct LoopRange {
        std::int32_t startTick = 0;
        std::int32_t endTick = 0;
        bool on = false;
    };
    /// Nothing while there is no loop.
    const std::optional<LoopRange>& Loop() const { return loop_; }
    /// Sets one loop end to the current place and switches the loop on; the other end is the song's
    /// when it lies on the wrong side.
    void LoopFromHere();
    void LoopToHere();
    void SetLoop(std::int32_t startTick, std::int32_t endTick);
    void SetLooping(bool on);
    /// Makes the loop what it was at another time.
    void TakeLoop(const std::optional<LoopRange>& loop);

    /// Practice tempo: all tempos of the song move with that of the current place. Quarter notes
    /// per minute, 25 to 65,535; per cent of the file's tempo at the current place.
    void SetBpm(std::int32_t bpm);
    void SetTempoPercent(std::int32_t percent);
    void ResetTempo();
    std::int32_t Bpm() const;
    std::int32_t TempoPercent() const;
    /// The tempos as they are now are those of the file.
    void TakeTempoAsFile();

    /// Sends a channel (0-15) to an output, or all to the common one, and remembers it.
    void SetRoute(std::size_t channel, const OutputChoice::ChannelRoute& route);
    void ResetRoutes();
    /// Chooses the output for all channels and opens it already now, so that its trouble is known
    /// before playing.
    void ChooseOutput(const std::string& productName);
    void OpenOutput();
    /// The built-in instrument takes its options anew.
    void ReopenSynth();
    /// True when a channel goes to the built-in instrument.
    bool PlaysOnSynth() const;
    /// Looks for ports that went, came or came back; to be called about twice a second.
    void CheckPorts() { player_.CheckPorts(); }

private:
    bool Told(bool done) const;
    void SetTempoOffset(std::int32_t offset);
    void MoveToMs(std::int64_t ms, std::int32_t tick);
    bool HearOther(std::shared_ptr<OtherSong> other);
    std::int32_t PlayedTick(std::int32_t tick) const;
    std::int32_t OwnTick(std::int64_t played) const;
    void OnPlaying(bool playing);
    void OnPorts();

    const Workspace& workspace_;
    player::TMidiPlayer& player_;
    std::optional<OutputChoice> outputs_;
    const ListenerList& listeners_;
    MessageHost& host_;
    std::optional<LoopRange> loop_;
    std::shared_ptr<OtherSong> other_;
    // The time map of the song in memory while another is heard.
    std::shared_ptr<const song::TimeMap> ownMap_;
    // The tick last moved to; milliseconds are too coarse to find it again.
    std::int64_t movedMs_ = 0;
    std::int32_t movedTick_ = 0;
};

} // namespace tracksmith::session
