#pragma once

#include <QAbstractButton>

namespace tracksmith::forms {

/// The lamp of a strip for mute or solo: off, on, or underlined where the channel is silent because
/// others are solo.
class LampButton : public QAbstractButton {
    Q_OBJECT

public:
    enum class Kind { Mute, Solo };

    LampButton(Kind kind, QWidget* parent);

    void ShowLamp(bool on, bool underlined);
    bool Underlined() const { return underlined_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    /// Pressed by the left button or the keyboard.
    void LampPressed(bool ctrl);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    Kind kind_;
    bool underlined_ = false;
};

} // namespace tracksmith::forms
