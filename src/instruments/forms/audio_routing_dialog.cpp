#include "instruments/forms/audio_routing_dialog.h"

#include "base/forms/dialog_frame.h"
#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "instruments/forms/texts.h"

namespace tracksmith::forms {
namespace {

constexpr int kParts = 16;
constexpr int kRows = 8;

} // namespace

AudioRoutingDialog::AudioRoutingDialog(instruments::InstrumentSettings& settings,
                                       const std::string& instrument, Language language,
                                       QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("Dlg_AudioRouting"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(InLanguage(instrument_texts::kAudioRoutingTitle, language));
    AddColumn(*this);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(Gap());
    for (int part = 0; part < kParts; ++part) {
        const QString name = InLanguage(instrument_texts::kPart, language).arg(part + 1);
        auto* choice = new QComboBox;
        choice->setObjectName(QStringLiteral("CB_Part%1").arg(part, 2, 10, QLatin1Char('0')));
        choice->setAccessibleName(name);
        for (const instruments::AudioOutput& output : instruments::AudioOutputs(instrument)) {
            choice->addItem(ToQString(output.name), output.value);
        }
        const auto index = static_cast<std::size_t>(part);
        choice->setCurrentIndex(choice->findData(settings.ReadAudioOutput(instrument, index)));
        connect(choice, &QComboBox::activated, this, [this, choice, &settings, instrument, index] {
            const auto value = static_cast<std::uint8_t>(choice->currentData().toUInt());
            emit SettingStored(settings.WriteAudioOutput(instrument, index, value));
        });
        const int column = part / kRows * 2;
        grid->addWidget(new QLabel(name), part % kRows, column);
        grid->addWidget(choice, part % kRows, column + 1);
    }
    static_cast<QVBoxLayout*>(layout())->addLayout(grid);
    AddCloseButton(*this, language);
}

} // namespace tracksmith::forms
