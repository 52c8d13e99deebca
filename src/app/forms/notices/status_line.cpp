#include "app/forms/notices/status_line.h"

#include "base/forms/labels.h"
#include "base/forms/theme.h"
#include <QProgressBar>
#include <QShortcut>
#include <QToolButton>

#include "app/forms/texts.h"

namespace tracksmith::forms {

StatusLine::StatusLine(QWidget* parent)
    : QStatusBar(parent),
      text_(texts::kReady),
      message_(new ElidedLabel),
      instrument_(NewLabel("Lbl_StatusInstrument", this)),
      facts_(NewLabel("Lbl_Facts", this)),
      modified_(NewLabel("Lbl_Modified", this)) {
    setObjectName(QStringLiteral("StatusLine"));
    message_->setObjectName(QStringLiteral("Lbl_Status"));
    setSizeGripEnabled(false);
    setContentsMargins(Gap() * 3 / 2, 0, Gap() * 3 / 2, Gap() / 2);
    message_->setForegroundRole(QPalette::PlaceholderText);
    addWidget(message_, 1);
    BuildLoading();
    addPermanentWidget(instrument_);
    addPermanentWidget(facts_);
    addPermanentWidget(modified_);
    modified_->hide();
}

// As high as a line of text, so that nothing moves when it comes and goes.
void StatusLine::BuildLoading() {
    const int line = fontMetrics().height();
    progress_ = new QProgressBar;
    progress_->setObjectName(QStringLiteral("Bar_Loading"));
    progress_->setTextVisible(false);
    progress_->setFixedSize(12 * line, line * 3 / 4);
    cancel_ = new QToolButton;
    cancel_->setObjectName(QStringLiteral("Btn_CancelLoading"));
    cancel_->setFocusPolicy(Qt::TabFocus);
    connect(cancel_, &QToolButton::clicked, this, &StatusLine::CancelPressed);
    // Belongs to the button, so that the key is free while the button is not there.
    const auto* escape = new QShortcut(QKeySequence(Qt::Key_Escape), cancel_);
    connect(escape, &QShortcut::activated, this, &StatusLine::CancelPressed);
    for (QWidget* widget : {static_cast<QWidget*>(progress_), static_cast<QWidget*>(cancel_)}) {
        addWidget(widget);
        widget->hide();
    }
}

void StatusLine::ShowLoading(const Loading& loading) {
    const bool same = loading.name == loading_.name;
    loading_ = loading;
    if (!same) {
        Render();
    }
    RenderLoading();
}

void StatusLine::EndLoading() {
    loading_ = {};
    Render();
    RenderLoading();
}

void StatusLine::RenderLoading() {
    const bool known = loading_.percent >= 0;
    progress_->setRange(0, known ? 100 : 0);
    progress_->setValue(known ? loading_.percent : 0);
    progress_->setVisible(!loading_.name.isEmpty());
    cancel_->setVisible(loading_.mayCancel);
}

void StatusLine::ShowStatus(const Text& text, const QString& detail) {
    text_ = text;
    detail_ = detail;
    Render();
}

void StatusLine::ShowSong(const app::SongDescription* song) {
    trackCount_ = song != nullptr ? static_cast<std::int64_t>(song->tracks.size()) : -1;
    format_ = song != nullptr ? song->format : 0;
    division_ = song != nullptr ? song->division : 0;
    Render();
}

void StatusLine::SetInstrument(const QString& name) {
    instrument_->setText(name);
    instrument_->setVisible(!name.isEmpty());
}

void StatusLine::SetModified(bool modified) {
    modified_->setVisible(modified);
}

void StatusLine::Retranslate(Language language) {
    language_ = language;
    Render();
}

void StatusLine::Render() {
    message_->SetFullText(loading_.name.isEmpty() ? InLanguage(text_, language_) + detail_
                                                  : texts::Loading(loading_.name, language_));
    progress_->setAccessibleName(InLanguage(texts::kLoadingProgress, language_));
    cancel_->setText(InLanguage(texts::kCancelLoading, language_));
    modified_->setText(InLanguage(texts::kModified, language_));
    facts_->setVisible(trackCount_ >= 0);
    facts_->setText(QStringLiteral("%1 %2 · %3 · ")
                        .arg(InLanguage(texts::kFormat, language_))
                        .arg(format_)
                        .arg(division_) +
                    texts::TrackCount(trackCount_, language_));
}

} // namespace tracksmith::forms
