#pragma once

#include <array>
#include <functional>

#include "base/text.h"
#include <QTimer>
#include <QWidget>

#include "mixer/forms/channel_strip.h"
#include "mixer/forms/shown_voice.h"
#include "mixer/mixer.h"

namespace tracksmith::forms {

class MasterStrip;

/// The sixteen strips and the master. Where the width does not suffice the strips scroll sideways,
/// the master stays.
class StripsView : public QWidget {
    Q_OBJECT

public:
    /// `mixer` must outlive the view.
    explicit StripsView(mixer::Mixer& mixer, QWidget* parent = nullptr);

    /// Names the voice of a channel (0-15).
    using VoiceName = std::function<ShownVoice(int channel)>;

    /// Shows another song, or another structure of it.
    void ShowSong(const VoiceName& voiceName);
    /// Shows the voices by other names.
    void ShowVoices(const VoiceName& voiceName);
    /// Shows another voice of one channel (0-15).
    void ShowVoice(int channel, const ShownVoice& voice) { StripOf(channel).ShowVoice(voice); }
    /// The next frame of the display.
    void ShowFrame();
    /// Shows what the mixer says now.
    void ShowState();
    void SetPage(StripPage page);
    /// Brings a channel out in its strip; none for -1.
    void SetBroughtOut(int channel);
    void Retranslate(Language language);

    /// Gives the keyboard to a used channel (0-15).
    void FocusChannel(int channel);

signals:
    void VoicePressed(int channel);
    /// The channel (0-15) to be brought out in the overview, -1 for none.
    void ChannelChosen(int channel);
    void InsertWanted(int channel, mixer::Control control);
    /// The song cannot be changed now, since a port hangs.
    void Refused();

private:
    void Connect(ChannelStrip& strip);
    void AddKeys();
    void Enter(int channel);
    void GoToNeighbour(int from, int step);
    void ShowMenu(int channel, mixer::Control control, const QPoint& at);
    void OfferInserting(int channel, mixer::Control control);
    void TakeChange();
    ChannelStrip& StripOf(int channel) const { return *strips_[static_cast<std::size_t>(channel)]; }

    mixer::Mixer& mixer_;
    Language language_ = Language::English;
    std::array<ChannelStrip*, song::kMidiChannels> strips_{};
    MasterStrip* master_;
    QTimer flush_;
    /// Inserting is offered once, then only by the menu.
    bool offered_ = false;
};

} // namespace tracksmith::forms
