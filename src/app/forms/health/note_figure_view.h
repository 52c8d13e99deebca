#pragma once

#include <vector>

#include <QWidget>

#include "app/health/note_figure.h"

namespace tracksmith::forms {

/// A few notes of one channel by pitch and time; those that a repair changes are brought out by
/// colour and frame.
class NoteFigureView : public QWidget {
    Q_OBJECT

public:
    explicit NoteFigureView(QWidget* parent = nullptr);

    /// Shows the notes as they are, or as they would be with `after`.
    void Show(const health::NoteFigure& figure, bool after, int channel);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint() / 2; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QRectF BarOf(const health::FigureNote& note, const QRectF& room) const;

    std::vector<health::FigureNote> notes_;
    std::int32_t from_ = 0;
    std::int32_t to_ = 1;
    /// The lowest and highest key of both figures, so that they can be compared.
    int low_ = 0;
    int high_ = 0;
    int channel_ = 0;
};

} // namespace tracksmith::forms
