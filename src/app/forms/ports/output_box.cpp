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
    const auto outputs = session_.Controls().Player().OutputDevices();
    FillWithOutputs(*choice_, outputs, language_);
    const int chosen = choice_->findData(ToQString(session_.Controls().Outputs().Output()));
    choice_->setCurrentIndex(chosen);
    choice_->setEnabled(choice_->count() > 0);
    // The name fills the box, so that the state stands above it.
    const QString caption = InLanguage(texts::kOutput, language_);
    const QString state =
        chosen < 0
            ? QString()
            : InLanguage(PortStateWord(outputs[static_cast<std::size_t>(chosen)]), language_);
    caption_->setText(state.isEmpty() ? caption : caption + QStringLiteral(" · ") + state);
    choice_->setAccessibleName(caption_->text());
}

void OutputBox::TakeOutput(int index) {
    session_.Controls().ChooseOutput(choice_->itemData(index).toString().toStdString());
}

void OutputBox::Retranslate(Language language) {
    language_ = language;
    choice_->setToolTip(InLanguage(texts::kOutputHint, language));
    ShowOutputs();
}

} // namespace tracksmith::forms
