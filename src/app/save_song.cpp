#include "app/save_song.h"

#include <system_error>

#include "base/system/file_io.h"
#include "base/system/reachable_path.h"
#include "base/system_reason.h"

#include "app/texts.h"
#include "song/practice_tempo.h"

namespace tracksmith::app {
namespace {

std::string OutcomeText(const system::WriteResult& result, const std::string& name,
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

/// A practice tempo can only be saved where a tempo event stands.
constexpr session::ChangeKind kFirstTempo{.name = Text{De{"Anfangstempo"}, En{"First Tempo"}},
                                          .playsOn = true};

// The system's reason stands on a line of its own.
std::string FailureText(const system::WriteResult& result, const std::string& name,
                        std::size_t size, Language language) {
    const std::string reason = SystemReason(result.error, language);
    return OutcomeText(result, name, size, language) + (reason.empty() ? "" : "\n" + reason);
}

} // namespace

std::span<const std::uint8_t> EncodeSong(session::Session& session, SaveFormat format,
                                         MessageHost& host) {
    const session::Workspace& work = session.Work();
    const SaveFormat chosen = format == SaveFormat::AsSong ? work.file.format : format;
    const bool asFormat0 =
        chosen == SaveFormat::Format0 || (chosen == SaveFormat::AsSong && work.song.format == 0);
    return asFormat0 ? session.Encoder().Format0(work.song, work.encodeOptions, host)
                     : session.Encoder().Format1(work.song, work.encodeOptions, host);
}

void WriteMidiFile(const std::filesystem::path& file, std::span<const std::uint8_t> bytes,
                   MessageHost& host) {
    const system::WriteResult result = system::WriteFileAtomically(file, bytes);
    if (result.outcome != system::WriteOutcome::Written) {
        RaiseMidiError(host, FailureText(result, system::PathText(file), bytes.size(),
                                         host.CurrentLanguage()));
    }
}

void SaveMidiFile(session::Session& session, const std::filesystem::path& file, SaveFormat format,
                  MessageHost& host) {
    if (session.HearsOther()) {
        session.Controls().Hear(nullptr);
    }
    if (session.TempoOffset() != 0 && !song::BeginsWithTempo(session.Song())) {
        session.Change(kFirstTempo, host, [](session::Workspace& workspace) {
            song::InsertFirstTempo(workspace.song, song::kDefaultTempo);
            return true;
        });
    }
    WriteMidiFile(file, EncodeSong(session, format, host), host);
    session.MarkSaved(file, format == SaveFormat::AsSong ? session.Work().file.format : format);
}

bool ConfirmOverwrite(const std::filesystem::path& file, MessageHost& host) {
    std::error_code error;
    return !std::filesystem::exists(system::ReachablePath(file), error) ||
           host.AskYesNo(texts::OverwriteQuestion(host.CurrentLanguage(), system::PathText(file)));
}

} // namespace tracksmith::app
