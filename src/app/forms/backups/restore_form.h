#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "base/text.h"
#include <QDialog>
#include <QPointer>

#include "app/backups/backup_folder.h"
#include "app/forms/changes/background_comparison.h"

class QCheckBox;
class QLabel;
class QPushButton;
class QTableWidget;
class QVBoxLayout;

namespace tracksmith::forms {

class SessionSignals;

/// When a backup was written, as the language writes dates.
QString BackupDate(const backups::Backup& backup, Language language);

/// What the window of the backups needs from the main window.
struct RestoreActions {
    /// Loads a backup; false when the user or a fault kept the song, which has been shown.
    std::function<bool(const backups::Backup&)> restore;
    /// The state and what it is compared with: the open song, else its own file. Empty where there
    /// is none of them.
    std::function<std::optional<diff::FilePair>(const backups::Backup&)> files;
    /// Both must outlive the window.
    BackgroundComparison& comparison;
    SessionSignals& session;
};

/// The list of all backups with date, song, size and the song's own file; what differs in the
/// chosen one, which can be heard in place of the open song. Its object name is "Dlg_Restore"; it
/// deletes itself.
class RestoreForm : public QDialog {
    Q_OBJECT

public:
    /// `own` is the file of the song in memory, empty when it has none; of it alone the list shows
    /// the backups at first, if there are any.
    RestoreForm(backups::BackupList list, std::filesystem::path own, RestoreActions actions,
                Language language, QWidget* parent);
    ~RestoreForm() override;

private:
    void BuildTable();
    void BuildChosen(QVBoxLayout& column);
    void BuildFooter(QVBoxLayout& column);
    void ShowRows();
    void AddRow(const backups::Backup& backup);
    void RestoreChosen();
    void ShowChosen();
    void TakeComparison(const std::shared_ptr<const ComparedSongs>& compared);
    void Listen();
    void EndListening();
    void ShowListening();
    const backups::Backup* Chosen() const;
    QString Say(const Text& text) const;

    backups::BackupList list_;
    std::filesystem::path own_;
    RestoreActions actions_;
    Language language_;
    std::vector<std::size_t> shown_; // the backups in the table
    QTableWidget* table_ = nullptr;
    QCheckBox* onlyThis_ = nullptr;
    QLabel* state_ = nullptr;
    QPushButton* restore_ = nullptr;
    QLabel* differs_ = nullptr;
    QPushButton* listen_ = nullptr;
    std::shared_ptr<session::OtherSong> heard_; // the chosen one, to be heard
    QPointer<SessionSignals> session_;          // may end before the window
};

} // namespace tracksmith::forms
