#include "instruments/forms/picker_voice_card.h"

#include "base/forms/labels.h"
#include "base/forms/theme.h"
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace tracksmith::forms {

PickerVoiceCard::PickerVoiceCard(const char* objectName, QWidget* parent)
    : Panel(QPalette::Base, parent),
      caption_(NewCaption("L_VoiceCaption", this)),
      mark_(NewCaption("L_VoiceMark", this)),
      numbers_(NewLabel("L_VoiceNumbers", this)),
      name_(new ElidedLabel(this)),
      remark_(NewLabel("L_VoiceRemark", this)) {
    setObjectName(QLatin1String(objectName));
    name_->setObjectName(QStringLiteral("L_VoiceName"));
    name_->setFont(ScaledFont(font(), 1.25));
    numbers_->setFont(DigitFont(1));
    remark_->setWordWrap(true);
    auto* head = new QHBoxLayout;
    head->addWidget(caption_);
    head->addWidget(mark_);
    head->addStretch();
    head->addWidget(numbers_);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(Gap(), Gap() / 2, Gap(), Gap() / 2);
    column->setSpacing(Gap() / 3);
    column->addLayout(head);
    column->addWidget(name_);
    column->addWidget(remark_);
}

void PickerVoiceCard::Show(const Content& content) {
    caption_->setText(content.caption);
    mark_->setText(content.mark);
    mark_->setVisible(!content.mark.isEmpty());
    numbers_->setText(content.numbers);
    name_->SetFullText(content.name);
    remark_->setText(content.remark);
    setAccessibleName(content.caption + QStringLiteral(": ") + content.name + QStringLiteral(", ") +
                      content.numbers);
}

} // namespace tracksmith::forms
