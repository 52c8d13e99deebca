#include "app/revoice_folder.h"

#include <algorithm>
#include <exception>
#include <memory>
#include <span>
#include <system_error>
#include <utility>

#include "base/errors.h"
#include "base/recording_message_host.h"
#include "base/system/reachable_path.h"
#include "base/system_reason.h"

#include "app/error_words.h"
#include "app/load_sequence.h"
#include "app/output_names.h"
#include "app/save_song.h"
#include "app/song_folder.h"
#include "app/texts.h"

namespace tracksmith::app {
namespace {

namespace fs = std::filesystem;

bool Exists(const fs::path& file) {
    std::error_code error;
    return fs::exists(system::ReachablePath(file), error);
}

// An ending separator would count as one more, empty, part.
fs::path PlainFolder(const fs::path& folder) {
    const fs::path plain = PlainPath(folder);
    return plain.has_filename() ? plain : plain.parent_path();
}

} // namespace

std::optional<FolderFault> FaultOf(const fs::path& source, const fs::path& target) {
    std::error_code error;
    if (source.empty() || !fs::is_directory(system::ReachablePath(source), error)) {
        return FolderFault::NoSource;
    }
    if (target.empty() ||
        (Exists(target) && !fs::is_directory(system::ReachablePath(target), error))) {
        return FolderFault::NoTarget;
    }
    const fs::path from = PlainFolder(source);
    const fs::path to = PlainFolder(target);
    if (from == to) {
        return FolderFault::SameFolder;
    }
    const auto [end, inner] = std::mismatch(from.begin(), from.end(), to.begin(), to.end());
    return end == from.end() ? std::optional(FolderFault::TargetInSource) : std::nullopt;
}

FolderRevoicing::FolderRevoicing(FolderOrder order, const instruments::VoiceTables& tables,
                                 Language language)
    : order_(std::move(order)), tables_(tables), language_(language) {
    order_.options.sysexOptions.automatic = false;
    order_.options.noteLength = {};
}

void FolderRevoicing::Find() {
    const SongFolder found = FindSongs(order_.source);
    for (const UnreadFolder& folder : found.unread) {
        result_.failed.push_back({folder.folder, SystemReason(folder.error, language_)});
    }
    std::vector<fs::path> inputs;
    for (const SongInFolder& song : found.songs) {
        inputs.push_back(song.path);
    }
    OutputNames names(order_.target, inputs);
    for (const SongInFolder& song : found.songs) {
        const fs::path target = names.Next(song.relative);
        jobs_.push_back({song.path, target, names.IsInput(target)});
        existing_ += Exists(target) ? 1U : 0U;
    }
}

FolderResult FolderRevoicing::Run(bool replace) {
    if (cancelled_) {
        result_.cancelled = true;
        return std::move(result_);
    }
    std::error_code fault;
    fs::create_directories(system::ReachablePath(order_.target), fault);
    if (fault) { // once, not for every song
        result_.failed = {{order_.target, SystemReason(fault, language_)}};
        return std::move(result_);
    }
    std::unique_ptr<session::Session> session;
    for (const Job& job : jobs_) {
        if (cancelled_) {
            result_.cancelled = true;
            break;
        }
        try {
            if (session == nullptr) {
                session = std::make_unique<session::Session>();
                session->Options() = order_.options;
            }
            Revoice(*session, job, replace);
        } catch (const std::exception& error) {
            result_.failed.push_back({job.song, ErrorWords(error, language_)});
        }
        ++done_;
    }
    return std::move(result_);
}

void FolderRevoicing::Revoice(session::Session& session, const Job& job, bool replace) {
    if (job.isInput) {
        result_.failed.push_back({job.song, std::string(texts::kIsOriginal.In(language_))});
        return;
    }
    if (!replace && Exists(job.target)) {
        ++result_.kept;
        return;
    }
    RecordingMessageHost host(language_);
    OpenMidiFile(session, job.song, host);
    const RevoicedSong done = RevoiceBy(order_.revoice, session, tables_, host);
    Store(session, job, done, host);
    if (done.plan.missingLsb) {
        result_.partly.push_back(
            {job.song, instruments::MissingLsbText(*done.plan.missingLsb, language_)});
    } else if (done.plan.changes.empty()) {
        ++result_.unchanged;
        result_.withoutBank += done.plan.withoutBank > 0 ? 1U : 0U;
    } else {
        ++result_.revoiced;
    }
}

void FolderRevoicing::Store(session::Session& session, const Job& job, const RevoicedSong& done,
                            MessageHost& host) {
    const SharedBytes& original = session.Work().loaded.bytes;
    if (done.plan.changes.empty() && original != nullptr) {
        WriteResult(job.target, *original, host);
    } else {
        WriteResult(job.target, EncodeSong(session, SaveFormat::AsSong, host), host);
    }
}

} // namespace tracksmith::app
