#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "app/cli/cli_context.h"
#include "app/cli/input_files.h"
#include "app/refusal_words.h"
#include "app/session/session.h"

namespace tracksmith::cli {

/// Logs what loading and preparing changed, unless the user wants quiet.
void LogChanges(const CliContext& context, const InputFile& input,
                const session::Workspace& workspace);

/// One song of a batch while it is worked on. Several are worked on at once, each by one thread.
struct SongJob {
    const InputFile& input;
    /// Place of the song in the batch.
    std::size_t index;
    session::Session& session;
    MessageHost& host;
    /// Streams of this song alone; what they hold comes out in the order of the batch.
    CliContext& context;
};

/// An input that could not be loaded.
struct InputFailure {
    /// The name as given, byte for byte.
    std::string name;
    /// What was shown about it (UTF-8).
    std::string message;
    /// What is known about a file that was refused.
    app::RefusalAdvice advice;
};

/// Loads every input and does one thing with it; a failure never stops the rest.
class SongBatch {
public:
    /// Called with each song that is loaded; returns kOk or the code of what went wrong. What it
    /// throws counts as a failed write. Called by several threads at once when there are jobs.
    using Action = std::function<int(SongJob&)>;
    /// Told about each input that cannot be loaded; `context` has the streams.
    using OnFailure = std::function<void(CliContext& context, const InputFailure& failure)>;

    /// `context` must outlive the batch.
    explicit SongBatch(CliContext& context) : context_(context) {}

    /// The songs that `names` stand for; folders without songs and those that cannot be read count
    /// as failures of the batch.
    const std::vector<InputFile>& Expand(const std::vector<std::string>& names);

    /// Sets the options of every session that the batch uses.
    void SetUp(std::function<void(session::WorkOptions&)> setUp) { setUp_ = std::move(setUp); }

    /// So many songs are worked on at once, at least 1, as far as their memory allows.
    void SetJobs(std::size_t jobs) { jobs_ = jobs; }

    /// Leaves out each input for which `isDone` (given its place in the batch) says true, before it
    /// is read; the summary tells how many.
    void SetDone(std::function<bool(const InputFile&, std::size_t)> isDone) {
        isDone_ = std::move(isDone);
    }

    /// Runs the batch and returns the exit code: a single input gives its own code, several give
    /// kPartFailed when any failed. Stops early only when nobody takes the results any more.
    int Run(const Action& action, const OnFailure& onFailure = {});

private:
    class Worker;
    class Results;

    void ReportFolders(const OnFailure& onFailure) const;
    void WorkThrough(Results& results, const Action& action, const OnFailure& onFailure);
    void LogSummary(std::size_t total, std::size_t failed, std::size_t skipped) const;

    CliContext& context_;
    std::function<void(session::WorkOptions&)> setUp_ = [](session::WorkOptions&) {};
    std::function<bool(const InputFile&, std::size_t)> isDone_;
    std::size_t jobs_ = 1;
    std::vector<InputFile> files_;
    std::vector<FolderFault> folderFaults_;
};

} // namespace tracksmith::cli
