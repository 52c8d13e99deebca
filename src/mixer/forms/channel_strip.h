#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <vector>

#include "base/text.h"
#include <QAbstractButton>

#include "mixer/controls.h"
#include "mixer/forms/shown_voice.h"
#include "mixer/mixer.h"

class QVBoxLayout;

namespace tracksmith::forms {

class BarSlider;
class ControlSlider;
class LampButton;
class LevelMeter;
class TransposeBox;
class VoiceButton;
class VolumeFader;

/// What the strips show below the faders: pan, expression, reverb and chorus, or the sound
/// controllers.
enum class StripPage { Mix, Sound };

/// The number of a channel; pressing it brings the channel out in the overview.
class ChannelNumber : public QAbstractButton {
    Q_OBJECT

public:
    ChannelNumber(int channel, QWidget* parent);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// The strip of one channel: voice, volume with level meter, further controls, lamps. Shows what
/// the mixer says, and tells it what the user does.
class ChannelStrip : public QWidget {
    Q_OBJECT

public:
    /// `mixer` must outlive the strip; `channel` is 0-15.
    ChannelStrip(mixer::Mixer& mixer, int channel, QWidget* parent);

    int Channel() const { return channel_; }
    bool Used() const { return mixer_.Used(Index()); }

    /// Another song, or another structure of it.
    void ShowSong();
    /// What may change at any time: values, lamps, transposition.
    void ShowState();
    /// The level of this frame; nothing plays without one.
    void ShowLevel(std::optional<unsigned> level);
    void ShowVoice(const ShownVoice& voice);
    void SetPage(StripPage page);
    /// The strip that the user works on is framed and takes the Tab key.
    void SetCurrent(bool current);
    void SetBroughtOut(bool on);
    void Retranslate(Language language);

    ControlSlider* SliderOf(mixer::Control control) const {
        return controls_[mixer::IndexOf(control)];
    }

    /// Gives the keyboard to the control in this place of the strip, to the fader for one that
    /// cannot take it.
    void FocusPlace(std::size_t place);
    /// The place of the control that has the keyboard; that of the fader without any.
    std::size_t FocusedPlace() const;

signals:
    /// A control of the strip has got the keyboard.
    void Entered(int channel);
    /// The left or right arrow key was pressed.
    void NeighbourWanted(int step);
    void VoicePressed(int channel);
    /// The channel is to be brought out in the overview, or no longer.
    void NumberPressed(int channel, bool on);
    void MenuWanted(int channel, mixer::Control control, const QPoint& at);
    void HollowMoved(int channel, mixer::Control control);
    /// Something has changed that other strips may show too.
    void Changed();
    /// The song cannot be changed now, since a port hangs.
    void Refused();

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void Transpose(int semitones);

    std::size_t Index() const { return static_cast<std::size_t>(channel_); }
    void Build();
    void BuildControls(QVBoxLayout& column);
    void Connect(ControlSlider& slider, mixer::Control control);
    void PressMute(bool ctrl);
    void PressSolo(bool ctrl);
    void ShowChanges();
    void ShowNames();
    void NamePart(QWidget& part, const QString& name, const QString& hint);
    std::vector<QWidget*> Parts() const;

    mixer::Mixer& mixer_;
    int channel_;
    Language language_ = Language::English;
    ShownVoice voice_;
    ChannelNumber* number_;
    TransposeBox* transpose_;
    VoiceButton* voiceButton_;
    VolumeFader* volume_;
    LevelMeter* meter_;
    std::array<ControlSlider*, mixer::kControls> controls_{};
    LampButton* mute_;
    LampButton* solo_;
    bool current_ = false;
    bool silenced_ = false;
};

} // namespace tracksmith::forms
