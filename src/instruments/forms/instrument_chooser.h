#pragma once

#include <string>
#include <vector>

#include <QDialog>

#include "instruments/forms/instrument_list.h"
#include "instruments/instrument_settings.h"

class QComboBox;
class QPushButton;

namespace tracksmith::forms {

/// An output that an instrument is connected to.
struct InstrumentOutput {
    /// Its product name in the settings, empty for the output of all channels.
    std::string productName;
    /// The name to show.
    QString label;
};

/// Asks which instrument is connected, with several outputs to which of them. Its object name is
/// "Dlg_Instrument"; it deletes itself.
class InstrumentChooser : public QDialog {
    Q_OBJECT

public:
    /// `settings` tells the instruments chosen so far and must outlive the dialog; `outputs` has at
    /// least one.
    InstrumentChooser(instruments::InstrumentSettings& settings,
                      std::vector<InstrumentOutput> outputs, const InstrumentList::Remark& remark,
                      Language language, QWidget* parent);

signals:
    /// Another instrument of an output was stored; false when that failed.
    void Stored(const QString& productName, bool onDisk);

private:
    void AddOutputs(Language language);
    void FitToScreen();
    void AddButtons(Language language);
    void ShowOutput();
    void TakeChoice();

    instruments::InstrumentSettings& settings_;
    std::vector<InstrumentOutput> outputs_;
    QComboBox* output_;
    InstrumentList* list_;
    QPushButton* choose_;
};

} // namespace tracksmith::forms
