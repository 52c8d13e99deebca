#pragma once

#include <functional>
#include <memory>
#include <string>

#include "base/text.h"
#include <QWidget>

#include "app/ask_words.h"
#include "app/instrument_asker.h"

class QHBoxLayout;
class QLabel;
class QPushButton;
class QTimer;

namespace tracksmith::forms {

class Panel;

/// The button that asks which instrument is connected, and below it what came of it, with a button
/// to choose what has answered. Nothing waits; the answer appears when it comes.
class AskPanel : public QWidget {
    Q_OBJECT

public:
    /// What is asked of the window around it, always anew.
    struct Around {
        /// Product names of the chosen ports; the input is empty for none.
        std::function<std::string()> output;
        std::function<std::string()> input;
        /// Name of the instrument that songs are prepared for; empty for none.
        std::function<std::string()> chosen;
    };

    /// The asker may end before the panel.
    AskPanel(const std::shared_ptr<app::InstrumentAsker>& asker, Around around, Language language,
             QWidget* parent = nullptr);
    /// Gives up a question that is under way.
    ~AskPanel() override;

    /// Puts another button beside that which asks.
    void AddBeside(QPushButton* button);
    /// Gives up a question that is under way and shows no result any more.
    void Clear();

signals:
    void InstrumentChosen(const QString& name);

private:
    void BuildResult();
    void Ask();
    void Look();
    void ShowResult();
    void ShowDetail(const QString& text);
    void Choose();
    QString Say(const Text& text) const;

    std::weak_ptr<app::InstrumentAsker> asker_;
    Around around_;
    Language language_;
    QTimer* timer_;
    QPushButton* ask_;
    QHBoxLayout* buttons_;
    Panel* result_;
    QLabel* headline_;
    QLabel* detail_;
    QPushButton* choose_;
    const instruments::Instrument* offer_ = nullptr;
};

} // namespace tracksmith::forms
