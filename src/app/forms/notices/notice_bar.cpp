#include "app/forms/notices/notice_bar.h"

#include <initializer_list>
#include <string>
#include <utility>

#include "base/forms/labels.h"
#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QHBoxLayout>
#include <QPushButton>
#include <QToolButton>

#include "app/forms/backups/texts.h"
#include "app/forms/texts.h"

namespace tracksmith::forms {

NoticeBar::NoticeBar(QWidget* parent)
    : Panel(QPalette::Button, parent),
      text_(new ElidedLabel),
      waiting_(NewCaption("Lbl_NoticesWaiting", this)),
      details_(AddButton("Btn_Details", &NoticeBar::DetailsPressed)),
      leadIn_(AddButton("Btn_LeadIn", &NoticeBar::LeadInPressed)),
      prepare_(AddButton("Btn_PrepareNow", &NoticeBar::PreparePressed)),
      takeBack_(AddButton("Btn_TakeBack", &NoticeBar::TakeBackPressed)),
      reload_(AddButton("Btn_Reload", &NoticeBar::ReloadPressed)),
      restore_(AddButton("Btn_RestoreBackup", &NoticeBar::RestorePressed)),
      close_(new QToolButton) {
    setObjectName(QStringLiteral("NoticeBar"));
    text_->setObjectName(QStringLiteral("Lbl_Notice"));
    close_->setObjectName(QStringLiteral("Btn_CloseNotice"));
    close_->setText(QStringLiteral("×"));
    close_->setAutoRaise(true);
    close_->setFocusPolicy(Qt::StrongFocus);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(Gap() * 3 / 2, Gap() / 2, Gap() / 2, Gap() / 2);
    row->addWidget(text_, 1);
    const std::initializer_list<QWidget*> buttons{waiting_,  details_, leadIn_,  prepare_,
                                                  takeBack_, reload_,  restore_, close_};
    for (QWidget* widget : buttons) {
        row->addWidget(widget);
    }
    connect(close_, &QToolButton::clicked, this, &NoticeBar::CloseShown);
    Render();
}

QPushButton* NoticeBar::AddButton(const char* objectName, void (NoticeBar::*signal)()) {
    auto* button = new QPushButton(this);
    button->setObjectName(QLatin1String(objectName));
    connect(button, &QPushButton::clicked, this, signal);
    return button;
}

void NoticeBar::ShowChanges(const session::Workspace& workspace, const WaysOn& ways) {
    Forget(Subject::Song);
    const song::LoadReport report = workspace.loadReport.Losses();
    if (report.Kinds() == 0 && !workspace.preparation.Changed() && !ways.prepare) {
        return;
    }
    const std::string instrument =
        ways.prepare ? workspace.outputs.outputs.front().name : std::string();
    Add({.subject = Subject::Song,
         .text =
             [report, preparation = workspace.preparation, instrument](Language language) {
                 return texts::ChangesSummary(report, preparation, instrument, language);
             },
         .details = true,
         .takeBack = ways.takeBack,
         .leadIn = ways.leadIn,
         .prepare = ways.prepare});
}

void NoticeBar::ShowReloadOffer() {
    Forget(Subject::Reload);
    Add({.subject = Subject::Reload,
         .text = [](Language language) { return InLanguage(texts::kReloadOffer, language); },
         .reload = true});
}

void NoticeBar::ShowChangedOnDisk(const QString& fileName) {
    Forget(Subject::Reload);
    Add({.subject = Subject::Reload,
         .text = [fileName](Language language) { return texts::ChangedOnDisk(fileName, language); },
         .reload = true});
}

void NoticeBar::ShowRestoreOffer(const QString& song, const QString& date) {
    Forget(Subject::Backup);
    Add({.subject = Subject::Backup,
         .text =
             [song, date](Language language) {
                 return InLanguage(backup_texts::kOffer, language).arg(song, date);
             },
         .restore = true});
}

void NoticeBar::DropRestoreOffer() {
    Forget(Subject::Backup);
}

void NoticeBar::ShowCrash(const QString& record) {
    Add({.subject = Subject::Crash, .text = [record](Language language) {
             return InLanguage(backup_texts::kCrashed, language).arg(record);
         }});
}

void NoticeBar::ShowRefusal(const Text& reason) {
    Add({.subject = Subject::Refusal,
         .text = [reason](Language language) { return InLanguage(reason, language); }});
}

void NoticeBar::EndRefusal() {
    Forget(Subject::Refusal);
}

void NoticeBar::ShowText(const Text& text) {
    Add({.text = [text](Language language) { return InLanguage(text, language); }});
}

void NoticeBar::ShowPlain(const QString& line) {
    QString shown = line;
    shown.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
    Add({.text = [shown](Language) { return shown; }});
}

// What already waits to be read is not said twice.
void NoticeBar::Add(Notice notice) {
    const QString text = notice.text(language_);
    std::erase_if(notices_, [&](const Notice& each) { return each.text(language_) == text; });
    notices_.push_back(std::move(notice));
    Render();
}

void NoticeBar::Forget(Subject subject) {
    std::erase_if(notices_, [&](const Notice& each) { return each.subject == subject; });
    Render();
}

void NoticeBar::Clear() {
    std::erase_if(notices_, [](const Notice& each) {
        return each.subject != Subject::Backup && each.subject != Subject::Crash;
    });
    Render();
}

void NoticeBar::CloseShown() {
    if (!notices_.empty()) {
        notices_.pop_back();
    }
    Render();
}

void NoticeBar::Render() {
    setVisible(!notices_.empty());
    if (notices_.empty()) {
        return;
    }
    const Notice& shown = notices_.back();
    text_->SetFullText(shown.text(language_));
    waiting_->setVisible(notices_.size() > 1);
    waiting_->setText(texts::NoticesWaiting(notices_.size() - 1, language_));
    details_->setVisible(shown.details);
    leadIn_->setVisible(shown.leadIn);
    prepare_->setVisible(shown.prepare);
    takeBack_->setVisible(shown.takeBack);
    reload_->setVisible(shown.reload);
    restore_->setVisible(shown.restore);
}

void NoticeBar::Retranslate(Language language) {
    language_ = language;
    setAccessibleName(InLanguage(texts::kNotice, language));
    details_->setText(InLanguage(texts::kDetails, language));
    leadIn_->setText(InLanguage(texts::kLeadInButton, language));
    prepare_->setText(InLanguage(texts::kPrepareNow, language));
    takeBack_->setText(InLanguage(texts::kTakeBackButton, language));
    reload_->setText(InLanguage(texts::kReloadButton, language));
    restore_->setText(InLanguage(backup_texts::kRestore, language));
    close_->setAccessibleName(InLanguage(texts::kCloseNotice, language));
    close_->setToolTip(InLanguage(texts::kCloseNotice, language));
    Render();
}

} // namespace tracksmith::forms
