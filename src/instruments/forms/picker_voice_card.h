#pragma once

#include "base/forms/panel.h"

class QLabel;

namespace tracksmith::forms {

class ElidedLabel;

/// One of the two voices that a picker compares: name, numbers, how sure the name is.
class PickerVoiceCard : public Panel {
    Q_OBJECT

public:
    /// What is shown.
    struct Content {
        QString caption;
        QString name;
        /// "8 · 34 · 1".
        QString numbers;
        /// How sure the name is, in a sentence.
        QString remark;
        /// A word for a name that is not sure; empty for others.
        QString mark;
    };

    explicit PickerVoiceCard(const char* objectName, QWidget* parent = nullptr);
    void Show(const Content& content);

private:
    QLabel* caption_;
    QLabel* mark_;
    QLabel* numbers_;
    ElidedLabel* name_;
    QLabel* remark_;
};

} // namespace tracksmith::forms
