#pragma once

#include <string>

#include "base/forms/panel.h"
#include "base/text.h"

class QLabel;
class QPushButton;

namespace tracksmith::forms {

class MainMenu;

/// The instrument at the first output; pressing it opens the list of instruments.
class InstrumentBox : public Panel {
    Q_OBJECT

public:
    /// `menu` has the command that opens the list and must outlive the box.
    explicit InstrumentBox(MainMenu& menu, QWidget* parent = nullptr);

    /// Shows the chosen instrument; empty while none has been chosen.
    void ShowInstrument(const std::string& name);

    void Retranslate(Language language);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void Render();

    std::string name_;
    Language language_ = Language::English;
    QLabel* caption_;
    QPushButton* button_;
};

} // namespace tracksmith::forms
