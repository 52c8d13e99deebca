#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "instruments/identity/identity_table.h"
#include "instruments/identity/message_joiner.h"

namespace tracksmith::instruments {

/// The course of asking who is connected: first by the identity request; then, when nobody has
/// answered or a Yamaha whose codes are not known, by the request for the XG model name. Neither
/// sends nor waits itself: whoever asks does what Next says. One thread.
class IdentityQuestion {
public:
    using Time = std::chrono::steady_clock::time_point;

    /// How long an answer is waited for, each time.
    static constexpr std::chrono::milliseconds kPatience{1'000};
    /// How long others that answer too are waited for after the first.
    static constexpr std::chrono::milliseconds kSettling{200};

    /// What is to be done now.
    enum class Step : std::uint8_t { SendIdentityRequest, SendXgModelRequest, Wait, End };

    /// `table` must outlive the question.
    explicit IdentityQuestion(const IdentityTable& table) : table_(table) {}

    /// Each request is told once, then it counts as sent at `now`.
    Step Next(Time now);
    /// Takes bytes that came in, in any pieces.
    void Take(MessageBytes bytes, Time now);

    /// Who has answered so far, in the order of the answers; none twice.
    const std::vector<InstrumentAnswer>& Answers() const { return answers_; }

private:
    enum class Phase : std::uint8_t { Begin, Identity, XgModel };

    bool NeedsXgModel() const;
    bool TakeMessage(MessageBytes message);
    void AddXgModel(const std::string& model);

    const IdentityTable& table_;
    MessageJoiner joiner_;
    Phase phase_ = Phase::Begin;
    Time deadline_;
    std::vector<InstrumentAnswer> answers_;
};

} // namespace tracksmith::instruments
