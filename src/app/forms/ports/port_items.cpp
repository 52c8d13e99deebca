#include "app/forms/ports/port_items.h"

#include "base/display_text.h"
#include "base/forms/qt_text.h"
#include <QComboBox>

#include "app/forms/texts.h"

namespace tracksmith::forms {

void FillWithOutputs(QComboBox& choice, const std::vector<player::OutputDevice>& outputs,
                     Language language) {
    choice.clear();
    for (const player::OutputDevice& output : outputs) {
        const QString name = ToQString(DisplayText(output.productName));
        const QString text = output.usable ? QStringLiteral("● ") + name
                                           : QStringLiteral("○ ") + name + QStringLiteral(" – ") +
                                                 InLanguage(texts::kOutputLost, language);
        choice.addItem(text, ToQString(output.productName));
    }
}

} // namespace tracksmith::forms
