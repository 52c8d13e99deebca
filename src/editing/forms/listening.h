#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "app/session/session.h"
#include "song/song.h"

namespace tracksmith::forms {

/// Plays a stretch of a song that a tool would make, over and over, in place of the song in memory.
/// Place and loop are as before afterwards. User-interface thread.
class Listening {
public:
    /// `session` must outlive the object and have its player.
    explicit Listening(session::Session& session) : session_(session) {}
    Listening(const Listening&) = delete;
    Listening& operator=(const Listening&) = delete;
    ~Listening() { End(); }

    bool On() const { return song_ != nullptr; }

    /// Plays `song`, whose contents are taken, from `from` up to before `to` in its ticks; instead
    /// of what is listened to already. False when it cannot be played now, which has been told.
    /// Throws std::bad_alloc.
    bool Begin(song::Song& song, std::int32_t from, std::int32_t to);

    /// Ends it. Nothing happens when nothing is listened to.
    void End();

private:
    struct Former {
        std::optional<session::Transport::LoopRange> loop;
        std::int32_t tick = 0;
    };

    session::Session& session_;
    std::shared_ptr<session::OtherSong> song_;
    Former former_;
};

} // namespace tracksmith::forms
