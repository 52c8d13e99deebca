#pragma once

#include "base/forms/panel.h"
#include "base/text.h"

class QLabel;
class QSpinBox;

namespace tracksmith::forms {

class SessionSignals;

/// The tempo at the current place, to be read and changed, and what it is of the file's in per
/// cent.
class TempoBox : public Panel {
    Q_OBJECT

public:
    explicit TempoBox(SessionSignals& session, QWidget* parent = nullptr);

    void Retranslate(Language language);

private:
    void ShowTempo();
    void TakeTempo();
    void TakePercent();

    SessionSignals& session_;
    QLabel* caption_;
    QSpinBox* bpm_;
    QSpinBox* percent_;
};

} // namespace tracksmith::forms
