#pragma once

#include "mixer/forms/control_slider.h"

namespace tracksmith::forms {

/// By how many semitones a channel is transposed, in the head of its strip; "drums" on a drum part,
/// which is never transposed.
class TransposeBox : public ControlSlider {
    Q_OBJECT

public:
    explicit TransposeBox(QWidget* parent);

    /// Shows whether the channel plays drums.
    void ShowDrums(bool drums);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

protected:
    QString TextOf(int value) const override;
    std::optional<int> ValueOf(const QString& text) const override;
    QRect TextPlace() const override { return rect(); }
    int Travel() const override;
    std::optional<int> ValueAt(const QPoint& /*at*/) const override { return std::nullopt; }
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    bool drums_ = false;
};

} // namespace tracksmith::forms
