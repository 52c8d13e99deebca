#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/message_host.h"
#include "base/system/message_poster.h"

#include "midi/midi_driver.h"
#include "midi/midi_input.h"
#include "player/channel_activity.h"
#include "player/channels_in_effect.h"
#include "player/dispatch.h"
#include "player/event_sender.h"
#include "player/midi_thru.h"
#include "player/output_ports.h"
#include "player/play_position.h"
#include "player/player_thread.h"
#include "player/routing.h"
#include "player/stopwatch.h"
#include "player/tempo_request.h"
#include "song/practice_tempo.h"
#include "song/song.h"

namespace tracksmith::player {

/// What FormCreate needs from the program. Drivers and host must outlive the player.
struct PlayerSetup {
    std::vector<OutputDriver> outputs;
    midi::MidiInputDriver* input = nullptr;
    /// Product name of the input device that the user chose last.
    std::string storedInputName;
    MessageHost& host;
};

/// What the player tells the program; called on the owner's thread.
struct PlayerListener {
    /// Playing has begun or ended, by the user or at the song's end.
    std::function<void(bool playing)> onPlaying;
    /// An output port was lost, is back or is new.
    std::function<void()> onPortsChanged;
    /// A diagnostic trace, with the stopwatch's milliseconds.
    std::function<void(std::int64_t time, std::string_view text)> onTrace;
};

/// An input device in the list that the user chooses from.
struct InputDevice {
    std::uint32_t device = 0;
    std::string productName;
};

/// Plays the song in real time to the output ports. One per program.
///
/// Belongs to the thread that creates it, the owner's: everything runs there, but what only reads
/// the position, the activity, the mute state and the routing may be called from any thread. The
/// song may be changed in structure only while the player is stopped, and the player must be told
/// by RebuildAfterEdit; while it plays, the owner's thread may write data bytes of events through
/// song::WriteShared.
class TMidiPlayer {
public:
    /// A player for `song`, which must outlive it. `stopwatch` is the system's clock unless a test
    /// brings its own.
    explicit TMidiPlayer(song::Song& song, std::unique_ptr<Stopwatch> stopwatch = nullptr);
    TMidiPlayer(const TMidiPlayer&) = delete;
    TMidiPlayer& operator=(const TMidiPlayer&) = delete;
    ~TMidiPlayer();

    /// Finds the input and output devices and starts the playback thread, stopped. Without an
    /// output device the user is told.
    void FormCreate(const PlayerSetup& setup);
    /// Stops, ends the playback thread and closes the ports.
    void FormDestroy();
    void SetListener(PlayerListener listener) { listener_ = std::move(listener); }

    /// Another song is in memory: position 0, loop and tempo offset off.
    void SongLoaded();
    /// The song was edited: finds every reference into it again, at the same position.
    void RebuildAfterEdit();

    /// PreparePlay and StartPlay. False when there is nothing to play or a port hangs.
    bool Play();
    /// Opens the ports, finds the events at the start position and sends what the events before it
    /// have set.
    bool PreparePlay();
    void StartPlay();
    /// Ends playing and everything that sounds. False when a pass hangs in a driver: then the song
    /// must not be changed yet.
    bool Stop();
    /// Moves to `ms` milliseconds, playing or not. Nothing happens behind the song's end or when
    /// that is the position already.
    void MoveToTimePosition(std::int64_t ms);
    /// Ends everything that sounds on all channels of all open ports.
    void Panic();

    /// True from StartPlay until Stop or the song's end.
    bool Playing() const { return playing_.load(); }
    /// Play position in milliseconds.
    std::int64_t Position() const { return position_.Ms(); }
    /// The position with the time map to read it by.
    PlayPlace Place() const { return position_.Place(); }
    /// Largest event time in milliseconds; while stopped, or on the owner's thread.
    std::int64_t SongEndTime() const { return dispatcher_.SongEndTime(); }
    /// State of the playback thread: 99 stopped, 0 playing, 1 in a pass.
    std::int32_t ThreadState() const { return thread_.State(); }
    bool WorkingFlag() const { return thread_.WorkingFlag(); }

    /// Moves all tempos by so many quarter notes per minute against the file's; the result is held
    /// within 25 and 65,535. The song's tempo events, zones and event times follow; the music goes
    /// on from the same place.
    void SetTempoOffset(std::int32_t bpm);
    std::int32_t TempoOffset() const { return tempoOffset_; }
    /// The tempos as the offset has made them count as the file's from now on; the offset is 0.
    void TakeTempoAsFile();

    /// Sets both loop ends (ticks, in any order). A loop of 10 ms or less is not played.
    void SetLoop(std::int32_t startTick, std::int32_t endTick);
    void SetLooping(bool on);
    const PlayLoop& Loop() const { return dispatcher_.Loop(); }

