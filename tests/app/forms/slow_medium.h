#pragma once

#include <condition_variable>
#include <filesystem>
#include <memory>
#include <mutex>
#include <set>

#include "app/forms/loading/song_loader.h"

namespace tracksmith::forms {

/// A medium whose files come when the test says so. Readers may outlive it.
class SlowMedium {
public:
    /// What `hangs` does not even end when it is asked to.
    explicit SlowMedium(bool hangs = false) : state_(std::make_shared<State>()) {
        state_->hangs = hangs;
    }
    SlowMedium(const SlowMedium&) = delete;
    SlowMedium& operator=(const SlowMedium&) = delete;
    ~SlowMedium() {
        Deliver({});
        std::unique_lock lock(state_->mutex);
        state_->moved.wait(lock, [this] { return state_->reading == 0; });
    }

    app::SongReader Reader() const {
        return [state = state_](const std::filesystem::path& file, app::LoadWatch& watch) {
            state->Await(file, watch);
            return app::ReadWatchedFile(file, watch);
        };
    }
    /// Lets `file` come; all files for an empty name.
    void Deliver(const std::filesystem::path& file) {
        const std::scoped_lock lock(state_->mutex);
        state_->delivered.insert(file);
        state_->moved.notify_all();
    }

private:
    struct State {
        void Await(const std::filesystem::path& file, app::LoadWatch& watch) {
            std::unique_lock lock(mutex);
            ++reading;
            watch.size = 100;
            watch.read = 40;
            const auto came = [&] { return delivered.contains(file) || delivered.contains({}); };
            hangs ? moved.wait(lock, came)
                  : static_cast<void>(moved.wait(lock, watch.stop.get_token(), came));
            --reading;
            moved.notify_all();
        }

        std::mutex mutex;
        std::condition_variable_any moved;
        std::set<std::filesystem::path> delivered;
        int reading = 0;
        bool hangs = false;
    };
    std::shared_ptr<State> state_;
};

} // namespace tracksmith::forms
