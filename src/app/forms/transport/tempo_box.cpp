#include "app/forms/transport/tempo_box.h"

#include "base/forms/labels.h"
#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>

#include "app/forms/texts.h"
#include "app/forms/transport/session_signals.h"
#include "song/practice_tempo.h"

namespace tracksmith::forms {
namespace {

constexpr int kMostPercent = 1'000;

// Shows a value that the user has not just set. A number that is being typed stays.
void Show(QSpinBox& box, int value) {
    const bool typing = box.hasFocus() && box.cleanText() != QString::number(box.value());
    if (!typing && box.value() != value) {
        const QSignalBlocker silent(box);
        box.setValue(value);
    }
}

} // namespace

TempoBox::TempoBox(SessionSignals& session, QWidget* parent)
    : Panel(QPalette::Button, parent),
      session_(session),
      caption_(NewCaption("Lbl_TempoCaption", this)),
      bpm_(new QSpinBox),
      percent_(new QSpinBox) {
    bpm_->setObjectName(QStringLiteral("E_Tempo"));
    bpm_->setRange(song::kSlowestBpm, song::kFastestBpm);
    bpm_->setKeyboardTracking(false);
    bpm_->setFixedWidth(fontMetrics().horizontalAdvance(QStringLiteral("00000 BPM")) + 4 * Gap());
    bpm_->setSuffix(QStringLiteral(" BPM"));
    percent_->setObjectName(QStringLiteral("E_TempoPercent"));
    percent_->setRange(1, kMostPercent);
    percent_->setKeyboardTracking(false);
    percent_->setFixedWidth(fontMetrics().horizontalAdvance(QStringLiteral("1000 %")) + 4 * Gap());
    percent_->setSuffix(QStringLiteral(" %"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(Gap(), Gap() / 2, Gap(), Gap() / 2);
    column->setSpacing(0);
    column->addWidget(caption_);
    auto* row = new QHBoxLayout;
    row->setSpacing(Gap());
    row->addWidget(bpm_);
    row->addWidget(percent_);
    column->addLayout(row);
    connect(bpm_, &QSpinBox::valueChanged, this, &TempoBox::TakeTempo);
    connect(percent_, &QSpinBox::valueChanged, this, &TempoBox::TakePercent);
    connect(&session, &SessionSignals::TempoChanged, this, &TempoBox::ShowTempo);
    connect(&session, &SessionSignals::PlaceChanged, this, &TempoBox::ShowTempo);
}

void TempoBox::ShowTempo() {
    Show(*bpm_, session_.Controls().Bpm());
    Show(*percent_, session_.Controls().TempoPercent());
}

void TempoBox::TakeTempo() {
    session_.Controls().SetBpm(bpm_->value());
}

void TempoBox::TakePercent() {
    session_.Controls().SetTempoPercent(percent_->value());
}

void TempoBox::Retranslate(Language language) {
    caption_->setText(InLanguage(texts::kTempos, language));
    bpm_->setAccessibleName(InLanguage(texts::kTempoBpm, language));
    percent_->setAccessibleName(InLanguage(texts::kTempoPercent, language));
    percent_->setToolTip(InLanguage(texts::kTempoHint, language));
    bpm_->setToolTip(InLanguage(texts::kTempoHint, language));
}

} // namespace tracksmith::forms
