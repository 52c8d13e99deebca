#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "base/message_host.h"

#include "app/session/session.h"
#include "mixer/controller_index.h"
#include "mixer/controls.h"
#include "mixer/live_sender.h"
#include "mixer/master_link.h"
#include "mixer/transposition.h"

namespace tracksmith::mixer {

/// What a control of a channel shows.
struct ControlState {
    /// 0-127.
    std::uint8_t value = 0;
    /// How many events of the song set the control.
    std::size_t places = 0;
    /// An event is in effect at the play position: moving the control changes it.
    bool inEffect = false;

    /// The song never sets the control.
    bool Hollow() const { return places == 0; }
    friend bool operator==(const ControlState&, const ControlState&) = default;
};

/// What pressing a lamp came to.
enum class LampResult : std::uint8_t { Done, NotUsed, NoSong };

/// The mixer of the sixteen channels without its widgets. A control that moves changes the event of
/// the song that is in effect at the play position, and is heard at once. Only data bytes are
/// written, while playing or not; what makes events goes through Session::Change. Channels count
/// from 0. Owner's thread of the session.
class Mixer : private session::SessionListener {
public:
    /// `session` must outlive the mixer. `clock` is the system's unless a test brings its own.
    explicit Mixer(session::Session& session, Clock clock = {});
    ~Mixer() override;

    /// A song is open.
    bool Enabled() const { return enabled_; }
    /// The song has messages of the channel.
    bool Used(std::size_t channel) const { return index_.Used(channel); }
    const ControllerIndex& Index() const { return index_; }

    /// Finds what is in effect at the play position and takes over what has changed since. To be
    /// called for every frame of the display while playing; costs the same for songs of any size.
    void Refresh();
    ControlState State(std::size_t channel, Control control) const;

    // The sliders of the strips: `position` 0-127, rounded. Without a song nothing happens; without
    // an event in effect only the value that is shown changes.
    void TB_Volume00Change(std::size_t channel, double position);
    void TB_PanoramaChange(std::size_t channel, double position);
    void TB_ExpressionChange(std::size_t channel, double position);
    void TB_ReverbChange(std::size_t channel, double position);
    void TB_ChorusChange(std::size_t channel, double position);
    void TB_Controller71Change(std::size_t channel, double position);
    void TB_Controller72Change(std::size_t channel, double position);
    void TB_Controller73Change(std::size_t channel, double position);
    void TB_Controller74Change(std::size_t channel, double position);
    void TB_Controller94Change(std::size_t channel, double position);
    /// The one of them for `control`.
    void Move(std::size_t channel, Control control, double position);

    /// Moves the volumes of all channels in proportion, while linked.
    void TB_MasterVolChange(double position);
    std::uint8_t Master() const { return master_; }
    bool MasterLinked() const { return link_.Linked(); }
    void SetMasterLinked(bool on);

    /// The left button on a mute lamp: with Ctrl all channels are heard again, else the channel
    /// becomes the current one and is muted or heard again.
    LampResult Btn_Mute00MouseDown(std::size_t channel, bool ctrl);
    /// The same for a solo lamp; with Ctrl no channel is solo any more.
    LampResult Btn_Solo00MouseDown(std::size_t channel, bool ctrl);
    bool Muted(std::size_t channel) const { return muted_.at(channel); }
    bool Solo(std::size_t channel) const { return solo_.at(channel); }
    std::size_t SoloCount() const;
    /// Not muted, and solo wherever some channel is.
    bool Audible(std::size_t channel) const;
    void ClearMutes();
    void ClearSolos();

    /// Level meter of a channel, 0-127, none while nothing plays; each frame of the display lets
    /// them fall by one step.
    std::optional<unsigned> Level(std::size_t channel) const;
    void LetLevelsFall();

    /// The channel that the windows work on.
    std::size_t CurrentChannel() const { return currentChannel_; }
    void SetMidiChannel(std::size_t channel) { currentChannel_ = channel; }

    /// Moves the song, or a channel, to `semitones` (within kMostSemitones) against its file, at
    /// once in the sound. Drum parts stay. False while a driver hangs or another song is heard;
    /// then nothing is changed.
    [[nodiscard]] bool TransposeChange(int semitones);
    [[nodiscard]] bool TransposeChannel(std::size_t channel, int semitones);
    const Transposition& Transposing() const { return transposition_; }
    /// The channel plays drums somewhere.
    bool PlaysDrums(std::size_t channel) const {
        return (transposition_.drums >> channel & 1U) != 0;
    }

    /// The event in effect gets the value that it had in the file.
    void ResetControl(std::size_t channel, Control control);
    /// Every control and the transposition of the channel are as in the file.
    void Btn_ResetClick(std::size_t channel);
    /// The same for all channels and the song; the master goes back to where it was linked.
    void ResetAll();
    /// Every channel of the song gets the channel's value, each where it has an event in effect.
    void SameForAll(std::size_t channel, Control control);
    /// All other events of the control change as the one in effect has changed against the file: by
    /// the same factor, controls with a middle by the same difference. Nothing without such an
    /// event.
    void ScaleAll(std::size_t channel, Control control);
    /// The song sets the control only behind the channel's first note, or never, and has the
    /// channel.
    bool CanInsertAtStart(std::size_t channel, Control control) const;
    /// Puts an event with the shown value in front of the channel's first note, as a change of the
    /// song that can be taken back. False when there is nothing to do. Raises EMidiError like
    /// Session::Change.
    bool InsertAtStart(std::size_t channel, Control control, MessageHost& host);

    /// Sends what the sliders have left waiting; see LiveSender.
    void Flush() { live_.Flush(); }
    bool Waiting() const { return live_.Waiting(); }
    LiveSender& Live() { return live_; }

private:
    struct Stored {
        std::uint8_t value = 0;
        song::EventLink event;
    };

    void OnSongChanged(const session::ChangeKind& kind) override;
    void OnSaved() override;
    void OnPlaying(bool playing) override;
    void OnPlace() override { Renew(); }

    void Change(std::size_t channel, Control control, double position);
    void Renew();
    void ForgetSong();
    void MarkModified();
    song::EventLink EventInEffect(std::size_t channel, Control control) const;
    bool Current() const;
    bool AtStart() const;
    LampResult Press(std::size_t channel) const;
    void SetMuted(std::size_t channel, bool on);
    void SetSolo(std::size_t channel, bool on);
    bool TransposeAsUser(const Transposition& wanted);
    bool Transpose(const Transposition& wanted);
    void RestoreFile(std::size_t channel, Control control);
    std::uint32_t FindDrums() const;
    Stored& At(std::size_t channel, Control control) {
        return stored_.at(channel).at(IndexOf(control));
    }
    const Stored& At(std::size_t channel, Control control) const {
        return stored_.at(channel).at(IndexOf(control));
    }

    session::Session& session_;
    LiveSender live_;
    ControllerIndex index_;
    std::array<std::array<Stored, kControls>, song::kMidiChannels> stored_{};
    MasterLink link_;
    std::uint8_t master_ = UsualValue(Control::Volume);
    std::uint8_t masterAtLink_ = UsualValue(Control::Volume);
    Transposition transposition_;
    std::array<bool, song::kMidiChannels> muted_{};
    std::array<bool, song::kMidiChannels> solo_{};
    std::uint64_t revision_ = 0;
    std::size_t currentChannel_ = 0;
    bool enabled_ = false;
};

} // namespace tracksmith::mixer
