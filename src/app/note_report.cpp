#include "app/note_report.h"

#include <cstdint>
#include <span>
#include <string>
#include <system_error>

#include "app/save_song.h"
#include "song/note_balance.h"

namespace tracksmith::app {

std::filesystem::path NoteReportFile(const std::filesystem::path& folder,
                                     const std::filesystem::path& file) {
    std::filesystem::path name = file.stem();
    name += song::kBalanceFileEnding;
    return folder / name;
}

bool WriteNoteReport(const session::Workspace& workspace, const std::filesystem::path& file,
                     MessageHost& host) {
    const song::BalanceReport report = song::CheckForNoteOnsNoteOffs(workspace.song);
    if (report.Balanced()) {
        return false;
    }
    const std::string text = song::BalanceText(workspace.song, report, host.CurrentLanguage());
    std::error_code ignored; // writing reports what cannot be created
    std::filesystem::create_directories(file.parent_path(), ignored);
    WriteMidiFile(file, std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()),
                  host);
    return true;
}

} // namespace tracksmith::app
