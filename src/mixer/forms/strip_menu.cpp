#include "mixer/forms/strip_menu.h"

#include <QMenu>

#include "mixer/forms/texts.h"

namespace tracksmith::forms {
namespace {

QAction* Add(QMenu& menu, const char* objectName, const QString& text,
             const std::function<void()>& action) {
    QAction* entry = menu.addAction(text);
    entry->setObjectName(QLatin1String(objectName));
    QObject::connect(entry, &QAction::triggered, &menu, action);
    return entry;
}

} // namespace

QMenu* NewStripMenu(mixer::Mixer& mixer, std::size_t channel, mixer::Control control,
                    const StripMenuActions& actions, Language language, QWidget* parent) {
    auto* menu = new QMenu(parent);
    menu->setObjectName(QStringLiteral("StripMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto say = [language](const Text& text) { return InLanguage(text, language); };
    const auto edit = [changed = actions.changed](std::function<void()> what) {
        return [changed, what = std::move(what)] {
            what();
            changed();
        };
    };
    const mixer::ControlState state = mixer.State(channel, control);
    if (state.places > 1) {
        menu->addSection(mixer_texts::ChangesTimes(control, state.places - 1, language));
        Add(*menu, "Strip_ScaleAll", say(mixer_texts::kScaleAll), edit([&mixer, channel, control] {
            mixer.ScaleAll(channel, control);
        }))->setEnabled(state.inEffect);
        menu->addSeparator();
    }
    Add(*menu, "Strip_TypeValue", say(mixer_texts::kTypeValue), actions.typeValue);
    Add(*menu, "Strip_InsertAtStart", say(mixer_texts::kInsertAtStart), actions.insertAtStart)
        ->setEnabled(mixer.CanInsertAtStart(channel, control));
    Add(*menu, "Strip_SameForAll", say(mixer_texts::kSameForAll),
        edit([&mixer, channel, control] { mixer.SameForAll(channel, control); }));
    Add(*menu, "Strip_Reset", say(mixer_texts::kReset), edit([&mixer, channel, control] {
        mixer.ResetControl(channel, control);
    }))->setEnabled(state.inEffect);
    Add(*menu, "Strip_ResetChannel", say(mixer_texts::kResetChannel),
        edit([&mixer, channel] { mixer.Btn_ResetClick(channel); }));
    return menu;
}

} // namespace tracksmith::forms
