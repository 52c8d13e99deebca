#include "app/cli/song_input.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <exception>
#include <istream>
#include <memory>
#include <mutex>
#include <optional>
#include <ostream>
#include <sstream>
#include <system_error>

#include "base/errors.h"
#include "base/memory_budget.h"
#include "base/parallel.h"
#include "base/system/file_io.h"

#include "app/cli/cli_message_host.h"
#include "app/cli/memory_share.h"
#include "app/cli/reading_options.h"
#include "app/cli/terminal_line.h"
#include "app/cli/texts.h"
#include "app/error_words.h"
#include "app/kept_words.h"
#include "app/load_sequence.h"
#include "app/preparation_words.h"
#include "song/event_arena.h"
#include "song/midi_event.h"

namespace tracksmith::cli {
namespace {

// As much as a file may have.
constexpr std::size_t kMostBytes = system::kMostFileBytes;

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

// Bytes that the song of an input may take at most: an event takes two bytes of the file at least,
// the file itself and what is saved lie beside it.
std::uint64_t MostMemory(const InputFile& input) {
    constexpr std::uint64_t kPerFileByte = sizeof(song::MidiEvent) / 2 + 2;
    std::error_code error;
    const std::uintmax_t size =
        input.standardInput ? kMostBytes : std::filesystem::file_size(input.path, error);
    return error ? 0 : std::min<std::uint64_t>(size, kMostBytes) * kPerFileByte;
}

} // namespace

void LogChanges(const CliContext& context, const InputFile& input,
                const session::Workspace& workspace) {
    if (context.quiet) {
        return;
    }
    if (const std::string line = app::PreparationLine(workspace.preparation, context.language);
        !line.empty()) {
        context.log << input.Name() << ": " << line << "\n";
    }
    for (const std::string& line : app::KeptLines(workspace.preparation, context.language)) {
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
    Worker(const SongBatch& batch, MemoryShare& memory)
        : batch_(batch),
          memory_(memory),
          context_{batch.context_.in,
                   batch.jobs_ > 1 ? out_ : batch.context_.out,
                   batch.jobs_ > 1 ? log_ : batch.context_.log,
                   batch.context_.language,
                   false,
                   batch.context_.quiet,
                   batch.context_.yes,
                   batch.context_.openDevices,
                   batch.context_.settings,
                   batch.context_.voices,
                   {}},
          host_(context_) {
        // A text that finds no memory must not be left out in silence.
        out_.exceptions(std::ios::badbit);
        log_.exceptions(std::ios::badbit);
    }

    /// Works on one song and returns its exit code; its texts stay until TakeTexts.
    int Work(const InputFile& input, std::size_t index, const Action& action,
             const OnFailure& onFailure) {
        host_.SetFile(input.Name());
        try {
            const MemoryShare::Part memory = memory_.Take(MostMemory(input));
            const int code = WorkWithin(memory.Bytes(), input, index, action, onFailure);
            if (memory.Bytes() > memory_.Total() / std::max<std::size_t>(batch_.jobs_, 1)) {
                session_.reset(); // what it kept would not count as taken any more
            }
            return code;
        } catch (const std::exception& error) {
            host_.ShowMessage(app::ErrorWords(error, context_.language));
            return kWriteFailed;
        }
    }

    std::string TakeOut() { return Take(out_); }
    std::string TakeLog() { return Take(log_); }

private:
    static std::string Take(std::ostringstream& stream) {
        std::string text = stream.str();
        stream.str({});
        return text;
    }

    int WorkWithin(std::uint64_t memory, const InputFile& input, std::size_t index,
                   const Action& action, const OnFailure& onFailure) {
        if (session_ == nullptr) {
            session_ = std::make_unique<session::Session>();
            batch_.setUp_(session_->Options());
        }
        session_->Options().decodeOptions.memoryBudget = memory;
        const std::optional<std::string> refusal = Load(input);
        if (!refusal) {
            return Act(input, index, action);
        }
        const InputFailure failure{input.ExactName(), *refusal, Advise(input)};
        if (onFailure) {
            onFailure(context_, failure);
        }
        return kUnreadable;
    }

    // The message when it cannot be loaded, which has been shown.
    std::optional<std::string> Load(const InputFile& input) {
        try {
            if (input.standardInput) {
                standardInput_ = ReadStream(context_.in, host_);
                app::OpenMidiData(*session_, standardInput_, input.path, host_);
            } else {
                app::OpenMidiFile(*session_, input.path, host_);
            }
            return std::nullopt;
        } catch (const EMidiError& error) {
            return error.what(); // already shown
        } catch (const std::exception& error) {
            const std::string words = app::ErrorWords(error, context_.language);
            host_.ShowMessage(words);
            return words;
        }
    }

    app::RefusalAdvice Advise(const InputFile& input) {
        const song::DecodeOptions& options = session_->Options().decodeOptions;
        const bool keepStatus = session_->Options().runningStatusAcrossSysex;
        try {
            app::RefusalAdvice advice =
                input.standardInput ? app::AdviseOnRefusedFile(standardInput_, options, keepStatus)
                                    : app::AdviseOnRefusedFile(input.path, options, keepStatus);
            Show(advice);
            return advice;
        } catch (const std::exception&) {
            return {}; // the refusal itself has been told
        }
    }

    void Show(const app::RefusalAdvice& advice) {
        if (advice.kind != app::RefusalKind::None) {
            host_.ShowMessage(advice.In(context_.language));
        }
        if (advice.loadableWithRunningStatusAcrossSysex) {
            host_.ShowMessage(
                texts::LoadableWith(context_.language, kRunningStatusAcrossSysexSwitch));
        }
    }

    int Act(const InputFile& input, std::size_t index, const Action& action) {
        SongJob job{input, index, *session_, host_, context_};
        try {
            return action(job);
        } catch (const EMidiError&) {
            return kWriteFailed; // already shown
        } catch (const std::exception& error) {
            host_.ShowMessage(app::ErrorWords(error, context_.language));
            return kWriteFailed;
        }
    }

    const SongBatch& batch_;
    MemoryShare& memory_;
    std::ostringstream out_;
    std::ostringstream log_;
    CliContext context_;
    CliMessageHost host_;
    std::unique_ptr<session::Session> session_;
    std::vector<std::uint8_t> standardInput_;
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
        SayWhatIsReady();
    }

    /// A song that is left out.
    void Skip(std::size_t index) {
        const std::scoped_lock lock(mutex_);
        songs_[index].done = true;
        ++skipped_;
        SayWhatIsReady();
    }

    /// Nobody takes the results any more.
    bool Lost() const { return lost_; }
    std::size_t Failed() const { return failed_; }
    std::size_t Skipped() const { return skipped_; }
    int LastCode() const { return code_; }

private:
    struct Song {
        bool done = false;
        int code = kOk;
        std::string out;
        std::string log;
    };

    void SayWhatIsReady() {
        progress_.Clear();
        for (; said_ < songs_.size() && songs_[said_].done; ++said_) {
            Say(songs_[said_]);
        }
        if (said_ < songs_.size()) {
            progress_.Show(std::to_string(++done_) + " / " + std::to_string(songs_.size()));
        }
    }

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
    std::size_t skipped_ = 0;
    int code_ = kOk;
    std::atomic<bool> lost_ = false;
};

const std::vector<InputFile>& SongBatch::Expand(const std::vector<std::string>& names) {
    files_ = ExpandInputs(names, folderFaults_);
    return files_;
}

void SongBatch::ReportFolders(const OnFailure& onFailure) const {
    for (const FolderFault& fault : folderFaults_) {
        const std::string message = fault.error
                                        ? texts::FolderNotRead(context_.language, fault.error)
                                        : context_.Say(texts::kNoSongs);
        context_.log << fault.Name() << ": " << message << "\n";
        if (onFailure) {
            onFailure(context_, {system::PathText(fault.folder), message, {}});
        }
    }
}

int SongBatch::Run(const Action& action, const OnFailure& onFailure) {
    const std::size_t total = files_.size() + folderFaults_.size();
    ReportFolders(onFailure);
    Results results(context_, files_.size());
    WorkThrough(results, action, onFailure);
    if (results.Lost()) {
        return kWriteFailed;
    }
    const std::size_t failed = folderFaults_.size() + results.Failed();
    LogSummary(total, failed, results.Skipped());
    if (failed > 0 && total > 1) {
        return kPartFailed;
    }
    return folderFaults_.empty() ? results.LastCode() : int{kUnreadable};
}

// Each thread takes the next song that nobody works on.
void SongBatch::WorkThrough(Results& results, const Action& action, const OnFailure& onFailure) {
    // In a small address space what each thread reserves would be missing for songs.
    constexpr std::uint64_t kFewestForThreads = std::uint64_t{1} << 30;
    const std::uint64_t space = song::EventArena::Instance().Capacity();
    const std::size_t wanted = space < kFewestForThreads ? 1 : jobs_;
    const std::size_t threads = std::min(std::max<std::size_t>(wanted, 1), files_.size());
    MemoryShare memory(std::min(SongMemoryBudget(), space));
    std::atomic<std::size_t> next = 0;
    ParallelFor(threads, threads, [&](std::size_t) {
        Worker worker(*this, memory);
        for (std::size_t i = next++; i < files_.size() && !results.Lost(); i = next++) {
            if (isDone_ && isDone_(files_[i], i)) {
                results.Skip(i);
                continue;
            }
            const int code = worker.Work(files_[i], i, action, onFailure);
            results.Add(i, code, worker);
        }
    });
}

void SongBatch::LogSummary(std::size_t total, std::size_t failed, std::size_t skipped) const {
    if ((total > 1 || skipped > 0) && !context_.quiet) {
        context_.log << texts::Summary(context_.language, total, failed, skipped) << std::endl;
    }
}

} // namespace tracksmith::cli
