#pragma once

#include "base/text.h"
#include <QDialog>

#include "app/forms/ports/connection_tools.h"
#include "app/forms/ports/sound_settings.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QSlider;
class QSpinBox;

namespace tracksmith::forms {

class AskPanel;
class FileChooser;
class KeyTest;
class SessionSignals;

/// The window for the MIDI ports, the question which instrument is connected, and the built-in
/// instrument. What is set takes effect at once. Its object name is "Dlg_MidiPorts".
class PortsDialog : public QDialog {
    Q_OBJECT

public:
    /// All must outlive the dialog, but not what `connection` holds.
    PortsDialog(SessionSignals& session, SoundSettings& sound, FileChooser& chooser,
                const ConnectionTools& connection, Language language, QWidget* parent = nullptr);

signals:
    /// The user wants songs to be prepared for the instrument of this name, which has answered.
    void InstrumentChosen(const QString& name);

private:
    QWidget* BuildPorts();
    QWidget* BuildSynth();
    void BuildAsking(const ConnectionTools& connection);
    void ShowInputs();
    void ShowSoundfont();
    void ChooseSoundfont();
    void ShowTrouble();
    QString Say(const Text& text) const;

    SessionSignals& session_;
    SoundSettings& sound_;
    FileChooser& chooser_;
    Language language_;
    AskPanel* asking_ = nullptr;
    KeyTest* keys_ = nullptr;
    QComboBox* output_;
    QComboBox* input_;
    QCheckBox* thru_;
    QLabel* soundfont_;
    QLabel* trouble_;
};

} // namespace tracksmith::forms
