#pragma once

#include <vector>

#include "base/forms/rows_model.h"
#include "base/text.h"

#include "app/song_description.h"
#include "song/forms/overview_scene.h"

namespace tracksmith::forms {

/// The columns and rows of the track table: number, name, channel, events, notes.
std::vector<RowsColumn> TrackColumns();
std::vector<Row> TrackRows(const app::SongDescription& song, Language language);

/// The columns and rows of the tempo list: position, time, quarter notes per minute.
std::vector<RowsColumn> TempoColumns();
std::vector<Row> TempoRows(const app::SongDescription& song);

/// The columns and rows of the list of time signatures: position, time, time signature.
std::vector<RowsColumn> TimeSignatureColumns();
std::vector<Row> TimeSignatureRows(const app::SongDescription& song);

/// Tempo and time signature changes for the overview's ruler, one mark a place.
std::vector<OverviewMark> OverviewMarks(const app::SongDescription& song);

} // namespace tracksmith::forms
