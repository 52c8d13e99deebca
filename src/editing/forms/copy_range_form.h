#pragma once

#include "editing/forms/seam_form.h"

class QCheckBox;

namespace tracksmith::forms {

/// The window in which a range of measures is copied to another place of the song.
class TCopyRangeForm : public SeamForm {
    Q_OBJECT

public:
    TCopyRangeForm(session::Session& session, editing::RangeTools& tools, MessageHost& host,
                   RangeFormActions actions, const editing::RangeWish& wish, QWidget* parent);

    editing::RangeTool Tool() const override { return editing::RangeTool::Copy; }

protected:
    void BuildPositions(FlowLayout& row) override;
    void BuildDetails(QHBoxLayout& row) override;
    editing::RangeReading Check() const override;
    editing::Foresight Foresee() const override;
    void ShowForesight(const editing::Foresight& foresight) override;
    void ShowNothing() override;
    bool AtEnd() const override;
    QString ActText(const editing::RangeFigures& figures) const override;
    void ProcessData() override;

private:
    void AddSeamChoice();

    QCheckBox* state_ = nullptr;
    QPushButton* blockStart_ = nullptr;
    QPushButton* blockEnd_ = nullptr;
};

} // namespace tracksmith::forms
