#include "editing/forms/listening.h"

#include <utility>

namespace tracksmith::forms {

bool Listening::Begin(song::Song& song, std::int32_t from, std::int32_t to) {
    session::Transport& controls = session_.Controls();
    auto other = std::make_shared<session::OtherSong>();
    other->song.Swap(song);
    const Former former = On() ? former_ : Former{controls.Loop(), controls.Tick()};
    if (!controls.Hear(other)) {
        return false;
    }
    song_ = std::move(other);
    former_ = former;
    controls.SetLoop(from, to);
    controls.MoveToTick(from);
    if (!controls.Playing() && !controls.Play()) {
        End();
        return false;
    }
    return true;
}

// Whoever lets the user hear another song meanwhile has ended this already.
void Listening::End() {
    if (!On()) {
        return;
    }
    const auto song = std::exchange(song_, nullptr);
    session::Transport& controls = session_.Controls();
    if (controls.Heard() != song || !controls.Stop() || !controls.Hear(nullptr)) {
        return; // a driver hangs, which has been told; the next song in memory ends it
    }
    controls.TakeLoop(former_.loop);
    controls.MoveToTick(former_.tick);
}

} // namespace tracksmith::forms
