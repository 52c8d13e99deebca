#pragma once

#include <atomic>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "base/text.h"

#include "app/revoice.h"

namespace tracksmith::app {

/// A folder of songs to be revoiced into another one.
struct FolderOrder {
    std::filesystem::path source;
    std::filesystem::path target;
    RevoiceOrder revoice;
    /// How songs are read, and the instruments at the outputs. Songs are not prepared.
    session::WorkOptions options;
};

/// Why a folder cannot be revoiced into another one.
enum class FolderFault { NoSource, NoTarget, SameFolder, TargetInSource };

/// What is wrong with the two folders, before anything is looked for; nothing when all is well.
std::optional<FolderFault> FaultOf(const std::filesystem::path& source,
                                   const std::filesystem::path& target);

/// A song or folder with what has to be told about it (UTF-8).
struct FolderRemark {
    std::filesystem::path path;
    std::string words;
};

/// What became of the songs of a folder; each is counted once.
struct FolderResult {
    std::size_t revoiced = 0;
    /// Nothing of the table fits them: the same bytes are in the target folder.
    std::size_t unchanged = 0;
    /// Those among them of which voice changes have no bank select that the table could fit.
    std::size_t withoutBank = 0;
    /// A file of their name was in the target folder and was to stay.
    std::size_t kept = 0;
    /// Revoiced only in part.
    std::vector<FolderRemark> partly;
    /// Not revoiced, nothing written; and folders that could not be read.
    std::vector<FolderRemark> failed;
    bool cancelled = false;
};

/// Revoices the songs of a folder, and of those in it, into another one. The originals are only
/// read. Find and Run belong to one thread after the other; what is marked so, to any.
class FolderRevoicing {
public:
    /// `tables` must outlive the object.
    FolderRevoicing(FolderOrder order, const instruments::VoiceTables& tables, Language language);

    /// Looks for the songs. Throws std::bad_alloc.
    void Find();
    /// What Find has found, and how many of the results have a file in their place already.
    std::size_t Songs() const { return jobs_.size(); }
    std::size_t Existing() const { return existing_; }
    /// Files that exist are replaced where `replace` says so, else they stay. Throws
    /// std::bad_alloc.
    FolderResult Run(bool replace);

    /// Songs that Run has gone through. Any thread.
    std::size_t Done() const { return done_; }
    /// Run ends after the song that is worked on. Any thread.
    void Cancel() { cancelled_ = true; }
    bool Cancelled() const { return cancelled_; }

private:
    struct Job {
        std::filesystem::path song;
        std::filesystem::path target;
        bool isInput = false;
    };

    void Revoice(session::Session& session, const Job& job, bool replace);
    void Store(session::Session& session, const Job& job, const RevoicedSong& done,
               MessageHost& host);

    FolderOrder order_;
    const instruments::VoiceTables& tables_;
    Language language_;
    std::vector<Job> jobs_;
    std::size_t existing_ = 0;
    FolderResult result_;
    std::atomic<std::size_t> done_ = 0;
    std::atomic<bool> cancelled_ = false;
};

} // namespace tracksmith::app
