#include "app/forms/song/song_view.h"

#include <algorithm>

#include "base/forms/list_panel.h"
#include "base/forms/panel.h"
#include "base/forms/theme.h"
#include <QHBoxLayout>
#include <QScrollArea>
#include <QStackedWidget>
#include <QTabBar>
#include <QVBoxLayout>

#include "app/forms/lyrics/lyrics_band.h"
#include "app/forms/lyrics/lyrics_model.h"
#include "app/forms/menu/main_menu.h"
#include "app/forms/overview/overview_widget.h"
#include "app/forms/ports/routing_page.h"
#include "app/forms/song/instrument_box.h"
#include "app/forms/song/song_header.h"
#include "app/forms/song/song_rows.h"
#include "app/forms/song/voice_names.h"
#include "app/forms/texts.h"
#include "app/forms/transport/play_bar.h"
#include "app/forms/transport/position_display.h"
#include "app/forms/transport/session_signals.h"
#include "mixer/forms/strips_view.h"
#include "player/player.h"
#include "song/channel_state.h"
#include "song/note_overview.h"
#include "song/song_position.h"

namespace tracksmith::forms {
namespace {

constexpr int kPages = 4;
/// Behind the two pages of the strips.
constexpr int kRoutingPage = 2;

QString ClockPair(std::int64_t ms, std::int64_t lengthMs) {
    return ToQString(song::ClockText(ms)) + QStringLiteral(" / ") +
           ToQString(song::ClockText(lengthMs));
}

PositionDisplay::Place PlaceAt(const song::TimeMap& map, std::int32_t tick, std::int64_t notes,
                               Language language) {
    const song::TimeZoneEntry& zone = map.timeZones[song::ZoneOfTick(map, tick)];
    return {ToQString(song::SongPositionToMTC(map, tick)),
            ClockPair(song::TickToMs(map, tick), map.lengthMs),
            QStringLiteral("%1/%2").arg(zone.numerator).arg(zone.denominator),
            NumberText(notes, language)};
}

} // namespace

SongView::SongView(const session::Workspace& workspace, const VoiceNames& voices, MainMenu& menu,
                   SessionSignals& session, mixer::Mixer& mixer, QWidget* parent)
    : QWidget(parent),
      workspace_(workspace),
      voices_(voices),
      session_(session),
      playBar_(new PlayBar(menu, session)),
      header_(new SongHeader(menu.ActionOf("MMF_Health"))),
      overview_(new OverviewWidget),
      lyrics_(new LyricsModel(this)),
      band_(new LyricsBand(*lyrics_)),
      mixer_(mixer),
      strips_(new StripsView(mixer)),
      tracks_(new ListPanel("Table_Tracks", texts::kTracks, TrackColumns(), 1)),
      tempos_(new ListPanel("Table_Tempos", texts::kTempos, TempoColumns(), 0)),
      timeSignatures_(
          new ListPanel("Table_TimeSignatures", texts::kTimeSignatures, TimeSignatureColumns(), 0)),
      routing_(new RoutingPage(session)),
      pages_(new QTabBar),
      shown_(new QStackedWidget) {
    lyrics_->setObjectName(QStringLiteral("LyricsModel"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(Gap() * 3 / 2, Gap(), Gap() * 3 / 2, Gap());
    column->setSpacing(Gap());
    column->addWidget(playBar_);
    column->addWidget(NewScrollArea(BuildSong()), 1);
    Connect();
}

QWidget* SongView::BuildSong() {
    auto* song = new QWidget;
    auto* column = new QVBoxLayout(song);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Gap() * 2 / 3);
    pages_->setObjectName(QStringLiteral("Pages"));
    pages_->setDrawBase(false);
    pages_->setExpanding(false);
    for (int page = 0; page < kPages; ++page) {
        pages_->addTab(QString());
    }
    auto* row = new QHBoxLayout;
    row->setSpacing(Gap());
    row->addWidget(header_, 1);
    row->addWidget(pages_);
    column->addLayout(row);
    column->addWidget(overview_);
    column->addWidget(band_);
    shown_->addWidget(strips_);
    shown_->addWidget(NewScrollArea(routing_));
    shown_->addWidget(BuildLists());
    column->addWidget(shown_, 1);
    return song;
}

QWidget* SongView::BuildLists() {
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Gap());
    column->addWidget(header_->Facts());
    auto* lists = new QHBoxLayout;
    lists->setSpacing(Gap());
    lists->addWidget(tracks_, 5);
    lists->addWidget(tempos_, 3);
    lists->addWidget(timeSignatures_, 3);
    column->addLayout(lists, 1);
    return page;
}

// The first two pages are the strips with different controls.
void SongView::ShowPage(int page) {
    if (page < kRoutingPage) {
        strips_->SetPage(page == 0 ? StripPage::Mix : StripPage::Sound);
    }
    shown_->setCurrentIndex(std::max(0, page - kRoutingPage + 1));
}

void SongView::Connect() {
    connect(overview_, &OverviewWidget::PlaceChosen, &session_, &SessionSignals::MoveToTick);
    connect(overview_, &OverviewWidget::LoopChosen, &session_, &SessionSignals::SetLoop);
    connect(strips_, &StripsView::ChannelChosen, overview_, &OverviewWidget::SetChannel);
    connect(strips_, &StripsView::ChannelChosen, this, &SongView::ShowPlace); // its notes here
    connect(strips_, &StripsView::VoicePressed, this, &SongView::VoicePressed);
    connect(strips_, &StripsView::InsertWanted, this, &SongView::InsertWanted);
    connect(strips_, &StripsView::Refused, this, &SongView::Refused);
    connect(pages_, &QTabBar::currentChanged, this, &SongView::ShowPage);
    for (const ListPanel* list : {tempos_, timeSignatures_}) {
        connect(list, &ListPanel::PlaceChosen, &session_, &SessionSignals::MoveToTick);
    }
    connect(&session_, &SessionSignals::PlaceChanged, this, &SongView::ShowPlace);
    connect(&session_, &SessionSignals::TempoChanged, this, &SongView::ShowPlace);
    connect(&session_, &SessionSignals::LoopChanged, this, &SongView::ShowLoop);
}

void SongView::ShowSong(const QString& fileName) {
    fileName_ = fileName;
    description_ = app::DescribeSong(workspace_);
    playBar_->Position().Reserve(
        PlaceAt(workspace_.song, workspace_.song.songLength, 0, language_));
    ShowLists();
    strips_->ShowSong([this](int channel) { return VoiceOf(channel); });
    overview_->SetChannel(-1);
    overview_->SetSong(song::MakeNoteOverview(workspace_.song), OverviewMarks(description_));
    lyrics_->TakeSong(workspace_.song, lyricsEncoding_);
    ShowPlace();
    ShowLoop();
}

void SongView::SetLyricsEncoding(std::optional<TextEncoding> encoding) {
    if (encoding != lyricsEncoding_) {
        lyricsEncoding_ = encoding;
        lyrics_->TakeSong(workspace_.song, lyricsEncoding_);
    }
}

void SongView::ShowHealth(const std::optional<std::array<std::int64_t, 3>>& counts) {
    header_->ShowHealth(counts);
}

void SongView::FocusOverview() {
    overview_->setFocus(Qt::OtherFocusReason);
}

std::size_t SongView::ChosenChannel() const {
    return mixer_.CurrentChannel();
}

void SongView::ShowNextPage() {
    pages_->setCurrentIndex((pages_->currentIndex() + 1) % pages_->count());
}

void SongView::ShowFileName(const QString& fileName) {
    fileName_ = fileName;
    header_->ShowSong(description_, fileName_, language_);
    ShowMixer();
}

void SongView::ShowMixer() {
    strips_->ShowState();
}

void SongView::ShowLists() {
    header_->ShowSong(description_, fileName_, language_);
    tracks_->SetRows(TrackRows(description_, language_));
    tempos_->SetRows(TempoRows(description_));
    timeSignatures_->SetRows(TimeSignatureRows(description_));
}

ShownVoice SongView::VoiceOf(int channel) const {
    const auto line = std::ranges::find(description_.channels, channel,
                                        &app::SongDescription::ChannelLine::channel);
    return line == description_.channels.end() ? ShownVoice()
                                               : voices_.NameOf(InForce(*line), language_);
}

// The voice at the play position; before a channel's first one that which the song selects first.
app::SongDescription::ChannelLine SongView::InForce(app::SongDescription::ChannelLine line) const {
    const auto value = [](const player::ChannelsInEffect::Effect& effect) {
        return effect.value == song::kUnset
                   ? std::nullopt
                   : std::optional(static_cast<std::uint8_t>(effect.value));
    };
    const player::ChannelsInEffect& effects = session_.Controls().Player().InEffect();
    if (const auto program = value(effects.Program(line.channel))) {
        line.program = program;
        line.bankMsb = value(effects.ProgramBankMsb(line.channel));
        line.bankLsb = value(effects.ProgramBankLsb(line.channel));
    }
    return line;
}

// As they pass. Naming a voice costs more than looking whether it is another one.
void SongView::FollowVoices() {
    constexpr std::uint8_t kNone = 0xFF;
    for (const auto& line : description_.channels) {
        const auto now = InForce(line);
        const std::uint32_t voice =
            (static_cast<std::uint32_t>(now.program.value_or(kNone)) << 16U) |
            (static_cast<std::uint32_t>(now.bankMsb.value_or(kNone)) << 8U) |
            static_cast<std::uint32_t>(now.bankLsb.value_or(kNone));
        std::uint32_t& shown = shownVoices_.at(line.channel);
        if (voice != shown) {
            shown = voice;
            strips_->ShowVoice(line.channel, voices_.NameOf(now, language_));
        }
    }
}

void SongView::ShowVoices() {
    shownVoices_ = {};
    strips_->ShowVoices([this](int channel) { return VoiceOf(channel); });
}

void SongView::ShowInstrument(const std::string& name) {
    playBar_->Instrument().ShowInstrument(name);
    ShowVoices();
}

void SongView::ShowPlace() {
    const auto map = session_.Controls().Map();
    if (workspace_.hasSong && !map->timeZones.empty()) {
        const std::int32_t tick = session_.Controls().Tick();
        overview_->ShowPlace(tick);
        lyrics_->ShowTick(tick);
        strips_->ShowFrame();
        FollowVoices();
        playBar_->Position().ShowPlace(PlaceAt(*map, tick, overview_->CursorNotes(), language_));
    }
}

void SongView::ShowLoop() {
    const auto loop = session_.Controls().Loop().value_or(session::Transport::LoopRange{});
    overview_->ShowLoop(loop.startTick, loop.endTick, loop.on);
}

void SongView::Retranslate(Language language) {
    language_ = language;
    playBar_->Retranslate(language);
    header_->Retranslate(language);
    routing_->Retranslate(language);
    pages_->setAccessibleName(InLanguage(texts::kPages, language));
    int page = 0;
    for (const Text& text :
         {texts::kPageMix, texts::kPageSound, texts::kPageRouting, texts::kPageLists}) {
        pages_->setTabText(page++, InLanguage(text, language));
    }
    strips_->Retranslate(language);
    ShowVoices();
    overview_->Retranslate(language);
    band_->Retranslate(language);
    for (ListPanel* list : {tracks_, tempos_, timeSignatures_}) {
        list->Retranslate(language);
    }
    ShowLists();
    ShowPlace();
}

} // namespace tracksmith::forms
