#pragma once

#include "base/forms/panel.h"
#include "base/text.h"

class QLabel;
class QVBoxLayout;

namespace tracksmith::forms {

/// A small caption over a value.
class ValueBox : public QWidget {
    Q_OBJECT

public:
    /// `objectName` becomes the value's name; `size` scales its font, in which digits keep their
    /// width when `digits` is set.
    ValueBox(const char* objectName, const Text& caption, double size, bool digits,
             QWidget* parent = nullptr);

    void SetValue(const QString& value);

    /// Keeps room for `widest`, so that nothing moves while values change; a wider value gets more.
    void Reserve(const QString& widest);

    void Retranslate(Language language);

private:
    void NameValue();
    int WidthOf(const QString& value) const;

    Text text_;
    int room_ = 0; // pixels that the value has; 0 for as many as it needs
    QLabel* caption_;
    QLabel* value_;
};

} // namespace tracksmith::forms
