#pragma once

#include <optional>

#include "editing/forms/range_form.h"

class QComboBox;
class QRadioButton;
class QTableWidget;

namespace tracksmith::forms {

class NumberField;

/// The window in which the notes of a range of measures are moved by semitones.
class TTransposeRangeForm : public RangeForm {
    Q_OBJECT

public:
    TTransposeRangeForm(session::Session& session, editing::RangeTools& tools, MessageHost& host,
                        RangeFormActions actions, const editing::RangeWish& wish, QWidget* parent);

    editing::RangeTool Tool() const override { return editing::RangeTool::Transpose; }

protected:
    void BuildPositions(FlowLayout& row) override;
    void BuildDetails(QHBoxLayout& row) override;
    editing::RangeReading Check() const override;
    editing::Foresight Foresee() const override;
    void ShowForesight(const editing::Foresight& foresight) override;
    void ShowNothing() override;
    editing::SeamSpan HeardSpan(const editing::Foresight& foresight) const override;
    Text PreviewText() const override;
    void ShowHeardPlace(std::int32_t tick) override;
    QString ActText(const editing::RangeFigures& figures) const override;
    void ProcessData() override;

private:
    void FillChannels();
    void StepSemitones(int steps);
    /// A channel has been chosen from the list.
    void CB_OnlyOnChannelChange();
    editing::Transposing Transposing() const;
    void PutRow(std::size_t channel, const editing::ChannelMove& move);

    NumberField* semitones_ = nullptr;
    QRadioButton* all_ = nullptr;
    QRadioButton* only_ = nullptr;
    QComboBox* channels_ = nullptr;
    QTableWidget* table_ = nullptr;
};

} // namespace tracksmith::forms
