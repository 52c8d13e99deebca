#pragma once

#include "editing/forms/seam_form.h"

namespace tracksmith::forms {

/// The window in which a range of measures is cut out of the song.
class TDeleteRangeForm : public SeamForm {
    Q_OBJECT

public:
    TDeleteRangeForm(session::Session& session, editing::RangeTools& tools, MessageHost& host,
                     RangeFormActions actions, const editing::RangeWish& wish, QWidget* parent);

    editing::RangeTool Tool() const override { return editing::RangeTool::Delete; }

protected:
    void BuildPositions(FlowLayout& row) override;
    editing::RangeReading Check() const override;
    editing::Foresight Foresee() const override;
    void ShowForesight(const editing::Foresight& foresight) override;
    void ShowNothing() override;
    QString ActText(const editing::RangeFigures& figures) const override;
    void ProcessData() override;

private:
    QLabel* length_ = nullptr;
};

} // namespace tracksmith::forms
