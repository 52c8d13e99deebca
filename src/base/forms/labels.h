#pragma once

#include <QLabel>

namespace tracksmith::forms {

/// A label for one line of text from a file: never rich text, shortened with an ellipsis where it
/// does not fit; the whole text is its accessible name.
class ElidedLabel : public QLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    /// Shows `text`, as much of it as fits.
    void SetFullText(const QString& text);

    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// A plain-text label named `objectName`.
QLabel* NewLabel(const char* objectName, QWidget* parent);

/// A small label in the colour of captions, shortened where it does not fit.
QLabel* NewCaption(const char* objectName, QWidget* parent);

} // namespace tracksmith::forms
