#pragma once

#include <QDialog>

#include "instruments/forms/instrument_list.h"

namespace tracksmith::forms {

/// Asks which instrument is connected. Its object name is "Dlg_Instrument"; it deletes itself.
class InstrumentChooser : public QDialog {
    Q_OBJECT

public:
    /// `current` is the name of the instrument chosen so far.
    InstrumentChooser(std::string_view current, const InstrumentList::Remark& remark,
                      Language language, QWidget* parent);

signals:
    /// The user has decided for an instrument of the catalogue.
    void Chosen(const QString& name);

private:
    void Accept();

    InstrumentList* list_;
};

} // namespace tracksmith::forms
