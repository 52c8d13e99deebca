#pragma once

#include <filesystem>
#include <functional>

#include "base/text.h"
#include <QDialog>

#include "app/forms/ports/sound_settings.h"
#include "app/settings/settings_store.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QSlider;
class QSpinBox;

namespace tracksmith::forms {

class FileChooser;
class SessionSignals;

/// The window for MIDI input and the built-in instrument. What is set takes effect at once. Its
/// object name is "Dlg_MidiPorts".
class PortsDialog : public QDialog {
    Q_OBJECT

public:
    /// All must outlive the dialog; `synth` may be null.
    PortsDialog(SessionSignals& session, SoundSettings& sound, FileChooser& chooser,
                Language language, QWidget* parent = nullptr);

private:
    QWidget* BuildPorts();
    QWidget* BuildSynth();
    void ShowInputs();
    void ShowSoundfont();
    void ChooseSoundfont();
    void ShowTrouble();
    QString Say(const Text& text) const;

    SessionSignals& session_;
    SoundSettings& sound_;
    FileChooser& chooser_;
    Language language_;
    QComboBox* output_;
    QComboBox* input_;
    QCheckBox* thru_;
    QLabel* soundfont_;
    QLabel* trouble_;
};

} // namespace tracksmith::forms
