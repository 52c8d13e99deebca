#include "app/cli/song_input.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <exception>
#include <istream>
#include <limits>
#include <mutex>
#include <ostream>
#include <sstream>
#include <utility>

#include "base/errors.h"
#include "base/parallel.h"

#include "app/cli/cli_message_host.h"
#include "app/cli/terminal_line.h"
#include "app/cli/texts.h"
#include "app/load_sequence.h"
#include "app/preparation_words.h"

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

void LoadInput(const InputFile& input, session::Session& session, std::istream& standardInput,
               MessageHost& host) {
    if (input.standardInput) {
        app::OpenMidiData(session, ReadStream(standardInput, host), input.path, host);
    } else {
        app::OpenMidiFile(session, input.path, host);
    }
}

void LogChanges(const CliContext& context, const InputFile& input,
                const session::Workspace& workspace) {
    if (context.quiet) {
        return;
    }
    if (const std::string line = app::PreparationLine(workspace.preparation, context.language);
        !line.empty()) {
        context.log << input.Name() << ": " << line << "\n";
    }
    for (std::size_t i = 0; i < song::kLoadChangeCount; ++i) {
        const auto change = static_cast<song::LoadChange>(i);
        if (const std::int64_t count = workspace.loadReport[change]; count != 0) {
            context.log << input.Name() << ": " << count << " "
                        << context.Say(song::LoadChangeText(change)) << "\n";
        }
    }
}

/// One thread of a batch with what it works on.
class SongBatch::Worker {
public:
    /// A thread on its own says everything at once, one of several keeps it.
    explicit Worker(const SongBatch& batch)
        : context_{batch.context_.in,
                   batch.jobs_ > 1 ? out_ : batch.context_.out,
                   batch.jobs_ > 1 ? log_ : batch.context_.log,
                   batch.context_.language,
                   false,
                   batch.context_.quiet,
                   batch.context_.yes,
                   batch.context_.openDevices,
                   batch.context_.voices,
                   {}},
          host_(context_) {
        batch.setUp_(session_.Options());
    }

    /// Works on one song and returns its exit code; its texts stay until TakeTexts.
    int Work(const InputFile& input, std::size_t index, const Action& action,
             const OnFailure& onFailure) {
        host_.SetFile(input.Name());
        std::string message;
        try {
            LoadInput(input, session_, context_.in, host_);
        } catch (const EMidiError& error) {
            message = error.what(); // already shown
        } catch (const std::exception& error) {
            message = error.what();
            host_.ShowMessage(message);
        }
        if (message.empty()) {
            return Act(input, index, action);
        }
        if (onFailure) {
            onFailure(context_, input.Name(), message);
        }
        return kUnreadable;
    }

    std::string TakeOut() { return Take(out_); }
    std::string TakeLog() { return Take(log_); }

private:
    static std::string Take(std::ostringstream& stream) {
        std::string text = stream.str();
        stream.str({});
        return text;
    }

    int Act(const InputFile& input, std::size_t index, const Action& action) {
        SongJob job{input, index, session_, host_, context_};
        try {
            return action(job);
        } catch (const EMidiError&) {
            return kWriteFailed; // already shown
        } catch (const std::exception& error) {
            host_.ShowMessage(error.what());
            return kWriteFailed;
        }
    }

    std::ostringstream out_;
    std::ostringstream log_;
    CliContext context_;
    CliMessageHost host_;
    session::Session session_;
};

/// What the songs of a batch said, passed on in their order.
class SongBatch::Results {
public:
    Results(CliContext& context, std::size_t total)
        : context_(context), progress_(context), songs_(total) {}

    /// Keeps what a song said until those before it have spoken.
    void Add(std::size_t index, int code, Worker& worker) {
        const std::scoped_lock lock(mutex_);
        songs_[index] = {true, code, worker.TakeOut(), worker.TakeLog()};
        progress_.Clear();
        for (; said_ < songs_.size() && songs_[said_].done; ++said_) {
            Say(songs_[said_]);
        }
        if (said_ < songs_.size()) {
            progress_.Show(std::to_string(++done_) + " / " + std::to_string(songs_.size()));
        }
    }

    /// Nobody takes the results any more.
    bool Lost() const { return lost_; }
    std::size_t Failed() const { return failed_; }
    int LastCode() const { return code_; }

private:
    struct Song {
        bool done = false;
        int code = kOk;
        std::string out;
        std::string log;
    };

    void Say(Song& song) {
        context_.log << song.log << std::flush;
        context_.out << song.out;
        if (song.code != kOk) {
            code_ = song.code;
            ++failed_;
        }
        song = {true, song.code, {}, {}};
        lost_ = lost_ || !context_.out;
    }

    CliContext& context_;
    TerminalLine progress_;
    std::mutex mutex_;
    std::vector<Song> songs_;
    std::size_t said_ = 0;
    std::size_t done_ = 0;
    std::size_t failed_ = 0;
    int code_ = kOk;
    std::atomic<bool> lost_ = false;
};

const std::vector<InputFile>& SongBatch::Expand(const std::vector<std::string>& names) {
    files_ = ExpandInputs(names, emptyFolders_);
    return files_;
}

int SongBatch::Run(const Action& action, const OnFailure& onFailure) {
    const std::size_t total = files_.size() + emptyFolders_.size();
    for (const std::string& folder : emptyFolders_) {
        const std::string message = context_.Say(texts::kNoSongs);
        context_.log << folder << ": " << message << "\n";
        if (onFailure) {
            onFailure(context_, folder, message);
        }
    }
    Results results(context_, files_.size());
    WorkThrough(results, action, onFailure);
    if (results.Lost()) {
        return kWriteFailed;
    }
    const std::size_t failed = emptyFolders_.size() + results.Failed();
    LogSummary(total, failed);
    if (failed > 0 && total > 1) {
        return kPartFailed;
    }
    return emptyFolders_.empty() ? results.LastCode() : int{kUnreadable};
}

// Each thread takes the next song that nobody works on.
void SongBatch::WorkThrough(Results& results, const Action& action, const OnFailure& onFailure) {
    std::atomic<std::size_t> next = 0;
    const std::size_t threads = std::min(std::max<std::size_t>(jobs_, 1), files_.size());
    ParallelFor(threads, threads, [&](std::size_t) {
        Worker worker(*this);
        for (std::size_t i = next++; i < files_.size() && !results.Lost(); i = next++) {
            const int code = worker.Work(files_[i], i, action, onFailure);
            results.Add(i, code, worker);
        }
    });
}

void SongBatch::LogSummary(std::size_t total, std::size_t failed) const {
    if (total > 1 && !context_.quiet) {
        context_.log << texts::Summary(context_.language, total, failed) << std::endl;
    }
}

} // namespace tracksmith::cli
