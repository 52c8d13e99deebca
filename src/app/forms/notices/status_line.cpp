#include "app/forms/notices/status_line.h"

#include "base/forms/labels.h"
#include "base/forms/theme.h"

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
    addPermanentWidget(instrument_);
    addPermanentWidget(facts_);
    addPermanentWidget(modified_);
    modified_->hide();
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
    message_->SetFullText(InLanguage(text_, language_) + detail_);
    modified_->setText(InLanguage(texts::kModified, language_));
    facts_->setVisible(trackCount_ >= 0);
    facts_->setText(QStringLiteral("%1 %2 · %3 · ")
                        .arg(InLanguage(texts::kFormat, language_))
                        .arg(format_)
                        .arg(division_) +
                    texts::TrackCount(trackCount_, language_));
}

} // namespace tracksmith::forms
