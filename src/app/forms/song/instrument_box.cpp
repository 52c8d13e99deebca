#include "app/forms/song/instrument_box.h"

#include "base/forms/labels.h"
#include "base/forms/theme.h"
#include <QAction>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/forms/menu/command_ids.h"
#include "app/forms/menu/main_menu.h"
#include "app/forms/texts.h"

namespace tracksmith::forms {

InstrumentBox::InstrumentBox(MainMenu& menu, QWidget* parent)
    : Panel(QPalette::Button, parent),
      caption_(NewCaption("Lbl_InstrumentCaption", this)),
      button_(new QPushButton) {
    caption_->setBuddy(button_);
    button_->setObjectName(QStringLiteral("Btn_Instrument"));
    button_->setAutoDefault(false);
    button_->setFocusPolicy(Qt::TabFocus);
    button_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(Gap(), Gap() / 2, Gap(), Gap() / 2);
    column->setSpacing(0);
    column->addWidget(caption_);
    column->addWidget(button_);
    setMinimumWidth(fontMetrics().averageCharWidth() * 22);
    connect(button_, &QPushButton::clicked, &menu.ActionOf(commands::kChooseInstrument),
            &QAction::trigger);
}

void InstrumentBox::ShowInstrument(const std::string& name) {
    name_ = name;
    Render();
}

void InstrumentBox::Retranslate(Language language) {
    language_ = language;
    Render();
}

void InstrumentBox::Render() {
    caption_->setText(InLanguage(texts::kInstrument, language_));
    const QString name =
        name_.empty() ? InLanguage(texts::kNoInstrument, language_) : ToQString(name_);
    const int room = button_->width() - 2 * Gap();
    button_->setText(MenuText(button_->fontMetrics().elidedText(name, Qt::ElideRight, room)));
    button_->setAccessibleName(InLanguage(texts::kInstrument, language_) + QStringLiteral(": ") +
                               name);
    button_->setToolTip(name + QStringLiteral("\n") +
                        InLanguage(texts::kInstrumentHint, language_));
}

void InstrumentBox::resizeEvent(QResizeEvent* event) {
    Panel::resizeEvent(event);
    Render();
}

} // namespace tracksmith::forms
