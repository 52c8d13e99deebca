#pragma once

#include <array>
#include <bitset>

#include "base/text.h"
#include <QWidget>

#include "app/connection_test.h"

namespace tracksmith::forms {

/// Sixteen lamps, one for each channel, that are lit while keys are held at the instrument, and the
/// last key in words.
class KeyLamps : public QWidget {
    Q_OBJECT

public:
    explicit KeyLamps(Language language, QWidget* parent = nullptr);

    /// Shows a key that begins or ends.
    void ShowKey(const app::PlayedKey& key);
    /// Says what went wrong, in place of the last key.
    void SayTrouble(const QString& text) { Say(text); }
    /// Forgets all keys; says whether there is an input that could bring some.
    void Clear(bool hasInput);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void Say(const QString& text);

    Language language_;
    QString text_;
    std::array<std::bitset<128>, 16> held_;
};

} // namespace tracksmith::forms
