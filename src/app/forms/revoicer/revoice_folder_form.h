#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>

#include "base/text.h"
#include <QDialog>

#include "app/forms/revoicer/folder_worker.h"

class QCheckBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QProgressBar;
class QPushButton;
class QVBoxLayout;

namespace tracksmith::forms {

/// What the window for revoicing a folder needs from the main window.
struct RevoiceFolderActions {
    /// The table and how songs are read, as they are now; without folders.
    std::function<app::FolderOrder()> order;
    /// Asks for a folder, with the dialog's title; empty when the user gave up.
    std::function<std::optional<std::filesystem::path>(QWidget*, const QString&)> chooseFolder;
    /// Asks a question with Yes and No.
    std::function<bool(const QString&)> ask;
    /// Must outlive the window.
    const instruments::VoiceTables& tables;
};

/// Applies the auto revoicer's table to the songs of a folder; the results go into another folder.
/// Works beside the rest of the program. Its object name is "Dlg_RevoiceFolder"; it deletes itself.
class RevoiceFolderForm : public QDialog {
    Q_OBJECT

public:
    RevoiceFolderForm(RevoiceFolderActions actions, Language language, QWidget* parent);

    /// The songs are being worked on.
    bool Busy() const { return worker_.Busy(); }
    /// Ends after the song that is worked on.
    void Cancel();

    /// Takes folder and target, as if they had been chosen.
    void SetFolders(const QString& source, const QString& target);
    QString Source() const;
    QString Target() const;

protected:
    void closeEvent(QCloseEvent* event) override;
    void reject() override;

private:
    QLineEdit* AddFolder(QGridLayout& grid, int row, const Text& label, const char* names);
    void BuildFolders(QVBoxLayout& column);
    void BuildResult(QVBoxLayout& column);
    void BuildFooter(QVBoxLayout& column);
    QPushButton* AddButton(const char* name, const Text& text);
    void ChooseSource();
    void ChooseTarget();
    void ProposeTarget();
    void ShowInstrument(const app::FolderOrder& order);
    void Start();
    void TakeFound(std::size_t songs, std::size_t existing);
    void TakeResult(const std::optional<app::FolderResult>& result);
    void ShowRemarks(const app::FolderResult& result);
    void ShowState();
    void Tell(const QString& words);
    QString FaultWords(const app::FolderOrder& order) const;
    QString ResultWords(const app::FolderResult& result) const;
    QString Say(const Text& text) const;

    RevoiceFolderActions actions_;
    Language language_;
    QString instrument_;
    QString proposed_;
    FolderWorker worker_;
    QLabel* title_ = nullptr;
    QLineEdit* source_ = nullptr;
    QLineEdit* target_ = nullptr;
    QPushButton* chooseSource_ = nullptr;
    QPushButton* chooseTarget_ = nullptr;
    QCheckBox* addBanks_ = nullptr;
    QProgressBar* progress_ = nullptr;
    QLabel* state_ = nullptr;
    QListWidget* remarks_ = nullptr;
    QPushButton* start_ = nullptr;
    QPushButton* cancel_ = nullptr;
};

} // namespace tracksmith::forms
