#include "app/forms/ports/key_test.h"

#include <chrono>
#include <utility>

#include "base/forms/panel.h"
#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include "app/forms/ports/key_lamps.h"
#include "app/forms/ports/texts.h"

namespace tracksmith::forms {
namespace {

constexpr std::chrono::milliseconds kNote{500};

} // namespace

KeyTest::KeyTest(const std::shared_ptr<app::ConnectionTest>& test, Around around, Language language,
                 QWidget* parent)
    : QWidget(parent),
      test_(test),
      around_(std::move(around)),
      language_(language),
      note_(new QPushButton(InLanguage(port_texts::kTestNote, language))),
      timer_(new QTimer(this)),
      lamps_(new KeyLamps(language)) {
    note_->setObjectName(QStringLiteral("Btn_TestNote"));
    note_->setToolTip(InLanguage(port_texts::kTestNoteHint, language));
    note_->setAutoDefault(false);
    timer_->setSingleShot(true);
    timer_->setInterval(kNote);
    auto* panel = new Panel(QPalette::Base);
    auto* inside = new QVBoxLayout(panel);
    inside->setContentsMargins(Gap() * 3 / 2, Gap(), Gap() * 3 / 2, Gap());
    inside->addWidget(lamps_);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(panel);
    connect(note_, &QPushButton::clicked, this, &KeyTest::Sound);
    connect(timer_, &QTimer::timeout, this, &KeyTest::EndNote);
}

KeyTest::~KeyTest() {
    if (const auto test = test_.lock()) {
        test->EndNote();
        test->EndListening();
    }
}

void KeyTest::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    Listen();
}

void KeyTest::Listen() {
    const auto test = test_.lock();
    if (!test || !isVisible()) {
        return;
    }
    EndNote();
    lamps_->Clear(test->Listen(around_.output(), around_.input(),
                               [this](const app::PlayedKey& key) { lamps_->ShowKey(key); }));
}

void KeyTest::Sound() {
    const auto test = test_.lock();
    if (!test) {
        return;
    }
    const bool taken = test->BeginNote(around_.output());
    if (taken) {
        timer_->start();
    } else {
        lamps_->SayTrouble(InLanguage(port_texts::kNoteNotTaken, language_));
    }
}

void KeyTest::EndNote() {
    timer_->stop();
    if (const auto test = test_.lock()) {
        test->EndNote();
    }
}

} // namespace tracksmith::forms
