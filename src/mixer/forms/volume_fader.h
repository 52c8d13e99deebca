#pragma once

#include <bitset>

#include <QColor>

#include "mixer/controls.h"
#include "mixer/forms/control_slider.h"

class QPainter;

namespace tracksmith::forms {

/// A volume fader with its value below. Triangles beside its scale mark the values that the song
/// sets elsewhere.
class VolumeFader : public ControlSlider {
    Q_OBJECT

public:
    /// Of a channel (0-15) in its colour; -1 for the master.
    VolumeFader(int channel, QWidget* parent);

    /// Other values of the song, and how many changes it has beside the one in effect.
    void SetChanges(const std::bitset<128>& values, std::size_t changes);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    /// The number of changes was pressed.
    void ChangesPressed(const QPoint& at);

protected:
    QString TextOf(int value) const override;
    std::optional<int> ValueOf(const QString& text) const override;
    QRect TextPlace() const override;
    int Travel() const override { return TrackPlace().height(); }
    std::optional<int> ValueAt(const QPoint& at) const override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    QRect TrackPlace() const;
    QRect HandlePlace() const;
    QRect ChangesPlace() const;
    int Y(int value) const;
    QColor Colour() const;
    void PaintScale(QPainter& painter) const;
    void PaintHandle(QPainter& painter) const;
    void PaintText(QPainter& painter) const;

    int channel_;
    std::bitset<128> values_;
    std::size_t changes_ = 0;
};

} // namespace tracksmith::forms
