#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "base/text.h"
#include <QDialog>

#include "app/health/check_health.h"
#include "app/health/note_figure.h"
#include "app/session/session.h"

class QComboBox;
class QHBoxLayout;
class QLabel;
class QPushButton;
class QScrollArea;
class QTableWidget;
class QVBoxLayout;

namespace tracksmith::forms {

class HealthWatch;
class NoteFigureView;
class OverviewWidget;
class SessionSignals;

/// What the window about a song's health needs from the main window.
struct HealthActions {
    /// What is wrong with the song in memory; must outlive the window.
    HealthWatch& watch;
    /// What the repair of a finding does to the notes around its place, which is given in ticks.
    std::function<health::NoteFigure(const health::Finding&, std::int32_t)> figure;
    /// Mends one finding; what goes wrong has been shown when it returns.
    std::function<void(const health::Finding&)> repair;
    /// Mends all that can be mended.
    std::function<void()> repairAll;
    /// Takes the last change of the whole song back.
    std::function<void()> takeBack;
    /// Reads the song again without making short notes longer.
    std::function<void()> takeBackLengthening;
    /// Writes and opens the report about note-ons and note-offs.
    std::function<void()> openReport;
};

/// What the checks found in the song, with severity, place, explanation and repair. Follows the
/// song; stays open beside the main window. Its object name is "Dlg_Health"; it deletes itself.
class HealthForm : public QDialog {
    Q_OBJECT

public:
    /// `session` must outlive the window; `instrument` is what the song is checked against, empty
    /// for none.
    HealthForm(SessionSignals& session, HealthActions actions, const QString& fileName,
               QString instrument, Language language, QWidget* parent);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void BuildHeader(QVBoxLayout& column, const QString& fileName);
    QWidget* BuildDetail();
    QWidget* BuildDetailArea();
    void FitDetail();
    void ShowColumns();
    void BuildFilters(QHBoxLayout& row);
    void BuildOverview(QVBoxLayout& column);
    void BuildTable();
    void BuildFooter(QVBoxLayout& column);
    void Refresh();
    void ShowSong();
    void ShowChannels();
    void ShowFlags();
    void ShowRows();
    bool IsShown(const health::Finding& finding) const;
    void AddRow(std::size_t index);
    void ShowDetail();
    void ShowPlace();
    void StepPlace(int step);
    void GoThere();
    QWidget* BuildFigures();
    void ShowFigures();
    void Listen();
    void WatchListening();
    void EndListening();
    void ShowListening();
    void RepairFinding(std::size_t index);
    void RepairAll();
    void ShowButtons();
    const health::Finding* Chosen() const;
    QString Say(const Text& text) const;

    SessionSignals& session_;
    HealthActions actions_;
    QString instrument_;
    Language language_;
    health::HealthReport report_;
    std::vector<std::size_t> shown_; // the findings in the table
    std::size_t place_ = 0;
    /// Where what is listened to ends, in ticks; none while nobody listens.
    std::optional<std::int32_t> listenEnd_;
    std::vector<QPushButton*> filters_;
    QComboBox* channel_ = nullptr;
    OverviewWidget* overview_ = nullptr;
    QTableWidget* table_ = nullptr;
    QLabel* title_ = nullptr;
    QLabel* explanation_ = nullptr;
    QLabel* change_ = nullptr;
    QScrollArea* detail_ = nullptr;
    QWidget* figures_ = nullptr;
    NoteFigureView* now_ = nullptr;
    NoteFigureView* after_ = nullptr;
    QLabel* placeText_ = nullptr;
    QLabel* safe_ = nullptr;
    QPushButton* repair_ = nullptr;
    QPushButton* goThere_ = nullptr;
    QPushButton* listen_ = nullptr;
    QPushButton* previous_ = nullptr;
    QPushButton* next_ = nullptr;
    QPushButton* takeBack_ = nullptr;
    QPushButton* repairAll_ = nullptr;
    QPushButton* noteReport_ = nullptr;
};

} // namespace tracksmith::forms
