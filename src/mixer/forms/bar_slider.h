#pragma once

#include "mixer/controls.h"
#include "mixer/forms/control_slider.h"

class QPainter;

namespace tracksmith::forms {

/// A control of a channel as a bar, with its short name and its value above. Controls with a middle
/// grow from there to both sides.
class BarSlider : public ControlSlider {
    Q_OBJECT

public:
    /// `channel` is 0-15.
    BarSlider(int channel, mixer::Control control, QWidget* parent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    QString TextOf(int value) const override;
    std::optional<int> ValueOf(const QString& text) const override;
    QRect TextPlace() const override;
    int Travel() const override { return BarPlace().width(); }
    std::optional<int> ValueAt(const QPoint& at) const override;
    void paintEvent(QPaintEvent* event) override;

private:
    QRect BarPlace() const;
    int LineHeight() const;
    void PaintBar(QPainter& painter) const;

    int channel_;
    mixer::Control control_;
};

} // namespace tracksmith::forms
