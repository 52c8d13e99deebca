#pragma once

#include <functional>
#include <memory>
#include <string>

#include "base/text.h"
#include <QWidget>

#include "app/connection_test.h"

class QPushButton;
class QTimer;

namespace tracksmith::forms {

class KeyLamps;

/// Lamps for the keys that come from the instrument, and a button, which is placed elsewhere, that
/// sounds a note on it. Listens while it is shown.
class KeyTest : public QWidget {
    Q_OBJECT

public:
    /// Product names of the chosen ports, asked for anew each time; the input is empty for none.
    struct Around {
        std::function<std::string()> output;
        std::function<std::string()> input;
    };

    /// The connection test may end before the widget.
    KeyTest(const std::shared_ptr<app::ConnectionTest>& test, Around around, Language language,
            QWidget* parent = nullptr);
    /// Ends the note and the listening.
    ~KeyTest() override;

    QPushButton* NoteButton() const { return note_; }

    /// Listens at the input that fits now: the ports or the choice have changed.
    void Listen();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void Sound();
    void EndNote();

    std::weak_ptr<app::ConnectionTest> test_;
    Around around_;
    Language language_;
    QPushButton* note_;
    QTimer* timer_;
    KeyLamps* lamps_;
};

} // namespace tracksmith::forms
