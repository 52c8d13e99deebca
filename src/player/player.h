#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "base/message_host.h"
#include "base/system/message_poster.h"

#include "midi/midi_driver.h"
#include "player/channel_activity.h"
#include "player/channels_in_effect.h"
#include "player/dispatch.h"
#include "player/event_sender.h"
#include "player/input_port.h"
#include "player/midi_thru.h"
#include "player/output_ports.h"
#include "player/play_position.h"
#include "player/player_thread.h"
#include "player/routing.h"
#include "player/state_keeper.h"
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
    /// How long a command waits for the ports to take what it sends, before it lets them go on
    /// alone.
    std::chrono::milliseconds sendPatience = kSendPatience;
    static constexpr std::chrono::milliseconds kSendPatience{50};
};

/// What the player tells the program; called on the owner's thread.
struct PlayerListener {
    /// Playing has begun or ended, by the user or at the song's end.
    std::function<void(bool playing)> onPlaying;
    /// The state of a port has changed, or one is new.
    std::function<void()> onPortsChanged;
    /// A diagnostic trace, with the stopwatch's milliseconds.
    std::function<void(std::int64_t time, std::string_view text)> onTrace;
    /// The driver for which Stop or another command answered "not now" has returned.
    std::function<void()> onHangOver = nullptr;
};

/// A place in a song, and the ends of the loop there, in ticks.
struct SongPlace {
    std::int32_t tick = 0;
    std::int32_t loopStart = 0;
    std::int32_t loopEnd = 0;
    /// A reset that goes out first where the song sets none before the place; null for none. Lives
    /// as long as the song.
    song::ConstEventLink reset;
};

/// What Play has come to.
struct PlayResult {
    bool playing = false;
    /// Product names of the ports that channels go to and that take nothing at present, because
    /// they could not be opened or are lost.
    std::vector<std::string> silentPorts;

    explicit operator bool() const { return playing; }
};

