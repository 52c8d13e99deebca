#pragma once

#include <vector>

#include "base/forms/panel.h"
#include <QColor>

class QLabel;
class QHBoxLayout;

namespace tracksmith::forms {

/// A titled list of what will happen, each line with a square in its colour.
class FigureLines : public Panel {
    Q_OBJECT

public:
    struct Line {
        QColor colour;
        QString text;
    };

    explicit FigureLines(QWidget* parent);

    /// The row of the title, for more beside it.
    QHBoxLayout& Head() const { return *head_; }
    /// Below the lines stands what there is more to say, for example names.
    struct More {
        QString caption;
        QString text;
        /// What becomes of the text; empty where it stays.
        QString after;
    };

    void Show(const QString& title, const std::vector<Line>& lines, const More& more = {});
    /// All lines, one below the other.
    QString Text() const;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void MakeRoom();
    QString MoreText(const More& more);

    QHBoxLayout* head_;
    QLabel* title_;
    QLabel* lines_;
    QString text_;
};

} // namespace tracksmith::forms
