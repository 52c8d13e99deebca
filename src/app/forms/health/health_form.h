#pragma once

#include <functional>
#include <vector>

#include "base/text.h"
#include <QDialog>

#include "app/health/check_health.h"
#include "app/session/session.h"

class QLabel;
class QPushButton;
class QTableWidget;
class QVBoxLayout;

namespace tracksmith::forms {

class SessionSignals;

/// What the window about a song's health needs from the main window.
struct HealthActions {
    /// Checks the song in memory.
    std::function<health::HealthReport()> check;
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
    void BuildTable();
    void BuildFooter(QVBoxLayout& column);
    void Refresh();
    void ShowRows();
    void AddRow(std::size_t index);
    void ShowDetail();
    void ShowPlace();
    void StepPlace(int step);
    void GoThere();
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
    std::vector<QPushButton*> filters_;
    QTableWidget* table_ = nullptr;
    QLabel* title_ = nullptr;
    QLabel* explanation_ = nullptr;
    QLabel* change_ = nullptr;
    QLabel* placeText_ = nullptr;
    QLabel* safe_ = nullptr;
    QPushButton* repair_ = nullptr;
    QPushButton* goThere_ = nullptr;
    QPushButton* previous_ = nullptr;
    QPushButton* next_ = nullptr;
    QPushButton* takeBack_ = nullptr;
    QPushButton* repairAll_ = nullptr;
    QPushButton* noteReport_ = nullptr;
};

} // namespace tracksmith::forms
