#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "base/text.h"
#include <QDialog>

#include "instruments/output_assignment.h"
#include "instruments/voices/voice_lookup.h"

class QComboBox;
class QLabel;
class QLineEdit;

namespace tracksmith::forms {

class ListPanel;

/// The window of voices: those of the instrument that a channel plays to, by family, searchable,
/// with importing and exporting of voice lists. Object name "PatchesForm"; it deletes itself.
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

    /// Shows nothing yet. `outputs` must outlive the window; the first of `folders` holds the
    /// user's own tables.
    TPatchesForm(const instruments::OutputTable& outputs, Options options,
                 std::vector<std::filesystem::path> folders, Files files, Language language,
                 QWidget* parent);
    ~TPatchesForm() override;

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
    void Reload();
    void ShowFamilies();
    void ShowVoices();
    void Import();
    void Export();
    const instruments::Instrument& Instrument() const;
    QString Say(const Text& text) const;

    const instruments::OutputTable& outputs_;
    Options optionsOf_;
    std::vector<std::filesystem::path> folders_;
    Files files_;
    Language language_;
    instruments::InstrumentId instrument_ = instruments::kGmSoundset;
    instruments::LookupOptions options_;
    std::unique_ptr<instruments::VoiceTables> tables_;
    QComboBox* choice_;
    QComboBox* family_;
    QLineEdit* search_;
    ListPanel* list_;
    QLabel* message_;
};

} // namespace tracksmith::forms
