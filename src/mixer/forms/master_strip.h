#pragma once

#include <optional>

#include "base/text.h"
#include <QWidget>

#include "mixer/mixer.h"

class QLabel;
class QPushButton;

namespace tracksmith::forms {

class LevelMeter;
class TransposeBox;
class VolumeFader;

/// The strip at the right: master volume with its link, and what concerns all channels.
class MasterStrip : public QWidget {
    Q_OBJECT

public:
    /// `mixer` must outlive the strip.
    MasterStrip(mixer::Mixer& mixer, QWidget* parent);

    void ShowState();
    /// The level of this frame; nothing plays without one.
    void ShowLevel(std::optional<unsigned> level);
    void Retranslate(Language language);

signals:
    /// Something has changed that the channels' strips show.
    void Changed();
    /// The song cannot be changed now, since a port hangs.
    void Refused();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPushButton* NewButton(const char* objectName);
    void LayOut();
    void Connect();
    void ConnectButton(QPushButton* button, void (*action)(mixer::Mixer&));
    void Transpose(int semitones);

    mixer::Mixer& mixer_;
    Language language_ = Language::English;
    QLabel* title_;
    TransposeBox* transpose_;
    QPushButton* linked_;
    VolumeFader* volume_;
    LevelMeter* meter_;
    QPushButton* resetAll_;
    QPushButton* unmute_;
    QLabel* soloed_;
    QPushButton* soloOff_;
};

} // namespace tracksmith::forms
