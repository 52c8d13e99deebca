#include "app/forms/transport/value_box.h"

#include "base/forms/labels.h"
#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QLabel>
#include <QVBoxLayout>

namespace tracksmith::forms {

ValueBox::ValueBox(const char* objectName, const Text& caption, double size, bool digits,
                   QWidget* parent)
    : QWidget(parent),
      text_(caption),
      caption_(NewCaption("", this)),
      value_(NewLabel(objectName, this)) {
    value_->setFont(digits ? DigitFont(size) : ScaledFont(value_->font(), size));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(caption_);
    layout->addWidget(value_, 1, Qt::AlignLeft | Qt::AlignVCenter);
}

void ValueBox::SetValue(const QString& value) {
    if (value == value_->text()) {
        return;
    }
    if (room_ > 0 && WidthOf(value) > room_) {
        Reserve(value);
    }
    value_->setText(value);
    NameValue();
}

// A label of a fixed size does not have the window laid out anew for each text that it shows.
void ValueBox::Reserve(const QString& widest) {
    room_ = WidthOf(widest);
    value_->setFixedSize(room_, value_->fontMetrics().height());
}

int ValueBox::WidthOf(const QString& value) const {
    return value_->fontMetrics().size(Qt::TextSingleLine, value).width();
}

void ValueBox::Retranslate(Language language) {
    caption_->setText(InLanguage(text_, language));
    NameValue();
}

void ValueBox::NameValue() {
    value_->setAccessibleName(caption_->text() + QStringLiteral(": ") + value_->text());
}

} // namespace tracksmith::forms
