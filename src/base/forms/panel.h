#pragma once

#include <QFrame>
#include <QPalette>

class QScrollArea;

namespace tracksmith::forms {

/// A framed area with rounded corners and a thin border, in the colour of a palette role. The
/// border takes the accent colour while the keyboard focus is inside.
class Panel : public QFrame {
    Q_OBJECT

public:
    /// `ground` is the palette role that fills the panel.
    explicit Panel(QPalette::ColorRole ground, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPalette::ColorRole ground_;
};

/// An area without a frame that shows `content`, with scroll bars where it does not fit.
QScrollArea* NewScrollArea(QWidget* content);

} // namespace tracksmith::forms
