#include "app/forms/guide/guide_form.h"

#include <algorithm>
#include <utility>

#include "base/forms/dialog_frame.h"
#include "base/forms/labels.h"
#include "base/forms/qt_text.h"
#include "base/forms/screen_fit.h"
#include "base/forms/theme.h"
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QSignalBlocker>
#include <QSplitter>
#include <QVBoxLayout>

#include "app/forms/guide/guide_text.h"
#include "app/forms/guide/texts.h"

namespace tracksmith::forms {

GuideForm::GuideForm(Finder find, Language language, QWidget* parent)
    : QWidget(parent, Qt::Window),
      find_(std::move(find)),
      language_(language),
      text_(new GuideText),
      contents_(new QListWidget),
      back_(new QPushButton),
      forward_(new QPushButton),
      search_(new QLineEdit),
      found_(NewCaption("Lbl_GuideFound", this)) {
    setObjectName(QStringLiteral("GuideForm"));
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_QuitOnClose, false);
    text_->setObjectName(QStringLiteral("Text_Guide"));
    contents_->setObjectName(QStringLiteral("List_GuideContents"));
    AddColumn(*this);
    auto* top = new QHBoxLayout;
    BuildTop(*top);
    auto* halves = new QSplitter;
    halves->addWidget(contents_);
    halves->addWidget(text_);
    halves->setStretchFactor(1, 1);
    halves->setChildrenCollapsible(false);
    auto* column = static_cast<QVBoxLayout*>(layout());
    column->addLayout(top);
    column->addWidget(halves, 1);
    AddKeys();
    connect(contents_, &QListWidget::currentRowChanged, this, &GuideForm::Visit);
    connect(text_, &QTextBrowser::anchorClicked, this,
            [this](const QUrl& link) { FollowLink(link.toString()); });
    connect(text_->verticalScrollBar(), &QScrollBar::valueChanged, this, &GuideForm::ShowWhere);
    const int letter = fontMetrics().averageCharWidth();
    const QSize wanted(letter * 160, fontMetrics().height() * 44);
    resize(FittingSize(*this, wanted));
    halves->setSizes({letter * 46, letter * 112});
    ReadGuide();
}

void GuideForm::BuildTop(QHBoxLayout& row) {
    back_->setObjectName(QStringLiteral("Btn_GuideBack"));
    forward_->setObjectName(QStringLiteral("Btn_GuideForward"));
    search_->setObjectName(QStringLiteral("E_SearchGuide"));
    search_->setClearButtonEnabled(true);
    row.addWidget(back_);
    row.addWidget(forward_);
    row.addStretch(1);
    row.addWidget(found_);
    row.addWidget(search_, 1);
    connect(back_, &QPushButton::clicked, this, &GuideForm::GoBack);
    connect(forward_, &QPushButton::clicked, this, &GuideForm::GoForward);
    connect(search_, &QLineEdit::returnPressed, this, [this] { Search(false); });
}

void GuideForm::AddKeys() {
    const auto add = [this](const QKeySequence& keys, void (GuideForm::*act)()) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, act);
    };
    add(QKeySequence(QStringLiteral("Alt+Left")), &GuideForm::GoBack);
    add(QKeySequence(QStringLiteral("Alt+Right")), &GuideForm::GoForward);
    const auto* find = new QShortcut(QKeySequence(QStringLiteral("Ctrl+F")), this);
    connect(find, &QShortcut::activated, this, [this] {
        search_->setFocus(Qt::ShortcutFocusReason);
        search_->selectAll();
    });
    for (const char* keys : {"Shift+Return", "Shift+Enter"}) {
        const auto* before = new QShortcut(QKeySequence(QLatin1String(keys)), this);
        connect(before, &QShortcut::activated, this, [this] { Search(true); });
    }
    const auto* leave = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    connect(leave, &QShortcut::activated, this, &QWidget::close);
}

void GuideForm::ReadGuide() {
    const auto say = [this](const Text& text) { return InLanguage(text, language_); };
    setWindowTitle(say(guide_texts::kTitle));
    back_->setText(say(guide_texts::kBack));
    forward_->setText(say(guide_texts::kForward));
    search_->setPlaceholderText(say(guide_texts::kSearch));
    search_->setAccessibleName(say(guide_texts::kSearch));
    contents_->setAccessibleName(say(guide_texts::kContents));
    text_->setAccessibleName(say(guide_texts::kText));
    found_->clear();
    const auto file = find_(language_);
    if (!file || !text_->Read(*file)) {
        text_->setPlainText(say(guide_texts::kMissing));
    }
    FillContents();
    ShowPlace();
}

void GuideForm::FillContents() {
    const QSignalBlocker quiet(contents_);
    contents_->clear();
    for (const GuideHeading& heading : text_->Headings()) {
        const qsizetype depth = std::max(heading.level - 2, 0);
        auto* item = new QListWidgetItem(QString(4 * depth, u' ') + heading.text, contents_);
        item->setData(Qt::AccessibleTextRole, heading.text);
    }
}

void GuideForm::ShowSection(const Text& heading) {
    const QString text = InLanguage(heading, language_);
    const auto& headings = text_->Headings();
    for (std::size_t i = 0; i < headings.size(); ++i) {
        if (headings[i].text == text) {
            Visit(static_cast<int>(i));
            return;
        }
    }
}

void GuideForm::Retranslate(Language language) {
    language_ = language;
    ReadGuide();
}

// The layout has its width only now.
void GuideForm::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    ShowPlace();
}

void GuideForm::Visit(int heading) {
    if (heading < 0) {
        return;
    }
    if (visited_.empty() || visited_[place_] != heading) {
        visited_.resize(visited_.empty() ? 0 : place_ + 1);
        visited_.push_back(heading);
        place_ = visited_.size() - 1;
    }
    ShowPlace();
}

void GuideForm::GoBack() {
    if (place_ > 0) {
        --place_;
        ShowPlace();
    }
}

void GuideForm::GoForward() {
    if (place_ + 1 < visited_.size()) {
        ++place_;
        ShowPlace();
    }
}

void GuideForm::ShowPlace() {
    back_->setEnabled(place_ > 0);
    forward_->setEnabled(place_ + 1 < visited_.size());
    // The guide of the other language may be missing.
    if (!visited_.empty() && visited_[place_] < contents_->count()) {
        text_->ShowHeading(visited_[place_]);
        const QSignalBlocker quiet(contents_);
        contents_->setCurrentRow(visited_[place_]);
    }
}

void GuideForm::ShowWhere() {
    if (contents_->count() > 0) {
        const QSignalBlocker quiet(contents_);
        contents_->setCurrentRow(text_->HeadingAtTop());
    }
}

void GuideForm::FollowLink(const QString& link) {
    Visit(text_->HeadingOfLink(link));
}

void GuideForm::Search(bool backward) {
    const auto flags = backward ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    const QString wanted = search_->text();
    bool found = wanted.isEmpty() || text_->find(wanted, flags);
    if (!found) { // once more from the other end
        text_->moveCursor(backward ? QTextCursor::End : QTextCursor::Start);
        found = text_->find(wanted, flags);
    }
    found_->setText(found ? QString() : InLanguage(guide_texts::kNotFound, language_));
}

} // namespace tracksmith::forms
