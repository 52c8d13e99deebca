#include "app/cli/song_input.h"

#include <array>
#include <exception>
#include <iostream>
#include <limits>

#include "base/errors.h"

#include "app/cli/texts.h"
#include "app/load_sequence.h"

namespace tracksmith::cli {
namespace {

// As much as a file may have.
constexpr std::size_t kMostBytes = std::numeric_limits<std::int32_t>::max();

std::vector<std::uint8_t> ReadStream(std::istream& stream, MessageHost& host) {
    std::vector<std::uint8_t> bytes;
    std::array<char, 65'536> block{};
    while (stream.read(block.data(), block.size()), stream.gcount() > 0) {
        bytes.insert(bytes.end(), block.begin(), block.begin() + stream.gcount());
        if (bytes.size() > kMostBytes) {
            RaiseMidiError(host, texts::kStandardInputTooLong);
        }
    }
    return bytes;
}

} // namespace

void LoadInput(const InputFile& input, app::Workspace& workspace, std::istream& standardInput,
               MessageHost& host) {
    if (input.standardInput) {
        app::OpenMidiData(workspace, ReadStream(standardInput, host), input.path, host);
    } else {
        app::OpenMidiFile(workspace, input.path, host);
    }
}

void LogChanges(const CliContext& context, const InputFile& input,
                const app::Workspace& workspace) {
    if (context.quiet) {
        return;
    }
    for (std::size_t i = 0; i < song::kLoadChangeCount; ++i) {
        const auto change = static_cast<song::LoadChange>(i);
        if (const std::int64_t count = workspace.loadReport[change]; count != 0) {
            context.log << input.Name() << ": " << count << " "
                        << context.Say(song::LoadChangeText(change)) << "\n";
        }
    }
}

const std::vector<InputFile>& SongBatch::Expand(const std::vector<std::string>& names) {
    files_ = ExpandInputs(names, emptyFolders_);
    return files_;
}

int SongBatch::Run(const Action& action, const OnFailure& onFailure) {
    const std::size_t total = files_.size() + emptyFolders_.size();
    std::size_t failed = emptyFolders_.size();
    int code = kOk;
    for (const std::string& folder : emptyFolders_) {
        const std::string message = context_.Say(texts::kNoSongs);
        context_.log << folder << ": " << message << "\n";
        code = kUnreadable;
        if (onFailure) {
            onFailure(folder, message);
        }
    }
    for (const InputFile& input : files_) {
        if (!context_.out) {
            return kWriteFailed;
        }
        if (const int result = RunOne(input, action, onFailure); result != kOk) {
            code = result;
            ++failed;
        }
    }
    LogSummary(total, failed);
    return failed > 0 && total > 1 ? int{kPartFailed} : code;
}

int SongBatch::RunOne(const InputFile& input, const Action& action, const OnFailure& onFailure) {
    host_.SetFile(input.Name());
    std::string message;
    try {
        LoadInput(input, workspace_, context_.in, host_);
    } catch (const EMidiError& error) {
        message = error.what(); // already shown
    } catch (const std::exception& error) {
        message = error.what();
        host_.ShowMessage(message);
    }
    if (message.empty()) {
        return Act(input, action);
    }
    if (onFailure) {
        onFailure(input.Name(), message);
    }
    return kUnreadable;
}

int SongBatch::Act(const InputFile& input, const Action& action) {
    try {
        return action(input, workspace_, host_);
    } catch (const EMidiError&) {
        return kWriteFailed; // already shown
    } catch (const std::exception& error) {
        host_.ShowMessage(error.what());
        return kWriteFailed;
    }
}

void SongBatch::LogSummary(std::size_t total, std::size_t failed) const {
    if (total > 1 && !context_.quiet) {
        context_.log << texts::Summary(context_.language, total, failed) << std::endl;
    }
}

} // namespace tracksmith::cli
