#pragma once

#include <optional>

#include "base/text.h"
#include <QAbstractSlider>
#include <QPointer>

class QLineEdit;

namespace tracksmith::forms {

/// A control of a strip: dragged from where it stands, with Shift in fine steps; turned by the
/// wheel only where the focus is; typed as a value. What the user does is told by Moved, what
/// SetShown shows is not.
class ControlSlider : public QAbstractSlider {
    Q_OBJECT

public:
    explicit ControlSlider(QWidget* parent);

    /// Shows a value. `hollow`: the song never sets it; `live`: moving it is heard.
    void SetShown(int value, bool hollow, bool live);
    bool Hollow() const { return hollow_; }
    bool Live() const { return live_; }
    void SetLanguage(Language language);

    /// Opens a field in place of the value's text, beginning with `text`.
    void TypeValue(const QString& text = {});

signals:
    /// The user has given the control a value.
    void Moved(int value);
    /// The user wants the file's value back.
    void ResetWanted();
    /// The user wants the control's menu, at a place of the screen.
    void MenuWanted(const QPoint& at);
    /// The user has let go of a control that the song never sets.
    void HollowMoved();

protected:
    /// The value as text, and what a text means.
    virtual QString TextOf(int value) const = 0;
    virtual std::optional<int> ValueOf(const QString& text) const = 0;
    /// Where the value's text stands.
    virtual QRect TextPlace() const = 0;
    /// Pixels over which the whole range is dragged, upwards or to the right.
    virtual int Travel() const = 0;
    /// The value at a place of the track; nothing where a press does not jump.
    virtual std::optional<int> ValueAt(const QPoint& at) const = 0;
    /// The text to show: a dash where the song never sets the control.
    QString ShownText() const;
    Language InForce() const { return language_; }

    void sliderChange(SliderChange change) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void TakeTyped();
    void MoveBy(double steps);

    bool hollow_ = true;
    bool live_ = false;
    bool showing_ = false;
    bool dragging_ = false;
    QPoint last_;
    double exact_ = 0;
    int wheel_ = 0;
    Language language_ = Language::English;
    QPointer<QLineEdit> editor_;
};

} // namespace tracksmith::forms
