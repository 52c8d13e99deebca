#include "app/forms/start/start_page.h"

#include <algorithm>
#include <utility>

#include "base/display_text.h"
#include "base/forms/dialog_frame.h"
#include "base/forms/labels.h"
#include "base/forms/panel.h"
#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QCheckBox>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QShortcut>
#include <QVBoxLayout>

#include "app/forms/ports/ask_panel.h"
#include "app/forms/ports/key_test.h"
#include "app/forms/ports/port_items.h"
#include "app/forms/start/texts.h"
#include "instruments/catalogue.h"

namespace tracksmith::forms {
namespace {

QLabel* NewHint(const char* objectName, const QString& text, QWidget* parent) {
    QLabel* hint = NewLabel(objectName, parent);
    hint->setFont(ScaledFont(hint->font(), 0.9));
    hint->setForegroundRole(QPalette::PlaceholderText);
    hint->setWordWrap(true);
    hint->setText(text);
    return hint;
}

// A list in which exactly one row is chosen.
QListWidget* NewChoice(const char* objectName, const QString& name) {
    auto* list = new QListWidget;
    list->setObjectName(QLatin1String(objectName));
    list->setAccessibleName(name);
    list->setSpacing(2);
    list->setTextElideMode(Qt::ElideMiddle);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    return list;
}

QListWidgetItem* AddRow(QListWidget& list, const QString& text, const QString& data) {
    auto* item = new QListWidgetItem(text, &list);
    item->setData(Qt::UserRole, data);
    item->setSizeHint({0, list.fontMetrics().height() * 2});
    return item;
}

} // namespace

StartPage::StartPage(StartAround around, const StartAnswers& answers, Language language,
                     QWidget* parent)
    : QWidget(parent),
      around_(std::move(around)),
      language_(language),
      wantedOutput_(answers.output) {
    setObjectName(QStringLiteral("StartPage"));
    AddColumn(*this);
    auto& column = static_cast<QVBoxLayout&>(*layout());
    BuildHeader(column);
    auto* questions = new QWidget;
    columns_ = new QBoxLayout(QBoxLayout::LeftToRight, questions);
    columns_->setContentsMargins(0, 0, 0, 0);
    columns_->setSpacing(Gap() * 2);
    BuildInstrument(*NewColumn(1, start_texts::kInstrument, start_texts::kInstrumentHint),
                    answers.instrument);
    BuildConnection(*NewColumn(2, start_texts::kConnection, start_texts::kConnectionHint),
                    answers.output);
    BuildSong(*NewColumn(3, start_texts::kSong, start_texts::kSongHint), answers.song);
    column.addWidget(NewScrollArea(questions), 1);
    BuildFooter(column, answers.again);
    const std::initializer_list<QWidget*> places{instruments_, outputs_, songs_};
    int number = 0;
    for (QWidget* place : places) {
        auto* key = new QShortcut(QKeySequence(QStringLiteral("Alt+%1").arg(++number)), this);
        connect(key, &QShortcut::activated, place, [place] { place->setFocus(); });
    }
    ShowOutcome();
}

QString StartPage::Say(const Text& text) const {
    return InLanguage(text, language_);
}

void StartPage::BuildHeader(QVBoxLayout& column) {
    auto* row = new QHBoxLayout;
    auto* names = new QVBoxLayout;
    QLabel* title = NewLabel("Lbl_StartTitle", this);
    title->setFont(ScaledFont(title->font(), 1.8));
    title->setText(Say(start_texts::kTitle));
    QLabel* purpose = NewCaption("Lbl_StartPurpose", this);
    purpose->setText(Say(start_texts::kPurpose));
    names->addWidget(title);
    names->addWidget(purpose);
    row->addLayout(names, 1);
    for (const auto& [name, text, language] :
         {std::tuple("Btn_StartEnglish", "Eng&lish", Language::English),
          std::tuple("Btn_StartGerman", "De&utsch", Language::German)}) {
        auto* button = new QPushButton(QLatin1String(text));
        button->setObjectName(QLatin1String(name));
        button->setCheckable(true);
        button->setAutoExclusive(true);
        button->setChecked(language == language_);
        connect(button, &QPushButton::clicked, this,
                [this, chosen = language] { emit LanguageChosen(chosen); });
        row->addWidget(button);
    }
    column.addLayout(row);
}

// Large letters have no room side by side.
void StartPage::resizeEvent(QResizeEvent* event) {
    const QMargins margins = layout()->contentsMargins();
    const int room = width() - margins.left() - margins.right();
    int needed = (columns_->count() - 1) * columns_->spacing();
    for (int i = 0; i < columns_->count(); ++i) {
        needed += columns_->itemAt(i)->widget()->minimumSizeHint().width();
    }
    columns_->setDirection(needed <= room ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    QWidget::resizeEvent(event);
}

QVBoxLayout* StartPage::NewColumn(int number, const Text& title, const Text& purpose) {
    auto* panel = new Panel(QPalette::Button);
    auto* column = new QVBoxLayout(panel);
    column->setContentsMargins(Gap() * 2, Gap() * 3 / 2, Gap() * 2, Gap() * 3 / 2);
    column->setSpacing(Gap());
    QLabel* heading = NewLabel("", panel);
    heading->setObjectName(QStringLiteral("Lbl_Start%1").arg(number));
    heading->setFont(ScaledFont(heading->font(), 1.3));
    heading->setText(QStringLiteral("%1  ").arg(number) + Say(title));
    column->addWidget(heading);
    column->addWidget(NewHint("", Say(purpose), panel));
    columns_->addWidget(panel, 1);
    return column;
}

void StartPage::BuildInstrument(QVBoxLayout& column, const std::string& chosen) {
    instruments_ = new InstrumentList("List_StartInstruments", around_.remark, language_, this);
    instruments_->SetInstrument(chosen);
    column.addWidget(instruments_, 1);
    column.addWidget(NewHint("Lbl_StartPrepared", Say(start_texts::kPrepared), this));
    connect(instruments_, &InstrumentList::InstrumentChanged, this, &StartPage::ShowOutcome);
    connect(instruments_, &InstrumentList::InstrumentAccepted, this,
            [this] { outputs_->setFocus(); });
}

void StartPage::BuildConnection(QVBoxLayout& column, const std::string& chosen) {
    outputs_ = NewChoice("List_StartOutputs", Say(start_texts::kOutputs));
    wantedOutput_ = chosen;
    ShowOutputs();
    column.addWidget(outputs_, 1);
    asking_ = new AskPanel(around_.connection.asker,
                           {[this] { return Answers().output; }, around_.input,
                            [this] { return Answers().instrument; }},
                           language_);
    column.addWidget(asking_);
    keys_ = new KeyTest(around_.connection.test,
                        {[this] { return Answers().output; }, around_.input}, language_);
    asking_->AddBeside(keys_->NoteButton());
    column.addWidget(keys_);
    around_.connection = {}; // belongs to the window, which may end before the page
    column.addWidget(NewHint("Lbl_StartNoAnswer", Say(start_texts::kNoAnswer), this));
    connect(outputs_, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row >= 0) {
            wantedOutput_ = outputs_->item(row)->data(Qt::UserRole).toString().toStdString();
            asking_->Clear();
            keys_->Listen();
            ShowOutcome();
        }
    });
    connect(asking_, &AskPanel::InstrumentChosen, this, [this](const QString& name) {
        instruments_->SetInstrument(name.toStdString());
        ShowOutcome();
    });
}

