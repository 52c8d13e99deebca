#pragma once

#include <string>

#include "base/text.h"
#include <QDialog>

#include "instruments/instrument_settings.h"

namespace tracksmith::forms {

/// The audio outputs of the sixteen parts of an instrument, each stored at once. Object name
/// "Dlg_AudioRouting"; it deletes itself.
class AudioRoutingDialog : public QDialog {
    Q_OBJECT

public:
    /// `settings` must outlive the dialog.
    AudioRoutingDialog(instruments::InstrumentSettings& settings, const std::string& instrument,
                       Language language, QWidget* parent);

signals:
    /// An output was set; false when it could not be stored.
    void SettingStored(bool onDisk);
};

} // namespace tracksmith::forms
