#pragma once

#include <string>
#include <utility>
#include <vector>

#include <QDialog>

#include "instruments/forms/instrument_chooser.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QSpinBox;

namespace tracksmith::forms {

/// The settings window of the instruments: which instrument is connected to each output, and how
/// songs are prepared for it. Settings that the instrument does not have are greyed out with the
/// reason as their hint. What is set is stored at once. Object name "OptionsForm".
class TOptionsForm : public QDialog {
    Q_OBJECT

public:
    /// `settings` must outlive the window; `outputs` has at least one.
    TOptionsForm(instruments::InstrumentSettings& settings, std::vector<InstrumentOutput> outputs,
                 const InstrumentList::Remark& remark, Language language, QWidget* parent);

    /// The instrument of the chosen output has been chosen: stores it and shows which settings it
    /// has.
    void CB_InstrumentChange();

signals:
    /// Another instrument of the output with this product name was stored.
    void InstrumentStored(const QString& productName);
    /// Another setting was stored.
    void SettingStored();

private:
    QWidget* BuildInstruments();
    QWidget* BuildSettings();
    void AddSwitches(QLayout& column, bool forAll);
    void AddSysexTrack(QLayout& column);
    void AddRolandMap(QLayout& column);
    void AddLimexTe200(QLayout& column);
    void AddAudioRouting(QLayout& column);

    void ShowOutput();
    void ShowSettings();
    void ShowAvailable(QWidget& control, instruments::Capability capability, const Text& hint);
    void ShowAudioRouting();
    void ShowRolandMaps();
    void EditAudioRouting();
    void Stored(bool onDisk);
    const InstrumentOutput& ChosenOutput() const;
    QString Say(const Text& text) const;

    instruments::InstrumentSettings& settings_;
    std::vector<InstrumentOutput> outputs_;
    Language language_;
    std::string instrument_;
    QComboBox* output_;
    InstrumentList* list_;
    std::vector<std::pair<QCheckBox*, const instruments::SysexSwitch*>> switches_;
    QSpinBox* track_;
    QComboBox* rolandMap_;
    QCheckBox* limexTe200_;
    QPushButton* audioRouting_;
    QLabel* trouble_;
};

} // namespace tracksmith::forms
