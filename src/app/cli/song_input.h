#pragma once

#include <functional>
#include <istream>
#include <string>
#include <vector>

#include "app/cli/cli_context.h"
#include "app/cli/cli_message_host.h"
#include "app/cli/input_files.h"
#include "app/workspace.h"

namespace tracksmith::cli {

/// Loads the input into the workspace. Faults are shown through `host` and raised as EMidiError.
void LoadInput(const InputFile& input, app::Workspace& workspace, std::istream& standardInput,
               MessageHost& host);

/// Logs what loading changed, unless the user wants quiet.
void LogChanges(const CliContext& context, const InputFile& input, const app::Workspace& workspace);

/// Loads every input and does one thing with it; a failure never stops the rest.
class SongBatch {
public:
    /// Called with each song that is loaded; returns kOk or the code of what went wrong. What it
    /// throws counts as a failed write.
    using Action = std::function<int(const InputFile&, app::Workspace&, MessageHost&)>;
    /// Told about each input that cannot be loaded, with the message.
    using OnFailure = std::function<void(const std::string& name, const std::string& message)>;

    /// `context` must outlive the batch.
    explicit SongBatch(CliContext& context) : context_(context), host_(context) {}

    /// The songs that `names` stand for; folders without songs count as failures of the batch.
    const std::vector<InputFile>& Expand(const std::vector<std::string>& names);

    /// The one workspace that all songs are loaded into in turn, for setting its options.
    app::Workspace& Workspace() { return workspace_; }

    /// Runs the batch and returns the exit code: a single input gives its own code, several give
    /// kPartFailed when any failed. Stops early only when nobody takes the results any more.
    int Run(const Action& action, const OnFailure& onFailure = {});

private:
    int RunOne(const InputFile& input, const Action& action, const OnFailure& onFailure);
    int Act(const InputFile& input, const Action& action);
    void LogSummary(std::size_t total, std::size_t failed) const;

    CliContext& context_;
    CliMessageHost host_;
    app::Workspace workspace_;
    std::vector<InputFile> files_;
    std::vector<std::string> emptyFolders_;
};

} // namespace tracksmith::cli
