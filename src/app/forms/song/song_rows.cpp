#include "app/forms/song/song_rows.h"

#include <map>

#include "base/forms/qt_text.h"

#include "app/forms/texts.h"
#include "song/song_position.h"

namespace tracksmith::forms {
namespace {

constexpr std::uint8_t kNoChannel = 0xFF;

QString TimeSignatureText(const app::SongDescription::TimeSignatureLine& line) {
    return QStringLiteral("%1/%2").arg(line.numerator).arg(line.denominator);
}

Row TrackRow(const app::SongDescription::TrackLine& track, std::size_t number, Language language) {
    QString name = ToQString(track.name);
    if (track.ignored) {
        name += QStringLiteral(" – ") + InLanguage(texts::kIgnored, language);
    }
    const bool hasChannel = track.channel != kNoChannel;
    Row row;
    row.cells = {QString::number(number), name,
                 hasChannel ? QString::number(track.channel + 1) : QStringLiteral("–"),
                 NumberText(track.events, language), NumberText(track.notes, language)};
    row.swatchChannel = hasChannel ? track.channel : -1;
    row.swatchColumn = 2;
    row.dimmed = track.ignored;
    return row;
}

Row PlaceRow(const std::string& position, std::int64_t timeMs, std::int32_t tick,
             const QString& value) {
    Row row;
    row.cells = {ToQString(position), ToQString(song::ClockText(timeMs)), value};
    row.tick = tick;
    return row;
}

} // namespace

std::vector<RowsColumn> TrackColumns() {
    return {{texts::kNumber, true},
            {texts::kName},
            {texts::kChannel},
            {texts::kEvents, true},
            {texts::kNotes, true}};
}

std::vector<Row> TrackRows(const app::SongDescription& song, Language language) {
    std::vector<Row> rows;
    for (const auto& track : song.tracks) {
        rows.push_back(TrackRow(track, rows.size() + 1, language));
    }
    return rows;
}

std::vector<RowsColumn> TempoColumns() {
    return {{texts::kPlace}, {texts::kClock, true}, {texts::kBpm, true}};
}

std::vector<Row> TempoRows(const app::SongDescription& song) {
    std::vector<Row> rows;
    for (const auto& line : song.tempos) {
        rows.push_back(PlaceRow(line.position, line.timeMs, line.tick, QString::number(line.bpm)));
    }
    return rows;
}

std::vector<RowsColumn> TimeSignatureColumns() {
    return {{texts::kPlace}, {texts::kClock, true}, {texts::kTimeSignatures, true}};
}

std::vector<Row> TimeSignatureRows(const app::SongDescription& song) {
    std::vector<Row> rows;
    for (const auto& line : song.timeSignatures) {
        rows.push_back(PlaceRow(line.position, line.timeMs, line.tick, TimeSignatureText(line)));
    }
    return rows;
}

std::vector<OverviewMark> OverviewMarks(const app::SongDescription& song) {
    std::map<std::int32_t, QStringList> byTick;
    for (const auto& line : song.tempos) {
        byTick[line.tick] << QStringLiteral("♩=%1").arg(line.bpm);
    }
    for (const auto& line : song.timeSignatures) {
        byTick[line.tick] << TimeSignatureText(line);
    }
    std::vector<OverviewMark> marks;
    marks.reserve(byTick.size());
    for (const auto& [tick, parts] : byTick) {
        marks.push_back({tick, parts.join(QStringLiteral(" · "))});
    }
    return marks;
}

} // namespace tracksmith::forms
