#include "base/forms/choice_accessible.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QAccessibleWidget>
#include <QComboBox>

namespace tracksmith::forms {
namespace {

/// A choice of one entry from a list.
class ChoiceAccessible : public QAccessibleWidget {
public:
    explicit ChoiceAccessible(QComboBox* choice)
        : QAccessibleWidget(choice, QAccessible::ComboBox), choice_(*choice) {}

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Value ? choice_.currentText() : QAccessibleWidget::text(kind);
    }

    // The list of entries is the only part.
    int childCount() const override { return 1; }
    QAccessibleInterface* child(int index) const override {
        return index == 0 ? QAccessible::queryAccessibleInterface(choice_.view()) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* part) const override {
        return part != nullptr && part->object() == choice_.view() ? 0 : -1;
    }

    QStringList actionNames() const override { return {showMenuAction(), pressAction()}; }
    void doAction(const QString& name) override {
        if (choice_.isEnabled() && actionNames().contains(name)) {
            choice_.showPopup();
        }
    }

private:
    QComboBox& choice_;
};

QAccessibleInterface* MakeInterface(const QString& className, QObject* object) {
    auto* choice =
        className == QLatin1String("QComboBox") ? qobject_cast<QComboBox*>(object) : nullptr;
    return choice != nullptr && !choice->isEditable() ? new ChoiceAccessible(choice) : nullptr;
}

} // namespace

void InstallChoiceAccessibility() {
    QAccessible::installFactory(MakeInterface); // an installed factory is not installed again
}

} // namespace tracksmith::forms