void StartPage::ShowOutputs() {
    const QSignalBlocker quiet(outputs_);
    outputs_->clear();
    for (const player::OutputDevice& output : around_.outputs()) {
        auto* item = AddRow(*outputs_,
                            ToQString(DisplayText(output.productName)) + QStringLiteral("  ·  ") +
                                Say(PortStateWord(output)),
                            ToQString(output.productName));
        if (output.productName == wantedOutput_) {
            outputs_->setCurrentItem(item);
        }
    }
    if (keys_ != nullptr) {
        keys_->Listen();
    }
}

void StartPage::BuildSong(QVBoxLayout& column, const std::filesystem::path& chosen) {
    auto* open = new QPushButton(Say(start_texts::kOpen));
    open->setObjectName(QStringLiteral("Btn_StartOpen"));
    open->setMinimumHeight(fontMetrics().height() * 2);
    connect(open, &QPushButton::clicked, this, &StartPage::ChooseSong);
    column.addWidget(open);
    songs_ = NewChoice("List_StartSongs", Say(start_texts::kSongs));
    AddRow(*songs_, Say(start_texts::kDemo), {});
    for (const std::filesystem::path& file : around_.recent) {
        std::error_code ignored;
        if (std::filesystem::is_regular_file(file, ignored)) {
            AddSong(file);
        }
    }
    songs_->setCurrentRow(0);
    if (!chosen.empty()) {
        AddSong(chosen);
    }
    column.addWidget(songs_, 1);
    connect(songs_, &QListWidget::currentRowChanged, this, &StartPage::ShowOutcome);
    connect(songs_, &QListWidget::itemActivated, this, &StartPage::Accepted);
}

