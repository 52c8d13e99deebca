#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "base/text.h"
#include <QDialog>

#include "app/forms/changes/changes_model.h"
#include "app/session/transport.h"

class QCheckBox;
class QComboBox;
class QHBoxLayout;
class QLabel;
class QPushButton;
class QTreeView;
class QVBoxLayout;

namespace tracksmith::forms {

class ChangesWatch;
class ListeningRow;
class OverviewWidget;
class SessionSignals;
enum class FileKind;

/// What the window of the changes needs from the main window.
struct ChangesActions {
    /// Asks for a file to write to, and whether it may be overwritten; empty when the user gave up.
    std::function<std::optional<std::filesystem::path>(QWidget* window, FileKind kind)> chooseSave;
    /// Writes a file whole or not at all; false when a fault has been shown.
    std::function<bool(const std::filesystem::path& file, const std::string& text)> write;
    /// Names voices on the instruments that are chosen.
    diff::VoiceNamer voiceName;
    /// Names the tools that may have made a difference.
    std::function<std::string(const diff::Difference&)> doneBy;
    /// Shows what loading and preparing have done.
    std::function<void()> showLoading;
};

/// What has changed in the song since its file was loaded: a tree with filters, marks in an
/// overview, before and after to be heard. Its object name is "Dlg_WhatChanged"; it deletes itself.
class ChangesForm : public QDialog {
    Q_OBJECT

public:
    /// `session` and `watch`, which must be active, must outlive the window.
    ChangesForm(SessionSignals& session, ChangesWatch& watch, ChangesActions actions,
                Language language, QWidget* parent);
    ~ChangesForm() override;

    /// Switches between before and after.
    void Switch();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void BuildHeader(QVBoxLayout& column);
    void BuildFilters(QVBoxLayout& column);
    void BuildOverview(QVBoxLayout& column);
    void BuildListening(QVBoxLayout& column);
    void BuildTree();
    void BuildFooter(QVBoxLayout& column);
    void Connect();

    void ShowSong();
    void Refresh();
    void ShowChannels();
    void ShowRows();
    void ShowFlags();
    void ShowSummary();
    void ShowPlace();
    void ShowButtons();
    void Fit();
    void End();

    ChangesFilter Filter() const;
    const diff::Difference* Chosen() const;
    void GoThere();
    void ChooseAt(std::int32_t tick);
    void SetLoopHere(bool on);
    void Save(FileKind kind);
    QString Say(const Text& text) const;

    SessionSignals& session_;
    ChangesWatch& watch_;
    ChangesActions actions_;
    Language language_;
    ChangesModel* model_;
    std::vector<QPushButton*> kinds_;
    QLabel* song_ = nullptr;
    QComboBox* channel_ = nullptr;
    OverviewWidget* overview_ = nullptr;
    ListeningRow* listening_ = nullptr;
    QCheckBox* loopHere_ = nullptr;
    QTreeView* tree_ = nullptr;
    QLabel* summary_ = nullptr;
    QPushButton* saveText_ = nullptr;
    QPushButton* saveJson_ = nullptr;
    QPushButton* goThere_ = nullptr;
    /// The loop that the user had before the one at the chosen place.
    session::Transport::LoopRange formerLoop_;
};

} // namespace tracksmith::forms
