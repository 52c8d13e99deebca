#include "app/forms/ports/ask_panel.h"

#include <chrono>
#include <utility>

#include "base/forms/labels.h"
#include "base/forms/panel.h"
#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include "app/ask_texts.h"
#include "app/forms/texts.h"

namespace tracksmith::forms {
namespace {

using app::AskState;

constexpr std::chrono::milliseconds kLook{20};

std::chrono::steady_clock::time_point Now() {
    return std::chrono::steady_clock::now();
}

} // namespace

AskPanel::AskPanel(const std::shared_ptr<app::InstrumentAsker>& asker, Around around,
                   Language language, QWidget* parent)
    : QWidget(parent),
      asker_(asker),
      around_(std::move(around)),
      language_(language),
      timer_(new QTimer(this)),
      ask_(new QPushButton(Say(texts::kAskInstrument))),
      buttons_(new QHBoxLayout),
      result_(new Panel(QPalette::Base)),
      headline_(NewLabel("L_AskHeadline", result_)),
      detail_(NewLabel("L_AskDetail", result_)),
      choose_(new QPushButton) {
    ask_->setObjectName(QStringLiteral("Btn_AskInstrument"));
    ask_->setToolTip(Say(texts::kAskInstrumentHint));
    ask_->setAutoDefault(false);
    BuildResult();
    buttons_->addWidget(ask_);
    buttons_->addStretch();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Gap());
    column->addLayout(buttons_);
    column->addWidget(result_);
    timer_->setInterval(kLook);
    connect(timer_, &QTimer::timeout, this, &AskPanel::Look);
    connect(ask_, &QPushButton::clicked, this, &AskPanel::Ask);
    connect(choose_, &QPushButton::clicked, this, &AskPanel::Choose);
}

AskPanel::~AskPanel() {
    if (const auto asker = asker_.lock()) {
        asker->Cancel();
    }
}

QString AskPanel::Say(const Text& text) const {
    return InLanguage(text, language_);
}

void AskPanel::AddBeside(QPushButton* button) {
    buttons_->insertWidget(buttons_->count() - 1, button);
}

void AskPanel::BuildResult() {
    QFont bold = headline_->font();
    bold.setBold(true);
    headline_->setFont(bold);
    headline_->setWordWrap(true);
    detail_->setWordWrap(true);
    detail_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    choose_->setObjectName(QStringLiteral("Btn_ChooseAnswered"));
    choose_->setAutoDefault(false);
    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(choose_);
    auto* column = new QVBoxLayout(result_);
    column->setContentsMargins(Gap() * 3 / 2, Gap(), Gap() * 3 / 2, Gap());
    column->setSpacing(Gap() / 2);
    column->addWidget(headline_);
    column->addWidget(detail_);
    column->addLayout(row);
    result_->hide();
}

void AskPanel::Ask() {
    const auto asker = asker_.lock();
    if (!asker || asker->Result().state == AskState::Asking) {
        return;
    }
    asker->Begin(around_.output(), around_.input(), Now());
    timer_->start();
    ShowResult();
    Look();
}

void AskPanel::Look() {
    const auto asker = asker_.lock();
    if (!asker || asker->Step(Now()) != AskState::Asking) {
        timer_->stop();
        ShowResult();
    }
}

void AskPanel::Clear() {
    if (const auto asker = asker_.lock()) {
        asker->Cancel();
    }
    timer_->stop();
    result_->hide();
}

void AskPanel::ShowResult() {
    const auto asker = asker_.lock();
    if (!asker) {
        return;
    }
    const std::string chosen = around_.chosen();
    const app::AskWords words = app::WordsOf(asker->Result(), chosen, language_);
    QString detail = ToQString(words.detail);
    if (!asker->Table().IsComplete()) {
        detail += u'\n' + Say(app::texts::kIdentitiesDamaged);
    }
    offer_ = words.offer;
    headline_->setText(ToQString(words.headline));
    ShowDetail(detail);
    choose_->setVisible(offer_ != nullptr);
    if (offer_ != nullptr) {
        choose_->setText(Say(texts::kChooseAnswered).arg(MenuText(ToQString(offer_->name))));
    }
    result_->setVisible(!words.headline.empty());
    QAccessibleEvent told(headline_, QAccessible::Alert);
    QAccessible::updateAccessibility(&told);
}

// The window grows with what is said; without a least height it would cut wrapped lines off.
void AskPanel::ShowDetail(const QString& text) {
    constexpr int kCharacters = 48;
    const int width = fontMetrics().averageCharWidth() * kCharacters;
    detail_->setText(text);
    detail_->setMinimumSize(width, 0);
    detail_->setMinimumHeight(detail_->heightForWidth(width));
    detail_->setVisible(!text.isEmpty());
}

void AskPanel::Choose() {
    if (offer_ == nullptr) {
        return;
    }
    const QString name = ToQString(std::exchange(offer_, nullptr)->name);
    // The button that has the focus goes away.
    ask_->setFocus();
    choose_->hide();
    ShowDetail(Say(texts::kChosenNow).arg(name));
    emit InstrumentChosen(name);
}

} // namespace tracksmith::forms