// Chosen from now on; each file stands in the list once, with whatever separators it is named.
void StartPage::AddSong(const std::filesystem::path& file) {
    const QString path = PathToQString(file);
    for (int row = 0; row < songs_->count(); ++row) {
        if (PathFromQString(songs_->item(row)->data(Qt::UserRole).toString()) == file) {
            songs_->setCurrentRow(row);
            return;
        }
    }
    auto* item = AddRow(*songs_, ShownFileName(file), path);
    item->setToolTip(ShownPath(file));
    songs_->setCurrentItem(item);
}

void StartPage::ChooseSong() {
    if (const std::filesystem::path file = around_.chooseSong(); !file.empty()) {
        AddSong(file);
    }
}

void StartPage::BuildFooter(QVBoxLayout& column, bool again) {
    auto* row = new QHBoxLayout;
    row->setSpacing(Gap());
    outcome_ = NewLabel("Lbl_StartOutcome", this);
    outcome_->setWordWrap(true);
    row->addWidget(outcome_, 1);
    again_ = new QCheckBox(Say(start_texts::kAgain));
    again_->setObjectName(QStringLiteral("Chk_StartAgain"));
    again_->setChecked(again);
    row->addWidget(again_);
    auto* skip = new QPushButton(Say(start_texts::kSkip));
    skip->setObjectName(QStringLiteral("Btn_StartSkip"));
    connect(skip, &QPushButton::clicked, this, &StartPage::Skipped);
    row->addWidget(skip);
    accept_ = new QPushButton;
    accept_->setObjectName(QStringLiteral("Btn_StartAccept"));
    accept_->setDefault(true);
    connect(accept_, &QPushButton::clicked, this, &StartPage::Accepted);
    row->addWidget(accept_);
    column.addLayout(row);
}

StartAnswers StartPage::Answers() const {
    StartAnswers answers;
    if (const instruments::Instrument* chosen = instruments_->Instrument()) {
        answers.instrument = chosen->name;
    }
    answers.output = wantedOutput_;
    if (songs_ != nullptr && songs_->currentItem() != nullptr) {
        answers.song = PathFromQString(songs_->currentItem()->data(Qt::UserRole).toString());
    }
    answers.again = again_ != nullptr && again_->isChecked();
    return answers;
}

// One sentence says what the answers lead to.
void StartPage::ShowOutcome() {
    const StartAnswers answers = Answers();
    const QString song =
        answers.song.empty() ? Say(start_texts::kDemo) : ShownFileName(answers.song);
    const QString output = ToQString(DisplayText(answers.output));
    outcome_->setText(
        answers.instrument.empty()
            ? Say(start_texts::kOutcomePlain).arg(song, output)
            : Say(start_texts::kOutcome).arg(song, ToQString(answers.instrument), output));
    accept_->setText(Say(answers.song.empty()         ? start_texts::kPlayDemo
                         : answers.instrument.empty() ? start_texts::kOpenOnly
                                                      : start_texts::kOpenAndPrepare));
}

} // namespace tracksmith::forms
