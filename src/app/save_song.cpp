#include "app/save_song.h"

#include <system_error>

#include "base/system/file_io.h"

#include "app/texts.h"

namespace tracksmith::app {
namespace {

std::string FailureText(const system::WriteResult& result, const std::string& name,
                        std::size_t size, Language language) {
    switch (result.outcome) {
        case system::WriteOutcome::CreateFailed:
            return texts::CreateFailed(language, name);
        case system::WriteOutcome::Incomplete:
            return texts::SavedIncompletely(language, name, result.written, size);
        default:
            return texts::SaveFailed(language, name);
    }
}

} // namespace

std::span<const std::uint8_t> EncodeSong(Workspace& workspace, SaveFormat format,
                                         MessageHost& host) {
    const bool asFormat0 = format == SaveFormat::Format0 ||
                           (format == SaveFormat::AsSong && workspace.song.format == 0);
    return asFormat0 ? workspace.encoder.Format0(workspace.song, workspace.encodeOptions, host)
                     : workspace.encoder.Format1(workspace.song, workspace.encodeOptions, host);
}

void WriteMidiFile(const std::filesystem::path& file, std::span<const std::uint8_t> bytes,
                   MessageHost& host) {
    const system::WriteResult result = system::WriteFileAtomically(file, bytes);
    if (result.outcome != system::WriteOutcome::Written) {
        RaiseMidiError(host, FailureText(result, system::PathText(file), bytes.size(),
                                         host.CurrentLanguage()));
    }
}

void SaveMidiFile(Workspace& workspace, const std::filesystem::path& file, SaveFormat format,
                  MessageHost& host) {
    WriteMidiFile(file, EncodeSong(workspace, format, host), host);
    workspace.fileName = file;
    workspace.modified = false;
}

bool ConfirmOverwrite(const std::filesystem::path& file, MessageHost& host) {
    std::error_code error;
    return !std::filesystem::exists(file, error) ||
           host.AskYesNo(texts::OverwriteQuestion(host.CurrentLanguage(), system::PathText(file)));
}

} // namespace tracksmith::app
