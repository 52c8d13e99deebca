#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "app/borrowed_input.h"
#include "instruments/identity/identity_question.h"
#include "instruments/identity/identity_table.h"
#include "player/player.h"

namespace tracksmith::app {

/// How asking which instrument is connected stands, or what it has come to.
enum class AskState {
    Asking,
    Answered,
    NoAnswer,
    /// A song is played: the question would come between its messages.
    Playing,
    /// The output is the built-in instrument.
    BuiltIn,
    /// There is no output of that name, or it takes no messages.
    NoOutput,
    OutputFails,
    /// No input was chosen and none can be guessed, or it is not there; it cannot be opened.
    NoInput,
    InputFails,
    Cancelled
};

/// What asking has come to.
struct AskResult {
    AskState state = AskState::Cancelled;
    /// Product names; the input is empty before one was found.
    std::string output;
    std::string input;
    /// In the order in which they came.
    std::vector<instruments::InstrumentAnswer> answers;
};

/// Asks which instrument is connected, through the ports of the player. Nothing waits: the owner
/// calls Step every few milliseconds. Owner's thread of the player.
class InstrumentAsker {
public:
    using Time = instruments::IdentityQuestion::Time;

    /// The player must outlive the object.
    InstrumentAsker(player::TMidiPlayer& player, instruments::IdentityTable table)
        : player_(player), table_(std::move(table)) {}
    InstrumentAsker(const InstrumentAsker&) = delete;
    InstrumentAsker& operator=(const InstrumentAsker&) = delete;
    ~InstrumentAsker() { Cancel(); }

    /// Begins to ask at the output of this product name. The answer is awaited at `input`; for an
    /// empty name at that of the same name as the output, else at the only one. A port that is not
    /// open is opened; failing at that is also told by the player.
    AskState Begin(const std::string& output, const std::string& input, Time now);
    /// Sends what is to be sent. Asking ends by itself after about two seconds at most, at once
    /// when a song begins to play.
    AskState Step(Time now);
    /// Gives up without another word; nothing happens when nothing is asked.
    void Cancel();

    const instruments::IdentityTable& Table() const { return table_; }
    /// The answers are there when asking has ended.
    const AskResult& Result() const { return result_; }

private:
    AskState OpenPorts(const std::string& wantedInput);
    void Listen();
    AskState OpenInput(const std::string& wanted);
    AskState OpenOutput();
    AskState Send(std::span<const std::uint8_t> data);
    AskState Outcome() const;
    bool OutputTakesMessages() const;
    void End(AskState state);

    player::TMidiPlayer& player_;
    instruments::IdentityTable table_;
    AskResult result_;
    std::size_t port_ = 0;
    BorrowedInput input_{player_};
    std::optional<instruments::IdentityQuestion> question_;
    Time now_;
};

} // namespace tracksmith::app
