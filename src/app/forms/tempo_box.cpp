#include "app/forms/tempo_box.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>

#include "app/forms/labels.h"
#include "app/forms/play_desk.h"
#include "app/forms/qt_text.h"
#include "app/forms/texts.h"
#include "app/forms/theme.h"

namespace tracksmith::forms {
namespace {

constexpr int kSlowest = 25;
constexpr int kFastest = 65'535;

} // namespace

TempoBox::TempoBox(PlayDesk& desk, QWidget* parent)
    : Panel(QPalette::Button, parent),
      desk_(desk),
      caption_(NewCaption("Lbl_TempoCaption", this)),
      bpm_(new QSpinBox),
      percent_(NewLabel("Lbl_TempoPercent", this)) {
    bpm_->setObjectName(QStringLiteral("E_Tempo"));
    bpm_->setRange(kSlowest, kFastest);
    bpm_->setKeyboardTracking(false);
    bpm_->setFixedWidth(fontMetrics().horizontalAdvance(QStringLiteral("00000 BPM")) + 4 * Gap());
    bpm_->setSuffix(QStringLiteral(" BPM"));
    percent_->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("1000 %")));
    percent_->setForegroundRole(QPalette::PlaceholderText);
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
    connect(&desk, &PlayDesk::TempoChanged, this, &TempoBox::ShowTempo);
    connect(&desk, &PlayDesk::PlaceChanged, this, &TempoBox::ShowTempo);
}

void TempoBox::ShowTempo() {
    const QSignalBlocker silent(bpm_);
    // A number that is being typed stays.
    const bool typing = bpm_->hasFocus() && bpm_->cleanText() != QString::number(bpm_->value());
    if (!typing && bpm_->value() != desk_.Bpm()) {
        bpm_->setValue(desk_.Bpm());
    }
    percent_->setText(QStringLiteral("%1 %").arg(desk_.TempoPercent()));
}

void TempoBox::TakeTempo() {
    desk_.ChangeTempo(bpm_->value() - desk_.Bpm());
}

void TempoBox::Retranslate(Language language) {
    caption_->setText(InLanguage(texts::kTempos, language));
    bpm_->setAccessibleName(InLanguage(texts::kTempoBpm, language));
    bpm_->setToolTip(InLanguage(texts::kTempoHint, language));
}

} // namespace tracksmith::forms
