#include "editing/forms/number_field.h"

#include "base/forms/theme.h"
#include <QLineEdit>

namespace tracksmith::forms {
namespace {

constexpr int kMostText = 12;

} // namespace

NumberField::NumberField(const QString& objectName, int digits, QWidget* parent)
    : QAbstractSpinBox(parent), digits_(digits) {
    setObjectName(objectName);
    lineEdit()->setMaxLength(kMostText);
    connect(lineEdit(), &QLineEdit::textEdited, this, &NumberField::Edited);
}

QString NumberField::Text() const {
    return lineEdit()->text();
}

void NumberField::SetText(const QString& text) {
    lineEdit()->setText(text);
}

void NumberField::SetNumber(std::int64_t number) {
    SetText(QStringLiteral("%1").arg(number, digits_, 10, QLatin1Char('0')));
}

QValidator::State NumberField::validate(QString& /*input*/, int& /*cursor*/) const {
    return QValidator::Acceptable;
}

QSize NumberField::sizeHint() const {
    const QSize size = QAbstractSpinBox::sizeHint();
    return {
        fontMetrics().horizontalAdvance(QStringLiteral("00000")) + 2 * size.height() / 2 + Gap(),
        size.height()};
}

} // namespace tracksmith::forms
