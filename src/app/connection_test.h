#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "app/borrowed_input.h"
#include "player/player.h"

namespace tracksmith::app {

/// A key that is played at an input, or let go.
struct PlayedKey {
    std::uint8_t channel = 0; // from 0
    std::uint8_t key = 0;
    /// 0 when it is let go.
    std::uint8_t velocity = 0;
};

/// Shows the user whether the cables are right: sounds a note at an output, and tells which keys
/// come from the instrument. Owner's thread of the player.
class ConnectionTest {
public:
    using Listener = std::function<void(const PlayedKey&)>;

    /// The player must outlive the object.
    explicit ConnectionTest(player::TMidiPlayer& player) : player_(player), input_(player) {}
    ConnectionTest(const ConnectionTest&) = delete;
    ConnectionTest& operator=(const ConnectionTest&) = delete;
    ~ConnectionTest();

    /// Tells `listener` what is played at the input that belongs to this output; see FindInput.
    /// False when there is none, or it cannot be opened.
    bool Listen(const std::string& output, const std::string& input, Listener listener);
    void EndListening();

    /// Middle C begins on channel 1 of the output, which is opened for it. False when it takes
    /// nothing; failing to open it is also told by the player.
    bool BeginNote(const std::string& output);
    void EndNote();

private:
    player::TMidiPlayer& player_;
    BorrowedInput input_;
    std::optional<std::size_t> sounding_; // the note's port
};

} // namespace tracksmith::app
