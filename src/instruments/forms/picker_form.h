#pragma once

#include <functional>
#include <memory>

#include "base/text.h"
#include <QDialog>

#include "app/settings/settings_store.h"
#include "instruments/picker/drum_notes.h"
#include "instruments/picker/voice_picker.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;
class QTimer;
class QVBoxLayout;

namespace tracksmith::forms {

class PickerGroups;
class PickerSoundDelegate;
class PickerSounds;
class PickerVoiceCard;

/// The window in which a voice is picked for a channel: families, categories and voices with a
/// search over all of them, the old voice beside the new one, a test note. Until Accept the song
/// stays as it is. Object name "PickerForm"; it deletes itself.
class TPickerForm : public QDialog {
    Q_OBJECT

public:
    /// What the window asks of the program around it.
    struct Program {
        /// What its picker asks.
        instruments::PickerHost& host;
        /// Name of the instrument, and how many notes the channel has.
        QString instrument;
        std::int64_t notes = 0;
        /// Keeps size and place of the window.
        settings::SettingsStore& store;
        /// Where the song selects the voice, in words, by the places of the task.
        QStringList places;
        std::function<void()> playStop;
        std::function<bool()> playing;
        instruments::KitNotes kitNotes;
    };

    /// `tables` and what `program` refers to must outlive the window.
    TPickerForm(const instruments::VoiceTables& tables, instruments::PickerTask task,
                std::unique_ptr<instruments::VoiceMemory> memory, Program program,
                Language language, QWidget* parent);
    ~TPickerForm() override;

    /// Where the song selects the voice: the picker's logic.
    const instruments::VoicePicker& Picker() const { return picker_; }

    void done(int result) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Build();
    void AddHeader(QVBoxLayout& column);
    void AddLists(QVBoxLayout& column);
    void SetUpSounds();
    void AddComparison(QVBoxLayout& column);
    QWidget* NewSwitch();
    void AddControls(QVBoxLayout& column);
    void AddTestNotes();
    void AddPlaces();
    void AddFooter(QVBoxLayout& column);
    void AddKeys();
    QPushButton* NewButton(const char* objectName, const Text& text);

    void ShowFamilies();
    void ShowCategories();
    void ShowSounds();
    void ShowVoices();
    void ShowPlaying();
    void ShowChosenRow();
    void Search(const QString& words);
    void ChooseSound(int row);
    void ToggleFavourite();
    void SaveToRevoicer();
    void SwitchOldNew();
    void StepTestNote();
    QString NameOfFamily(const instruments::FamilyRow& row) const;
    QString Say(const Text& text) const;

    std::unique_ptr<instruments::VoiceMemory> memory_;
    instruments::VoicePicker picker_;
    Program program_;
    Language language_;
    QLineEdit* search_;
    QLabel* hits_;
    PickerGroups* families_;
    PickerGroups* categories_;
    QTableView* table_;
    PickerSounds* sounds_;
    PickerSoundDelegate* delegate_;
    QLabel* nothing_;
    PickerVoiceCard* oldVoice_;
    PickerVoiceCard* newVoice_;
    QPushButton* old_ = nullptr;
    QPushButton* new_ = nullptr;
    QPushButton* play_ = nullptr;
    QCheckBox* solo_;
    QCheckBox* noteOnSelection_;
    QComboBox* testNote_;
    QComboBox* places_;
    QTimer* noteTimer_;
    QTimer* playTimer_;
    bool accepting_ = false;
};

} // namespace tracksmith::forms
