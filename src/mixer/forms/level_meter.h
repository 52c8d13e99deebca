#pragma once

#include <QWidget>

namespace tracksmith::forms {

/// How loud a channel plays, with its peak of the last second. Only paints when a pixel changes.
class LevelMeter : public QWidget {
    Q_OBJECT

public:
    explicit LevelMeter(QWidget* parent);

    /// Shows a level, 0-127; to be called for every frame.
    void ShowLevel(unsigned level);
    /// Nothing plays any more.
    void Clear();
    unsigned Level() const { return level_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int Height(unsigned level) const;

    unsigned level_ = 0;
    unsigned peak_ = 0;
    int peakFrames_ = 0;
};

} // namespace tracksmith::forms