    /// Mute and solo of the source channels (0-15); what becomes silent ends at once.
    void SetChannelMuted(std::size_t channel, bool on);
    void SetChannelSolo(std::size_t channel, bool on);
    bool ChannelMuted(std::size_t channel) const { return routing_.Muted(channel); }
    bool ChannelSolo(std::size_t channel) const { return routing_.Solo(channel); }
    /// Mutes a track; its notes end, its place in the song moves on.
    void SetTrackMuted(std::size_t track, bool on);
    /// Lets a track play so many milliseconds earlier.
    void SetTrackTimeShift(std::size_t track, std::int32_t ms);
    /// The notes of an open drum editor; a default-made table when it closes.
    void SetDrumNotes(const DrumNotes& notes);

    /// Plays source channel `channel` to `target` (0-15) of a port.
    void SetRoute(std::size_t channel, std::size_t port, std::uint8_t target);
    const Routing& Routes() const { return routing_; }
    const ChannelActivity& Activity() const { return activity_; }
    const ChannelsInEffect& InEffect() const { return inEffect_; }
    /// Lets the level meters fall by one step.
    void UpdateRMS() { activity_.LetLevelsFall(); }

    void SuppressSysex(bool on) { sender_.SuppressSysex(on); }
    /// When both are on, Stop switches the keyboards' local control on again.
    void SetLocalControlOptions(bool keyboardHasIt, bool restoreAtStop);

    /// Sends to a port. False when the port does not take it.
    bool SendMidiData(std::size_t port, std::uint8_t status, std::uint8_t data1,
                      std::uint8_t data2);
    /// Sends `status` (0xF0 or 0xF7) and `data` to a port.
    bool SendSysex(std::size_t port, std::uint8_t status, std::span<const std::uint8_t> data);
    /// Sends a channel message for a source channel to where it is routed, for live controls.
    bool SendChannel(std::size_t channel, std::uint8_t command, std::uint8_t data1,
                     std::uint8_t data2);
    /// Sends what the events before the position have set: system-exclusive set-up, then voice,
    /// controllers, parameters, bend and pressure of every channel.
    void InitializeRealtimeData();

    /// The output devices, sorted by product name.
    std::vector<OutputDevice> OutputDevices() const { return ports_.SortedDevices(); }
    std::size_t OutputPortCount() const { return ports_.Count(); }
    /// Opens a port. True when it is open.
    bool OpenPort(std::size_t port) { return ports_.Open(port); }
    /// Closes a port and opens it again with what the events before the position have set, so that
    /// new options of its driver hold. True when it is open.
    bool ReopenPort(std::size_t port);
    /// Notices devices that went, came or came back; these are opened again and set up. To be
    /// called about twice a second.
    void CheckPorts();

    const std::vector<InputDevice>& InputDevices() const { return inputDevices_; }
    /// The chosen one: at first the device that matches the stored name.
    std::optional<std::size_t> SelectedInput() const { return selectedInput_; }
    void SelectInput(std::size_t index);
    /// Begins to receive from the chosen device and, while SetMidiThru is on, to pass on what
    /// comes. False when it cannot be opened; the user is told.
    bool ConnectMidiInPort();
    void DisconnectMidiInPort();
    /// Received messages go to where their channel is routed.
    void SetMidiThru(bool on);

private:
    /// Messages to the owner's thread.
    enum Notice : std::uint32_t { SongEnded = 1, PortTrouble = 2 };

    std::int64_t PlayMidiData() noexcept;
    void EndOfSong() noexcept;
    void EndSound() noexcept;
    void SendLocalControl() noexcept;
    void TakeTempo();
    void ApplyTempo(std::shared_ptr<const song::TimeMap>& map, std::int32_t offset);
    void OnNotice(std::uint32_t notice);
    void TellTrouble();
    void TraceMIDIProc(std::string_view text) const;

    void FindInputs(const PlayerSetup& setup);
    void MidiInputXMidiInput(midi::TMidiInput& sender);
    void TellMissingDevices();
    void OpenRoutedPorts();
    void SetUpPorts(const std::vector<std::size_t>& ports);
    void FindCursors(std::int64_t us);
    void MoveTo(std::int64_t ms);
    void TakeSongOver(bool edited);

    song::Song& song_;
    std::unique_ptr<Stopwatch> stopwatch_;
    PlayPosition position_;
    Routing routing_;
    ChannelActivity activity_;
    ChannelsInEffect inEffect_;
    std::unique_ptr<system::MessagePoster> poster_;
    OutputPorts ports_;
    EventSender sender_;
    Dispatcher dispatcher_;
    song::TempoEvents tempoEvents_;
    TempoRequest tempoRequest_;
    std::int32_t tempoOffset_ = 0;
    std::atomic<bool> playing_ = false;
    std::atomic<bool> restoreLocalControl_ = false;
    MessageHost* host_ = nullptr;
    PlayerListener listener_;
    std::vector<InputDevice> inputDevices_;
    std::optional<std::size_t> selectedInput_;
    std::unique_ptr<midi::TMidiInput> input_;
    MidiThru thru_{sender_};
    bool thruOn_ = false;
    TMidiPlayerThread thread_; // last, so that it ends first
};

} // namespace tracksmith::player
