#include "app/forms/notices/notice_bar.h"

#include "base/forms/labels.h"
#include "base/forms/theme.h"
#include <QHBoxLayout>
#include <QPushButton>
#include <QToolButton>

#include "app/forms/texts.h"

namespace tracksmith::forms {

NoticeBar::NoticeBar(QWidget* parent)
    : Panel(QPalette::Button, parent),
      text_(new ElidedLabel),
      details_(new QPushButton),
      reload_(new QPushButton),
      close_(new QToolButton) {
    setObjectName(QStringLiteral("NoticeBar"));
    text_->setObjectName(QStringLiteral("Lbl_Notice"));
    details_->setObjectName(QStringLiteral("Btn_Details"));
    reload_->setObjectName(QStringLiteral("Btn_Reload"));
    close_->setObjectName(QStringLiteral("Btn_CloseNotice"));
    close_->setText(QStringLiteral("×"));
    close_->setAutoRaise(true);
    close_->setFocusPolicy(Qt::StrongFocus);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(Gap() * 3 / 2, Gap() / 2, Gap() / 2, Gap() / 2);
    row->addWidget(text_, 1);
    row->addWidget(details_);
    row->addWidget(reload_);
    row->addWidget(close_);
    connect(details_, &QPushButton::clicked, this, &NoticeBar::DetailsPressed);
    connect(reload_, &QPushButton::clicked, this, &NoticeBar::ReloadPressed);
    connect(close_, &QToolButton::clicked, this, &QWidget::hide);
    hide();
}

void NoticeBar::ShowChanges(const app::Workspace& workspace) {
    report_ = workspace.loadReport;
    preparation_ = workspace.preparation;
    const bool prepared = preparation_.inserted > 0 || preparation_.removed > 0;
    kind_ = report_.Kinds() > 0 || prepared ? Kind::Changes : Kind::None;
    Render();
}

void NoticeBar::Clear() {
    kind_ = Kind::None;
    Render();
}

void NoticeBar::ShowReloadOffer() {
    kind_ = Kind::Reload;
    Render();
}

void NoticeBar::ShowText(const Text& text) {
    fixed_ = text;
    kind_ = Kind::Fixed;
    Render();
}

void NoticeBar::ShowPlain(const QString& line) {
    plain_ = line;
    plain_.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
    kind_ = Kind::Plain;
    Render();
}

QString NoticeBar::ShownText() const {
    switch (kind_) {
        case Kind::Changes:
            return texts::ChangesSummary(report_, preparation_, language_);
        case Kind::Reload:
            return InLanguage(texts::kReloadOffer, language_);
        case Kind::Fixed:
            return InLanguage(fixed_, language_);
        default:
            return plain_;
    }
}

void NoticeBar::Render() {
    text_->SetFullText(ShownText());
    details_->setVisible(kind_ == Kind::Changes);
    reload_->setVisible(kind_ == Kind::Reload);
    setVisible(kind_ != Kind::None);
}

void NoticeBar::Retranslate(Language language) {
    language_ = language;
    setAccessibleName(InLanguage(texts::kNotice, language));
    details_->setText(InLanguage(texts::kDetails, language));
    reload_->setText(InLanguage(texts::kReloadButton, language));
    close_->setAccessibleName(InLanguage(texts::kCloseNotice, language));
    close_->setToolTip(InLanguage(texts::kCloseNotice, language));
    const bool closed = isHidden();
    Render();
    setHidden(closed);
}

} // namespace tracksmith::forms
