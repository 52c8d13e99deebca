#pragma once

#include <array>
#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

#include "base/text.h"
#include <QDialog>

#include "app/revoicer_desk.h"

class QHBoxLayout;
class QLabel;
class QPushButton;
class QTableWidget;
class QVBoxLayout;

namespace tracksmith::forms {

class SessionSignals;

/// What the auto revoicer's window needs from the main window.
struct AutoRevoicerActions {
    /// Applies the table to the song, and adds bank selects; what goes wrong has been shown when
    /// they return.
    std::function<void(app::RevoicerDesk&)> apply;
    std::function<void(app::RevoicerDesk&)> addBanks;
    /// Opens the window that applies the table to a folder.
    std::function<void()> applyToFolder;
    /// Tells that something did not work.
    std::function<void(const QString&)> tell;
    std::function<void()> playStop;
    /// Lets a channel sound with a voice, or as the song says; false: not now.
    std::function<bool(std::size_t, std::optional<instruments::VoiceNumbers>)> tryVoice;
    /// Ask for a file of entries; empty when the user gave up.
    std::function<std::optional<std::filesystem::path>(QWidget*)> chooseOpen;
    std::function<std::optional<std::filesystem::path>(QWidget*, const std::filesystem::path&)>
        chooseSave;
};

/// The auto revoicer: the table of the first output's instrument, the voices of the song, what they
/// become, and how that sounds. Follows the song; stays open beside the main window. Its object
/// name is "Dlg_AutoRevoicer"; it deletes itself.
class TAutoRevoicerForm : public QDialog {
    Q_OBJECT

public:
    /// `session` must outlive the window.
    TAutoRevoicerForm(SessionSignals& session, app::RevoicerDesk desk, AutoRevoicerActions actions,
                      Language language, QWidget* parent);
    ~TAutoRevoicerForm() override;

    /// Reads the table of the first output's instrument into the grid.
    void LoadRevoiceData();
    /// Applies the table to the song.
    void Btn_RevoiceClick();
    /// Deletes the entry of the current row.
    void Btn_DeleteClick();
    void Btn_CloseClick() { close(); }

    /// Reads a file of entries into the table; what goes wrong is told.
    void ImportFile(const std::filesystem::path& file);
    /// Writes the entries into a file.
    void ExportFile(const std::filesystem::path& file);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    using Row = app::RevoicerDesk::Row;

    void BuildHeader(QVBoxLayout& column);
    void BuildTools(QVBoxLayout& column);
    void BuildGrid();
    void BuildListening(QVBoxLayout& column);
    void BuildFooter(QVBoxLayout& column);
    QPushButton* AddButton(QHBoxLayout& row, const char* name, const Text& text,
                           void (TAutoRevoicerForm::*click)());
    void ShowRows();
    void PutRow(int row);
    void ShowState();
    QString CountsText() const;
    void Suggest();
    void ShowSuggestions();
    void ToggleTick();
    void TickChanged(int row, bool on);
    void AskImport();
    void AskExport();
    void AddBanks();
    void ApplyToFolder() { actions_.applyToFolder(); }
    void Play() { actions_.playStop(); }
    void ListenToOld() { ListenTo(false); }
    void ListenToNew() { ListenTo(true); }
    void ListenTo(bool newVoices);
    bool UpdateTrial();
    void EndTrial();
    void TellIfNotStored(bool stored);
    const Row* Current() const;
    QString Say(const Text& text) const;

    SessionSignals& signals_;
    app::RevoicerDesk desk_;
    AutoRevoicerActions actions_;
    Language language_;
    std::vector<Row> rows_;
    bool newVoices_ = false;
    std::array<std::optional<instruments::VoiceNumbers>, 16> tried_;
    QPushButton* thisSong_ = nullptr;
    QPushButton* wholeTable_ = nullptr;
    QPushButton* suggest_ = nullptr;
    QPushButton* delete_ = nullptr;
    QPushButton* addBanks_ = nullptr;
    QPushButton* apply_ = nullptr;
    QPushButton* old_ = nullptr;
    QPushButton* new_ = nullptr;
    QPushButton* play_ = nullptr;
    QTableWidget* grid_ = nullptr;
    QLabel* title_ = nullptr;
    QLabel* counts_ = nullptr;
};

} // namespace tracksmith::forms
