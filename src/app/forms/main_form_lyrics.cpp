#include <optional>

#include "base/display_text.h"
#include "base/system/file_io.h"

#include "app/forms/lyrics/lyrics_page.h"
#include "app/forms/main_form.h"
#include "app/forms/menu/command_ids.h"
#include "app/forms/menu/main_menu.h"
#include "app/forms/menu/menu_areas.h"
#include "app/forms/song/song_view.h"

// The words and chords of the song.

namespace tracksmith::forms {
namespace {

// The songs that were made in the window share one name, and so do all copies of a file.
std::string NameOf(const session::FileState& file) {
    return system::PathText(file.source.filename());
}

std::optional<TextEncoding> EncodingOf(int row) {
    return row == 0 ? std::nullopt : std::optional(static_cast<TextEncoding>(row - 1));
}

} // namespace

// The keys of playing work there, too.
void TMainForm::MMV_LyricsPageClick() {
    if (lyricsPage_ != nullptr) {
        lyricsPage_->close();
        return;
    }
    lyricsPage_ = new LyricsPage(songView_->Lyrics(), host_.CurrentLanguage(), this);
    for (const std::string_view id :
         {commands::kLyricsPage, commands::kPlayStop, commands::kMoveToStart,
          commands::kMeasureBack, commands::kMeasureForward, commands::kLooping,
          commands::kPanic}) {
        lyricsPage_->addAction(&menu_->ActionOf(id));
    }
    lyricsPage_->ShowLarge();
}

void TMainForm::MMV_LyricsEncodingClick() {
    const int row = menu_->Chosen(kLyricsEncodingMenu);
    if (session_.HasSong()) {
        settings_.WriteLyricsEncoding(NameOf(session_.Work().file), row);
        songView_->SetLyricsEncoding(EncodingOf(row));
    }
}

// As it was chosen for the song before.
void TMainForm::ChooseLyricsEncoding() {
    const int row = settings_.ReadLyricsEncoding(NameOf(session_.Work().file));
    const bool known = row >= 0 && row < static_cast<int>(kLyricsEncodingMenu.rows.size());
    menu_->Choose(kLyricsEncodingMenu, known ? row : 0);
    songView_->SetLyricsEncoding(EncodingOf(known ? row : 0));
}

} // namespace tracksmith::forms
