#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <vector>

#include "base/text.h"
#include <QDialog>

#include "app/backups/backup_folder.h"

class QCheckBox;
class QLabel;
class QPushButton;
class QTableWidget;
class QVBoxLayout;

namespace tracksmith::forms {

/// When a backup was written, as the language writes dates.
QString BackupDate(const backups::Backup& backup, Language language);

/// What the window of the backups needs from the main window.
struct RestoreActions {
    /// Loads a backup; false when the user or a fault kept the song, which has been shown.
    std::function<bool(const backups::Backup&)> restore;
};

/// The list of all backups with date, song, size and the song's own file. Its object name is
/// "Dlg_Restore"; it deletes itself.
class RestoreForm : public QDialog {
    Q_OBJECT

public:
    /// `own` is the file of the song in memory, empty when it has none; of it alone the list shows
    /// the backups at first, if there are any.
    RestoreForm(backups::BackupList list, std::filesystem::path own, RestoreActions actions,
                Language language, QWidget* parent);

private:
    void BuildTable();
    void BuildFooter(QVBoxLayout& column);
    void ShowRows();
    void AddRow(const backups::Backup& backup);
    void RestoreChosen();
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
};

} // namespace tracksmith::forms
