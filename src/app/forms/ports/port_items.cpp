#include "app/forms/ports/port_items.h"

#include "base/display_text.h"
#include "base/forms/qt_text.h"
#include <QComboBox>

#include "app/forms/texts.h"

namespace tracksmith::forms {

const Text& PortStateWord(const player::OutputDevice& output) {
    switch (output.state) {
        case player::PortState::NotOpened:
            return texts::kPortNotOpened;
        case player::PortState::Lost:
            return texts::kPortLost;
        case player::PortState::Hanging:
            return texts::kPortHanging;
        case player::PortState::Closed:
        case player::PortState::Open:
            break;
    }
    return texts::kPortReady;
}

void FillWithOutputs(QComboBox& choice, const std::vector<player::OutputDevice>& outputs,
                     Language language) {
    choice.clear();
    for (const player::OutputDevice& output : outputs) {
        const QString name = ToQString(DisplayText(output.productName));
        const Text& state = PortStateWord(output);
        const QString text =
            &state == &texts::kPortReady
                ? QStringLiteral("● ") + name
                : QStringLiteral("○ ") + name + QStringLiteral(" – ") + InLanguage(state, language);
        choice.addItem(text, ToQString(output.productName));
    }
}

} // namespace tracksmith::forms
