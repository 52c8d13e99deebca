#include "app/forms/song_view.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "app/forms/channel_cards.h"
#include "app/forms/list_panel.h"
#include "app/forms/overview_widget.h"
#include "app/forms/position_display.h"
#include "app/forms/song_header.h"
#include "app/forms/song_rows.h"
#include "app/forms/texts.h"
#include "app/forms/theme.h"
#include "song/note_overview.h"
#include "song/song_position.h"

namespace tracksmith::forms {
namespace {

QString ClockPair(std::int64_t ms, std::int64_t lengthMs) {
    return ToQString(song::ClockText(ms)) + QStringLiteral(" / ") +
           ToQString(song::ClockText(lengthMs));
}

PositionDisplay::Place PlaceAt(const song::Song& song, std::int32_t tick, std::int64_t notes,
                               Language language) {
    const song::TimeZoneEntry& zone = song.timeZones[song::ZoneOfTick(song, tick)];
    return {ToQString(song::SongPositionToMTC(song, tick)),
            ClockPair(song::TickToMs(song, tick), song.lengthMs),
            QStringLiteral("%1/%2").arg(zone.numerator).arg(zone.denominator),
            QString::number(zone.bpm), NumberText(notes, language)};
}

} // namespace

SongView::SongView(const app::Workspace& workspace, QWidget* parent)
    : QWidget(parent),
      workspace_(workspace),
      header_(new SongHeader),
      overview_(new OverviewWidget),
      cards_(new ChannelCards),
      tracks_(new ListPanel("Table_Tracks", texts::kTracks, TrackColumns(), 1)),
      tempos_(new ListPanel("Table_Tempos", texts::kTempos, TempoColumns(), 0)),
      metres_(new ListPanel("Table_Metres", texts::kMetres, MetreColumns(), 0)) {
    auto* lists = new QHBoxLayout;
    lists->setSpacing(Gap());
    lists->addWidget(tracks_, 5);
    lists->addWidget(tempos_, 3);
    lists->addWidget(metres_, 3);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(Gap() * 3 / 2, Gap(), Gap() * 3 / 2, Gap());
    column->setSpacing(Gap());
    column->addWidget(header_);
    column->addWidget(overview_, 3);
    column->addWidget(cards_);
    column->addLayout(lists, 2);
    connect(overview_, &OverviewWidget::CursorMoved, this, &SongView::ShowCursor);
    connect(cards_, &ChannelCards::ChannelChosen, overview_, &OverviewWidget::SetChannel);
    for (const ListPanel* list : {tempos_, metres_}) {
        connect(list, &ListPanel::PlaceChosen, overview_, &OverviewWidget::SetCursorTick);
    }
}

void SongView::ShowSong(const QString& fileName) {
    fileName_ = fileName;
    description_ = app::DescribeSong(workspace_);
    header_->Position().Reserve(PlaceAt(workspace_.song, workspace_.song.songLength, 0, language_));
    ShowLists();
    cards_->ClearChoice();
    overview_->SetSong(song::MakeNoteOverview(workspace_.song), OverviewMarks(description_));
}

void SongView::ShowFileName(const QString& fileName) {
    fileName_ = fileName;
    header_->ShowSong(description_, fileName_, language_);
}

void SongView::ShowLists() {
    header_->ShowSong(description_, fileName_, language_);
    cards_->ShowChannels(description_.channels, language_);
    tracks_->SetRows(TrackRows(description_, language_));
    tempos_->SetRows(TempoRows(description_));
    metres_->SetRows(MetreRows(description_));
}

void SongView::ShowCursor() {
    if (workspace_.hasSong && !workspace_.song.timeZones.empty()) {
        header_->Position().ShowPlace(
            PlaceAt(workspace_.song, overview_->CursorTick(), overview_->CursorNotes(), language_));
    }
}

void SongView::Retranslate(Language language) {
    language_ = language;
    header_->Retranslate(language);
    overview_->Retranslate(language);
    for (ListPanel* list : {tracks_, tempos_, metres_}) {
        list->Retranslate(language);
    }
    ShowLists();
    ShowCursor();
}

} // namespace tracksmith::forms
