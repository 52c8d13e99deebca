#pragma once

#include "editing/forms/figure_lines.h"
#include "editing/forms/range_form.h"

namespace tracksmith::forms {

class SeamView;

/// The common part of the windows whose tools join what did not follow on each other: the notes
/// around the seam, and what happens there.
class SeamForm : public RangeForm {
    Q_OBJECT

public:
    using RangeForm::RangeForm;

protected:
    void BuildDetails(QHBoxLayout& row) override;
    editing::SeamSpan HeardSpan(const editing::Foresight& foresight) const override;
    Text PreviewText() const override;
    void ShowHeardPlace(std::int32_t tick) override;

    /// Which of two seams is looked at.
    virtual bool AtEnd() const { return false; }
    /// Shows the seam; `note` stands behind its measure.
    void ShowSeam(const editing::Foresight& foresight, const QString& note, const QColor& colour);
    /// Shows `notes`, what happens at the seam, and `messages` where there are any.
    void ShowFigures(const editing::Foresight& foresight, const FigureLines::Line& notes,
                     const FigureLines::Line& messages);
    void ClearSeam();

private:
    SeamView* seam_ = nullptr;
};

} // namespace tracksmith::forms
