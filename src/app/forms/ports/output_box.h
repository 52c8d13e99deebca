#pragma once

#include "base/forms/panel.h"
#include "base/text.h"

class QComboBox;
class QLabel;

namespace tracksmith::forms {

class SessionSignals;

/// The output that the song is played to, with its state.
class OutputBox : public Panel {
    Q_OBJECT

public:
    explicit OutputBox(SessionSignals& session, QWidget* parent = nullptr);

    void Retranslate(Language language);

private:
    void ShowOutputs();
    void TakeOutput(int index);

    SessionSignals& session_;
    Language language_ = Language::English;
    QLabel* caption_;
    QComboBox* choice_;
};

} // namespace tracksmith::forms
