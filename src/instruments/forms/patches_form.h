#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>

#include "base/message_host.h"
#include "base/text.h"
#include <QDialog>

#include "instruments/output_assignment.h"
#include "instruments/voices/voice_lookup.h"

class QComboBox;
class QLabel;
class QLineEdit;

namespace tracksmith::forms {

class ListPanel;

/// The window of voices: those of the instrument that a channel plays to, own ones first, by
/// family, searchable, with importing and exporting of voice lists. Object name "PatchesForm"; it
/// deletes itself.
class TPatchesForm : public QDialog {
    Q_OBJECT

public:
    /// Asks for a file to open, or to save with the proposed name; empty when the user gave up.
    struct Files {
        std::function<std::optional<std::filesystem::path>(QWidget*)> open;
        std::function<std::optional<std::filesystem::path>(QWidget*, const std::filesystem::path&)>
            save;
    };
    /// The user's choices about the voices of an instrument.
    using Options = std::function<instruments::LookupOptions(instruments::InstrumentId)>;

    /// What a channel (0-15) plays at present, in words; empty when nothing is known.
    using Playing = std::function<QString(std::size_t)>;

    /// What the window asks of the program around it.
    struct Program {
        Options options;
        Playing playing;
        Files files;
    };

    /// Shows nothing yet. `outputs`, `tables` and `host`, which asks before a table of the user's
    /// is replaced, must outlive the window.
    TPatchesForm(const instruments::OutputTable& outputs, instruments::VoiceTables& tables,
                 Program program, MessageHost& host, QWidget* parent);

    /// Shows the voices of the instrument of `channel` (0-15): its own tables and what it inherits,
    /// those of General MIDI where it has none.
    void DisplayInstrumentPatches(std::size_t channel);

    /// Shows the voices of any instrument.
    void DisplayInstrument(instruments::InstrumentId instrument);

signals:
    /// The instrument has another table now.
    void TableChanged();

private:
    void AddInstruments();
    void AddSearch();
    void AddFileButtons();
    void ShowFamilies();
    void ShowProblems();
    void ShowVoices();
    void Import();
    void TakeImport(const std::filesystem::path& file);
    void Export();
    const instruments::Instrument& Instrument() const;
    QString Say(const Text& text) const;

    const instruments::OutputTable& outputs_;
    instruments::VoiceTables& tables_;
    Program program_;
    MessageHost& host_;
    Language language_;
    instruments::InstrumentId instrument_ = instruments::kGmSoundset;
    instruments::LookupOptions options_;
    QComboBox* choice_;
    QComboBox* family_;
    QLineEdit* search_;
    QLabel* playingLine_;
    ListPanel* list_;
    QLabel* nothing_;
    QLabel* message_;
};

} // namespace tracksmith::forms