/// Plays the song in real time to the output ports. One per program.
///
/// Belongs to the thread that creates it, the owner's: everything runs there, but what only reads
/// the position, the activity, the mute state and the routing may be called from any thread. The
/// song may be changed in structure only while the player is stopped, and the player must be told
/// by RebuildAfterEdit; while it plays, the owner's thread may write data bytes of events through
/// song::WriteShared.
///
/// A driver that hangs in a call holds up nothing but its port, and the playback thread if that has
/// made the call. No command waits for it longer than a fifth of a second. Commands that need the
/// playback thread's place in the song then answer false, "not now", and change nothing; Stop gives
/// the pass up, so that it touches nothing any more when the driver returns.
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
    /// Stops, ends the playback thread and closes the ports. What hangs in a driver is left to it.
    void FormDestroy();
    void SetListener(PlayerListener listener) { listener_ = std::move(listener); }

    /// Another song is in memory: stops; position 0, loop and tempo offset off. False when it
    /// cannot be played yet, since a driver hangs.
    [[nodiscard]] bool SongLoaded();
    /// The song was edited: finds every reference into it again, at the same position. False when
    /// it cannot be played yet, since a driver hangs; then the player has stopped.
    [[nodiscard]] bool RebuildAfterEdit();

    /// Plays `other` in place of the program's own song, or that again for null, from a place in it
    /// on, playing or not; what sounds ends, and the instruments are set up for it as for a seek,
    /// resets included. The practice tempo is kept; the loop gets other ends. `other` must be timed
    /// and outlive its being played; when it is given back its tempos are its own again. The own
    /// song is not touched meanwhile, and may not be changed. SongLoaded plays the own one. False:
    /// not now. Throws std::bad_alloc.
    [[nodiscard]] bool PlaySong(song::Song* other, const SongPlace& place);

    /// PreparePlay and StartPlay; a wait for the instrument of over 0.3 s is told. Does not play
    /// when there is nothing to play or a driver hangs.
    [[nodiscard]] PlayResult Play();
    /// Opens the ports, each once and telling of those that cannot be opened, finds the events at
    /// the start position and begins to bring the instruments into the state of that place: the
    /// set-up messages with the pauses that they need, for which the music waits, then what is set
    /// on the channels. False when there is nothing to play or a driver hangs.
    [[nodiscard]] bool PreparePlay();
    void StartPlay();
    /// Ends playing and everything that sounds. False when a pass hangs in a driver: then the song
    /// should not be changed yet, and cannot be played.
    [[nodiscard]] bool Stop();
    /// Product name of the port whose driver hangs and holds up the player; empty when none does.
    /// A port that merely hangs by itself is told by OutputDevices.
    std::string HangingPort() const;
    /// Moves to `ms` milliseconds, playing or not; while playing, the instruments are brought into
    /// the state of that place before the music goes on. Nothing happens behind the song's end or
    /// when that is the position already. False: not now.
    [[nodiscard]] bool MoveToTimePosition(std::int64_t ms);
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
    /// on from the same place. False: not now.
    [[nodiscard]] bool SetTempoOffset(std::int32_t bpm);
    std::int32_t TempoOffset() const { return tempoOffset_; }
    /// The tempos as the offset has made them count as the file's from now on; the offset is 0.
    /// False: not now.
    [[nodiscard]] bool TakeTempoAsFile();

    /// Sets both loop ends (ticks, in any order). A loop of 10 ms or less is not played. False: not
    /// now.
    [[nodiscard]] bool SetLoop(std::int32_t startTick, std::int32_t endTick);
    [[nodiscard]] bool SetLooping(bool on);
    const PlayLoop& Loop() const { return dispatcher_.Loop(); }

    /// Mute and solo of the source channels (0-15); what becomes silent ends at once. What becomes
    /// audible again gets what it has missed before its next event that is sent; until then
    /// nothing.
    void SetChannelMuted(std::size_t channel, bool on);
    void SetChannelSolo(std::size_t channel, bool on);
    bool ChannelMuted(std::size_t channel) const { return routing_.Muted(channel); }
    bool ChannelSolo(std::size_t channel) const { return routing_.Solo(channel); }
    /// A source channel (0-15) sounds with `voice` in place of what the song selects, which is not
    /// changed, until it is called without one: then the channel gets back what the song has set.
    /// False: not now.
    [[nodiscard]] bool TryVoice(std::size_t channel, const std::optional<TrialVoice>& voice);
    /// Mutes a track; its notes end, its place in the song moves on. What it has set meanwhile is
    /// sent as for a channel. False: not now.
    [[nodiscard]] bool SetTrackMuted(std::size_t track, bool on);
    /// Lets a track play so many milliseconds earlier. False: not now.
    [[nodiscard]] bool SetTrackTimeShift(std::size_t track, std::int32_t ms);
    /// The notes of an open drum editor; a default-made table when it closes. What sounds on the
    /// channel of either ends. False: not now.
    [[nodiscard]] bool SetDrumNotes(const DrumNotes& notes);

    /// Lets `write` change the pitches of notes of the song by song::WriteShared. What sounds on
    /// `channels` (a bit for each) ends at its old pitch before. No pass runs meanwhile. False: not
    /// now; then nothing is written.
    [[nodiscard]] bool ChangePitches(std::uint32_t channels, const std::function<void()>& write);

    /// Sets where all source channels go, in one step. While playing, a port that is new among them
    /// is opened and set up before its channels, which are not heard until then. When no channel
    /// goes to a port any more whose driver hangs, the player goes on without it. False, and
    /// nothing is changed, when one does.
    [[nodiscard]] bool SetRoutes(const ChannelRoutes& routes);
    const Routing& Routes() const { return routing_; }
    const ChannelActivity& Activity() const { return activity_; }
    const ChannelsInEffect& InEffect() const { return inEffect_; }
    /// Lets the level meters fall by one step.
    void UpdateRMS() { activity_.LetLevelsFall(); }

    void SuppressSysex(bool on) { sender_.SuppressSysex(on); }
    /// When both are on, Stop switches the keyboards' local control on again.
    void SetLocalControlOptions(bool keyboardHasIt, bool restoreAtStop);

    /// Gives a message to a port. False when the port does not take it.
    bool SendMidiData(std::size_t port, std::uint8_t status, std::uint8_t data1,
                      std::uint8_t data2);
    /// Gives `status` (0xF0 or 0xF7) and `data` to a port.
    bool SendSysex(std::size_t port, std::uint8_t status, std::span<const std::uint8_t> data);
    /// Sends a channel message for a source channel to where it is routed, for live controls.
    bool SendChannel(std::size_t channel, std::uint8_t command, std::uint8_t data1,
                     std::uint8_t data2);
    /// Begins to bring all instruments into the state of the position, as PreparePlay does.
    void InitializeRealtimeData();
    /// Waits until the ports have sent all that they were given. False when they have not within
    /// `patience`.
    bool WaitUntilSent(std::chrono::milliseconds patience) const;

    /// The output devices, sorted by product name.
    std::vector<OutputDevice> OutputDevices() const { return ports_.SortedDevices(); }
    std::size_t OutputPortCount() const { return ports_.Count(); }
    /// Opens a port. True when it is open; else the user is told why not.
    bool OpenPort(std::size_t port);
    /// Closes a port and opens it again with what the events before the position have set, so that
    /// new options of its driver hold. False when it is not open by now; CheckPorts tries again.
    bool ReopenPort(std::size_t port);
    /// Notices output and input devices that went, came or came back, and ports that hang; opens
    /// those that are back or could not be opened before, and sets them up. To be called about
    /// twice a second.
    void CheckPorts();

    /// The input devices that are there.
    const std::vector<InputDevice>& InputDevices() const { return input_.Devices(); }
    /// The chosen one when it is there: at first the device of the stored name.
    std::optional<std::size_t> SelectedInput() const { return input_.Selected(); }
    /// Chooses an input by its name, whether it is there or not.
    void SelectInput(const std::string& productName);
    /// Begins to receive from the chosen device as soon as it is there and, while SetMidiThru is
    /// on, to pass on what comes. False when it does not receive yet; a device that is there and
    /// cannot be opened is told of.
    bool ConnectMidiInPort();
    void DisconnectMidiInPort();
    /// Product name of the chosen device, whether it is there or not; empty for none.
    const std::string& ChosenInput() const { return input_.Chosen(); }
    /// Received messages go to where their channel is routed.
    void SetMidiThru(bool on);
    using InputListener = std::function<void(const midi::TMyMidiEvent&)>;
    /// Shows every received message to the listener of `owner` too, a system-exclusive one in the
    /// parts in which it came; on the owner's thread. Null ends it; not from within a call.
    void SetInputListener(const void* owner, InputListener listener);

