#pragma once

#include <chrono>
#include <filesystem>
#include <future>
#include <memory>
#include <thread>
#include <vector>

#include <QObject>
#include <QTimer>

#include "app/load_sequence.h"

namespace tracksmith::forms {

/// How long after its beginning a load is shown in which way.
struct LoadTimes {
    /// So long the window waits without going on: most songs are there by then, and nothing is
    /// seen of the wait.
    std::chrono::milliseconds quick{150};
    /// From then on it is shown how far the load is.
    std::chrono::milliseconds shown{500};
    /// From then on it can be cancelled.
    std::chrono::milliseconds cancel{2'000};
};

/// Loads songs on a thread of their own, one at a time: a newer one takes the place of an older
/// one. The song in memory is not touched. User-interface thread.
class SongLoader : public QObject {
    Q_OBJECT

public:
    explicit SongLoader(QObject* parent = nullptr);
    /// Gives up what is being loaded. Waits for what is being decoded, which ends by itself, but
    /// not for a medium that does not answer.
    ~SongLoader() override;

    void SetTimes(const LoadTimes& times) { times_ = times; }
    /// Takes the bytes of all songs from `reader` from now on.
    void SetReader(app::SongReader reader) { reader_ = std::move(reader); }

    /// Begins to load, and waits a moment. True when the song is there already and can be taken.
    /// Where the system grants no thread it is loaded on this one.
    bool Start(app::LoadOrder order);
    /// Begins again with other options.
    void StartAnew(const session::WorkOptions& options);
    /// Gives up what is being loaded. It may go on for a while, unseen.
    void Cancel();

    /// A song is being loaded, or waits to be taken.
    bool Busy() const { return running_.result.valid(); }
    /// What is being loaded, or was last.
    const app::LoadOrder& Order() const { return order_; }
    /// It is to be shown that something is being loaded; that it can be cancelled.
    bool Shown() const;
    bool Cancellable() const;
    /// How much of the file has been read, in per cent; -1 while that is not known or the rest of
    /// the work is being done.
    int Percent() const;

    /// What loading has come to, once it is ready. Throws what PrepareLoad threw.
    std::unique_ptr<app::LoadedSong> Take();

signals:
    /// Emitted again and again while a song is being loaded.
    void Moved();
    /// Likewise once it is ready, until it is taken.
    void Ready();

private:
    using Result = std::unique_ptr<app::LoadedSong>;
    struct Job {
        std::shared_ptr<app::LoadWatch> watch;
        std::future<Result> result;
        std::thread thread;
    };

    void Run();
    void Look();
    bool Waited(std::chrono::milliseconds time) const;
    void EndThoseReady();
    static void End(Job& job);

    LoadTimes times_;
    app::SongReader reader_ = app::ReadWatchedFile;
    app::LoadOrder order_;
    std::chrono::steady_clock::time_point begun_;
    Job running_;
    /// Were given up but have not ended.
    std::vector<Job> leaving_;
    QTimer timer_;
};

} // namespace tracksmith::forms
