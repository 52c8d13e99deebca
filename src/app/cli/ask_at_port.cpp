#include "app/cli/ask_at_port.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <iterator>
#include <nlohmann/json.hpp>
#include <optional>
#include <ostream>
#include <thread>
#include <vector>

#include "base/system/interrupt.h"
#include "base/system/message_poster.h"

#include "app/ask_texts.h"
#include "app/ask_words.h"
#include "app/cli/cli_message_host.h"
#include "app/cli/port_choice.h"
#include "app/cli/texts.h"
#include "app/instrument_asker.h"
#include "app/session/session.h"

namespace tracksmith::cli {
namespace {

using app::AskState;
using Json = nlohmann::ordered_json;

constexpr int kAnswerSchema = 1;
constexpr std::chrono::milliseconds kLook{10};

// By AskState.
constexpr std::array<const char*, 10> kStates{"asking",     "answered", "noAnswer",    "playing",
                                              "builtIn",    "noOutput", "outputFails", "noInput",
                                              "inputFails", "cancelled"};

/// One question with a player of its own.
class PortQuestion {
public:
    PortQuestion(const CliContext& context, bool json)
        : context_(context), json_(json), host_(context), devices_(context.openDevices({})) {}
    PortQuestion(const PortQuestion&) = delete;
    PortQuestion& operator=(const PortQuestion&) = delete;
    // The devices that the player uses end behind it.
    ~PortQuestion() { session_.EndPlayer(); }

    int Run(const AskPlan& plan) {
        session_.StartPlayer({devices_->Outputs(), &devices_->Input(), "", host_});
        const auto output = PickOutput(plan.output);
        const auto input = output ? PickInput(plan.input) : std::nullopt;
        if (!input) {
            return kPortOrAudioMissing;
        }
        const app::AskResult result = Ask(*output, *input);
        Write(result);
        return result.state == AskState::Answered   ? kOk
               : result.state == AskState::NoAnswer ? kFindings
                                                    : kPortOrAudioMissing;
    }

private:
    player::TMidiPlayer& Player() const { return session_.Controls().Player(); }

    // The one that `name` means; told when it means none or several.
    std::optional<std::string> Pick(const std::vector<std::string>& names, const std::string& name,
                                    bool input) {
        std::vector<std::string> found;
        for (const std::size_t index : MatchPortNames(names, name)) {
            found.push_back(names[index]);
        }
        if (found.size() == 1) {
            return found.front();
        }
        host_.ShowMessage(texts::NotOnePort(context_.language, input, name, !found.empty(),
                                            found.empty() ? names : found));
        return std::nullopt;
    }

    std::optional<std::string> PickOutput(const std::string& name) {
        std::vector<std::string> names;
        std::ranges::transform(Player().OutputDevices(), std::back_inserter(names),
                               &player::OutputDevice::productName);
        return Pick(names, name, false);
    }

    // Empty where none was named.
    std::optional<std::string> PickInput(const std::string& name) {
        std::vector<std::string> names;
        std::ranges::transform(Player().InputDevices(), std::back_inserter(names),
                               &player::InputDevice::productName);
        return name.empty() ? std::optional(std::string()) : Pick(names, name, true);
    }

    app::AskResult Ask(const std::string& output, const std::string& input) {
        using Clock = std::chrono::steady_clock;
        const system::InterruptWatch watch;
        app::InstrumentAsker asker(Player(), instruments::IdentityTable::Load());
        if (!asker.Table().IsComplete()) {
            host_.ShowMessage(context_.Say(app::texts::kIdentitiesDamaged));
        }
        asker.Begin(output, input, Clock::now());
        while (asker.Step(Clock::now()) == AskState::Asking &&
               !system::InterruptWatch::Requested()) {
            std::this_thread::sleep_for(kLook);
            system::DispatchMessages();
        }
        asker.Cancel();
        return asker.Result();
    }

    void Write(const app::AskResult& result) const {
        if (json_) {
            WriteJson(result);
            return;
        }
        const app::AskWords words = app::WordsOf(result, std::nullopt, context_.language);
        std::ostream& stream = result.state == AskState::Answered ? context_.out : context_.log;
        stream << words.headline << "\n" << words.detail << (words.detail.empty() ? "" : "\n");
        if (words.offer != nullptr && !context_.quiet) {
            context_.log << context_.Say(texts::kPrepareFor) << '"' << words.offer->name << "\"\n";
        }
    }

    void WriteJson(const app::AskResult& result) const {
        const Json head{{"schema", kAnswerSchema},
                        {"output", result.output},
                        {"input", result.input.empty() ? Json() : Json(result.input)},
                        {"state", kStates.at(static_cast<std::size_t>(result.state))}};
        for (const instruments::InstrumentAnswer& answer : result.answers) {
            Json line = head;
            line.update(AnswerJson(answer));
            WriteLine(line);
        }
        if (result.answers.empty()) {
            WriteLine(head);
        }
    }

    static Json AnswerJson(const instruments::InstrumentAnswer& answer) {
        const auto text = [](const std::string& value) {
            return value.empty() ? Json() : Json(value);
        };
        const bool known = answer.instrument != nullptr;
        return {{"maker", text(answer.maker)},
                {"model", text(answer.model)},
                {"instrument", known ? Json(std::string(answer.instrument->name)) : Json()},
                {"followsSetOnly", answer.FollowsSetOnly()},
                {"makerCode", text(answer.reply.maker)},
                {"family", text(answer.reply.family)},
                {"member", text(answer.reply.member)},
                {"version", text(answer.reply.version)},
                {"xgModel", text(answer.xgModel)}};
    }

    // Names come from foreign devices and need not be valid UTF-8.
    void WriteLine(const Json& line) const {
        context_.out << line.dump(-1, ' ', false, Json::error_handler_t::replace) << "\n";
    }

    const CliContext& context_;
    bool json_;
    CliMessageHost host_;
    std::unique_ptr<devices::MidiDevices> devices_;
    session::Session session_;
};

} // namespace

int AskAtPort(const CliContext& context, const AskPlan& plan, bool json) {
    return PortQuestion(context, json).Run(plan);
}

} // namespace tracksmith::cli
