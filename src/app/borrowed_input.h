#pragma once

#include <optional>
#include <string>

#include "player/player.h"

namespace tracksmith::app {

/// Product name of the input at which an instrument on this output is heard: `wanted`, for an empty
/// name the one like the output's, else the only one. Empty where none can be guessed.
std::string FindInput(const player::TMidiPlayer& player, const std::string& wanted,
                      const std::string& output);

/// Lets the player receive from an input for a while without the user's having chosen it. Owner's
/// thread of the player.
class BorrowedInput {
public:
    /// The player must outlive the object.
    explicit BorrowedInput(player::TMidiPlayer& player) : player_(player) {}
    BorrowedInput(const BorrowedInput&) = delete;
    BorrowedInput& operator=(const BorrowedInput&) = delete;
    ~BorrowedInput() { Return(); }

    /// Connects the input of this product name, which is there. False when it cannot be opened.
    bool Borrow(const std::string& name);
    /// Connects the input that was chosen before, unless another has been chosen meanwhile.
    void Return();

private:
    player::TMidiPlayer& player_;
    std::string borrowed_;
    std::optional<std::string> former_;
};

} // namespace tracksmith::app
