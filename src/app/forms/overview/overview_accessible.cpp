#include "app/forms/overview/overview_accessible.h"

#include <QAccessible>
#include <QAccessibleValueInterface>
#include <QAccessibleWidget>

#include "app/forms/overview/overview_widget.h"

namespace tracksmith::forms {
namespace {

/// The overview as a slider over the song's columns.
class OverviewAccessible : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit OverviewAccessible(OverviewWidget* overview)
        : QAccessibleWidget(overview, QAccessible::Slider), overview_(*overview) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface*>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }
    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Value ? overview_.CursorText() : QAccessibleWidget::text(kind);
    }

    QVariant currentValue() const override { return Measure(overview_.CursorColumn()); }
    QVariant minimumValue() const override { return Measure(0); }
    QVariant maximumValue() const override { return Measure(overview_.ColumnCount() - 1); }
    QVariant minimumStepSize() const override { return Measure(1).toLongLong() - 1; }
    void setCurrentValue(const QVariant& value) override {
        const qlonglong step = minimumStepSize().toLongLong();
        overview_.SetCursorColumn((value.toLongLong() - 1) / step);
    }

private:
    // A column's first measure.
    QVariant Measure(std::int64_t column) const {
        return static_cast<qlonglong>(column * overview_.MeasuresPerColumn() + 1);
    }

    OverviewWidget& overview_;
};

QAccessibleInterface* MakeInterface(const QString& className, QObject* object) {
    auto* overview = className == QLatin1String(OverviewWidget::staticMetaObject.className())
                         ? qobject_cast<OverviewWidget*>(object)
                         : nullptr;
    return overview != nullptr ? new OverviewAccessible(overview) : nullptr;
}

} // namespace

void InstallOverviewAccessibility() {
    QAccessible::installFactory(MakeInterface); // an installed factory is not installed again
}

} // namespace tracksmith::forms
