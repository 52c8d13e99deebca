#include "app/forms/song/song_header.h"

#include "base/forms/labels.h"
#include "base/forms/panel.h"
#include "base/forms/theme.h"
#include <QAction>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/forms/health/severity_icon.h"
#include "app/forms/health/texts.h"
#include "app/forms/texts.h"
#include "app/forms/transport/value_box.h"
#include "song/song_position.h"

namespace tracksmith::forms {
namespace {

// "1", or "1 (file 0)" where loading has changed the format.
QString FormatText(const app::SongDescription& song, Language language) {
    static constexpr Text kWithFile{De{"%1 (Datei %2)"}, En{"%1 (file %2)"}};
    return song.format == song.fileFormat
               ? QString::number(song.format)
               : InLanguage(kWithFile, language).arg(song.format).arg(song.fileFormat);
}

} // namespace

SongHeader::SongHeader(QAction& health, QWidget* parent)
    : QWidget(parent),
      health_(new QPushButton),
      title_(new ElidedLabel),
      fileName_(new ElidedLabel),
      format_(new ValueBox("Lbl_Format", texts::kFormat, 1, false)),
      division_(new ValueBox("Lbl_Division", texts::kDivision, 1, false)),
      tracks_(new ValueBox("Lbl_TrackCount", texts::kTracks, 1, false)),
      length_(new ValueBox("Lbl_Length", texts::kLength, 1, false)),
      facts_{format_, division_, tracks_, length_},
      panel_(new Panel(QPalette::Button)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Gap());
    row->addWidget(BuildNames(), 1);
    health_->setObjectName(QStringLiteral("Btn_Health"));
    connect(health_, &QPushButton::clicked, &health, &QAction::trigger);
    row->addWidget(health_);
    auto* inside = new QHBoxLayout(panel_);
    inside->setContentsMargins(Gap() * 3 / 2, Gap() / 2, Gap() * 3 / 2, Gap() / 2);
    inside->setSpacing(Gap() * 2);
    for (ValueBox* box : facts_) {
        inside->addWidget(box);
    }
    inside->addStretch(1);
}

QWidget* SongHeader::BuildNames() {
    auto* names = new QWidget;
    auto* row = new QHBoxLayout(names);
    row->setContentsMargins(0, 0, Gap(), 0);
    row->setSpacing(Gap() * 2);
    title_->setObjectName(QStringLiteral("Lbl_SongName"));
    title_->setFont(ScaledFont(title_->font(), 1.5));
    fileName_->setObjectName(QStringLiteral("Lbl_FileName"));
    fileName_->setForegroundRole(QPalette::PlaceholderText);
    row->addWidget(title_, 0, Qt::AlignVCenter);
    row->addWidget(fileName_, 1, Qt::AlignVCenter);
    return names;
}

void SongHeader::ShowSong(const app::SongDescription& song, const QString& fileName,
                          Language language) {
    title_->SetFullText(ToQString(song.title));
    fileName_->SetFullText(fileName);
    format_->SetValue(FormatText(song, language));
    division_->SetValue(QString::number(song.division));
    tracks_->SetValue(NumberText(static_cast<std::int64_t>(song.tracks.size()), language));
    length_->SetValue(ToQString(song.lengthPosition) + QStringLiteral(" · ") +
                      ToQString(song::ClockText(song.lengthMs)));
}

void SongHeader::ShowHealth(const std::optional<std::array<std::int64_t, 3>>& counts) {
    findings_ = counts;
    ShowHealthText();
}

// The worst sign stands beside the number of errors and warnings.
void SongHeader::ShowHealthText() {
    using health::Severity;
    if (!findings_) {
        health_->setText(InLanguage(health_texts::kHealthCounting, language_));
        health_->setIcon(QIcon());
        return;
    }
    const auto& [errors, warnings, hints] = *findings_;
    const std::int64_t faults = errors + warnings;
    health_->setText(faults == 0 ? InLanguage(health_texts::kHealthGood, language_)
                                 : InLanguage(health_texts::kHealthButton, language_).arg(faults));
    health_->setIcon(
        faults == 0 ? QIcon()
                    : SeverityIcon(errors > 0 ? Severity::Error : Severity::Warning, palette()));
}

void SongHeader::Retranslate(Language language) {
    language_ = language;
    ShowHealthText();
    for (ValueBox* box : facts_) {
        box->Retranslate(language);
    }
}

} // namespace tracksmith::forms
