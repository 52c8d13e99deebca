#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "base/text.h"
#include <QWidget>

#include "app/forms/ports/connection_tools.h"
#include "instruments/forms/instrument_list.h"
#include "player/output_ports.h"

class QBoxLayout;
class QCheckBox;
class QLabel;
class QListWidget;
class QPushButton;
class QVBoxLayout;

namespace tracksmith::forms {

class AskPanel;
class KeyTest;

/// What the user has answered on the start page; each may be left out.
struct StartAnswers {
    /// Name in the catalogue.
    std::string instrument;
    /// Product name.
    std::string output;
    /// The song; the demo song without one.
    std::filesystem::path song;
    /// The page is wanted at the next start, too.
    bool again = false;
};

/// What the start page asks the window around it for.
struct StartAround {
    InstrumentList::Remark remark;
    std::function<std::vector<player::OutputDevice>()> outputs;
    std::function<std::string()> input;
    ConnectionTools connection;
    /// Lets the user choose a file; empty for none.
    std::function<std::filesystem::path()> chooseSong;
    std::vector<std::filesystem::path> recent;
};

/// The page that the window shows at the first start: which instrument, where it is connected,
/// which song. Nothing is stored before the user accepts. Made anew for another language.
class StartPage : public QWidget {
    Q_OBJECT

public:
    StartPage(StartAround around, const StartAnswers& answers, Language language,
              QWidget* parent = nullptr);

    StartAnswers Answers() const;
    /// Shows the outputs and their states anew.
    void ShowOutputs();

signals:
    /// The answers hold.
    void Accepted();
    void Skipped();
    void LanguageChosen(Language language);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void BuildHeader(QVBoxLayout& column);
    QVBoxLayout* NewColumn(int number, const Text& title, const Text& purpose);
    void BuildInstrument(QVBoxLayout& column, const std::string& chosen);
    void BuildConnection(QVBoxLayout& column, const std::string& chosen);
    void BuildSong(QVBoxLayout& column, const std::filesystem::path& chosen);
    void BuildFooter(QVBoxLayout& column, bool again);
    void AddSong(const std::filesystem::path& file);
    void ChooseSong();
    void ShowOutcome();
    QString Say(const Text& text) const;

    StartAround around_;
    Language language_;
    QBoxLayout* columns_ = nullptr;
    InstrumentList* instruments_ = nullptr;
    QListWidget* outputs_ = nullptr;
    AskPanel* asking_ = nullptr;
    KeyTest* keys_ = nullptr;
    QListWidget* songs_ = nullptr;
    QLabel* outcome_ = nullptr;
    QCheckBox* again_ = nullptr;
    QPushButton* accept_ = nullptr;
    std::string wantedOutput_;
};

} // namespace tracksmith::forms
