#include "app/forms/ports/output_box.h"

#include <algorithm>

#include "base/forms/labels.h"
#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QComboBox>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "app/forms/ports/port_items.h"
#include "app/forms/texts.h"
#include "app/forms/transport/session_signals.h"

namespace tracksmith::forms {

OutputBox::OutputBox(SessionSignals& session, QWidget* parent)
    : Panel(QPalette::Button, parent),
      session_(session),
      caption_(NewCaption("Lbl_OutputCaption", this)),
      choice_(new QComboBox) {
    caption_->setBuddy(choice_);
    choice_->setObjectName(QStringLiteral("CB_Output"));
    choice_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    choice_->setMinimumContentsLength(14);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(Gap(), Gap() / 2, Gap(), Gap() / 2);
    column->setSpacing(0);
    column->addWidget(caption_);
    column->addWidget(choice_);
    connect(choice_, &QComboBox::activated, this, &OutputBox::TakeOutput);
    connect(&session, &SessionSignals::PortsChanged, this, &OutputBox::ShowOutputs);
}

void OutputBox::ShowOutputs() {
    const QSignalBlocker silent(choice_);
    FillWithOutputs(*choice_, session_.Controls().Player().OutputDevices(), language_);
    choice_->setCurrentIndex(choice_->findData(ToQString(session_.Controls().Outputs().Output())));
    choice_->setEnabled(choice_->count() > 0);
}

void OutputBox::TakeOutput(int index) {
    session_.Controls().ChooseOutput(choice_->itemData(index).toString().toStdString());
}

void OutputBox::Retranslate(Language language) {
    language_ = language;
    caption_->setText(InLanguage(texts::kOutput, language));
    choice_->setAccessibleName(InLanguage(texts::kOutput, language));
    choice_->setToolTip(InLanguage(texts::kOutputHint, language));
    ShowOutputs();
}

} // namespace tracksmith::forms
