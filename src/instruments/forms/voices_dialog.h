#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

#include "base/text.h"
#include <QDialog>

#include "instruments/catalogue.h"
#include "instruments/voices/voice_lookup.h"

class QLabel;
class QLineEdit;

namespace tracksmith::forms {

class ListPanel;

/// The voices of one instrument, searchable, with importing and exporting of voice lists. Object
/// name "Dlg_Voices"; it deletes itself.
class VoicesDialog : public QDialog {
    Q_OBJECT

public:
    /// Asks for a file to open, or to save with the proposed name; empty when the user gave up.
    struct Files {
        std::function<std::optional<std::filesystem::path>(QWidget*)> open;
        std::function<std::optional<std::filesystem::path>(QWidget*, const std::filesystem::path&)>
            save;
    };

    /// Shows the tables of `folders`, of which the first is the user's own.
    VoicesDialog(const instruments::Instrument& instrument,
                 const instruments::LookupOptions& options,
                 std::vector<std::filesystem::path> folders, Files files, Language language,
                 QWidget* parent);
    ~VoicesDialog() override;

signals:
    /// The instrument has another table now.
    void TableChanged();

private:
    void AddSearch();
    void AddFileButtons();
    void Reload();
    void ShowVoices();
    void Import();
    void Export();
    QString Say(const Text& text) const;

    const instruments::Instrument& instrument_;
    instruments::LookupOptions options_;
    std::vector<std::filesystem::path> folders_;
    Files files_;
    Language language_;
    std::unique_ptr<instruments::VoiceTables> tables_;
    QLineEdit* search_;
    ListPanel* list_;
    QLabel* message_;
};

} // namespace tracksmith::forms
