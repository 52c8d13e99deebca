#pragma once

#include <cstdint>

#include <QAbstractSpinBox>

namespace tracksmith::forms {

/// A field for a number. Takes whatever is typed, also nothing: what is wrong with it is said
/// elsewhere.
class NumberField : public QAbstractSpinBox {
    Q_OBJECT

public:
    /// Numbers are shown with at least `digits` digits.
    NumberField(const QString& objectName, int digits, QWidget* parent);

    QString Text() const;
    void SetText(const QString& text);
    void SetNumber(std::int64_t number);

    void stepBy(int steps) override { emit Stepped(steps); }
    QValidator::State validate(QString& input, int& cursor) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    void Edited();
    /// The user goes up or down by so many.
    void Stepped(int steps);

protected:
    StepEnabled stepEnabled() const override { return StepUpEnabled | StepDownEnabled; }

private:
    int digits_;
};

} // namespace tracksmith::forms