private:
    /// Messages to the owner's thread.
    enum Notice : std::uint32_t { SongEnded = 1, PortTrouble = 2, HangOver = 3 };

    /// Keeps passes from running while the owner's thread touches what they use. What was sent
    /// meanwhile is on its way before they go on.
    class Hold : public PassHold {
    public:
        explicit Hold(TMidiPlayer& player) : PassHold(player.thread_), player_(player) {}
        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;
        ~Hold() { player_.WaitUntilSent(player_.sendPatience_); }

    private:
        TMidiPlayer& player_;
    };

    std::int64_t PlayMidiData(PassState& pass) noexcept;
    bool EndOfSong(PassState& pass) noexcept;
    bool EndSound(PassState* pass = nullptr) noexcept;
    void TakeTempo();
    void ApplyTempo(std::shared_ptr<const song::TimeMap>& map, std::int32_t offset);
    void OnNotice(std::uint32_t notice);
    void TellTrouble();
    void TellNotOpened(std::size_t port, midi::ResultCode result);
    void Tell(const std::string& text) const;
    void TellPortsChanged() const;
    void TraceMIDIProc(std::string_view text) const;

    void MidiInputXMidiInput(const midi::TMyMidiEvent& event);
    void TellMissingDevices();
    void OpenPorts(const std::set<std::size_t>& ports);
    std::vector<std::string> SilentPorts() const;
    void SetUpPorts(const std::vector<std::size_t>& ports);
    bool TryRoutes(const ChannelRoutes& routes);
    std::vector<std::size_t> ChangeRoutes(const ChannelRoutes& routes);
    bool LeaveHangingPort(const ChannelRoutes& routes);
    ChaseMemory Chase() const;
    std::vector<SetUpMessage> FindCursors(std::int64_t us);
    void BringToPlace(std::vector<SetUpMessage> setUp);
    void SetUpNow(const PortSet& ports);
    PortSet InUse(const std::set<std::size_t>& ports) const;
    bool MoveTo(std::int64_t ms);
    void TakeSongOver(bool edited);
    void MoveTempos(std::int32_t offset);
    void ChangeSong(song::Song* other);

    song::Song& own_;
    song::Song* song_; // the one that is played
    std::shared_ptr<Stopwatch> stopwatch_;
    PlayPosition position_;
    Routing routing_;
    ChannelActivity activity_;
    ChannelsInEffect inEffect_;
    std::unique_ptr<system::MessagePoster> poster_;
    OutputPorts ports_;
    StateKeeper keeper_;
    EventSender sender_;
    Dispatcher dispatcher_;
    song::TempoEvents tempoEvents_;
    // Of the own song while another is played.
    song::TempoEvents ownTempoEvents_;
    std::int32_t ownTempoOffset_ = 0;
    TempoRequest tempoRequest_;
    std::int32_t tempoOffset_ = 0;
    std::atomic<bool> playing_ = false;
    std::atomic<bool> restoreLocalControl_ = false;
    MessageHost* host_ = nullptr;
    std::chrono::milliseconds sendPatience_{0};
    bool created_ = false;
    std::set<std::size_t> toSetUp_;
    std::set<std::size_t> toldNotOpened_;
    PlayerListener listener_;
    InputPort input_{[this](const midi::TMyMidiEvent& event) { MidiInputXMidiInput(event); }};
    MidiThru thru_{sender_};
    bool thruOn_ = false;
    std::map<const void*, InputListener> inputListeners_;
    TMidiPlayerThread thread_; // last, so that it ends first
};

} // namespace tracksmith::player
