#include "instruments/identity/identity_question.h"

#include <algorithm>
#include <optional>
#include <string>

namespace tracksmith::instruments {
namespace {

constexpr const char* kYamahaText = "43";

bool IsUnknownYamaha(const InstrumentAnswer& answer) {
    return answer.reply.maker == kYamahaText && answer.model.empty();
}

bool IsYamahaWithoutXgModel(const InstrumentAnswer& answer) {
    return answer.reply.maker == kYamahaText && answer.xgModel.empty();
}

} // namespace

IdentityQuestion::Step IdentityQuestion::Next(Time now) {
    if (phase_ == Phase::Begin) {
        phase_ = Phase::Identity;
        deadline_ = now + kPatience;
        return Step::SendIdentityRequest;
    }
    if (now < deadline_) {
        return Step::Wait;
    }
    if (phase_ == Phase::Identity && NeedsXgModel()) {
        phase_ = Phase::XgModel;
        deadline_ = now + kPatience;
        return Step::SendXgModelRequest;
    }
    return Step::End;
}

bool IdentityQuestion::NeedsXgModel() const {
    return answers_.empty() || std::ranges::any_of(answers_, IsUnknownYamaha);
}

void IdentityQuestion::Take(MessageBytes bytes, Time now) {
    for (const auto& message : joiner_.Take(bytes)) {
        if (TakeMessage(message)) {
            deadline_ = std::min(deadline_, now + kSettling);
        }
    }
}

// True for an answer to what was asked.
bool IdentityQuestion::TakeMessage(MessageBytes message) {
    if (const auto reply = ReadIdentityReply(message)) {
        if (std::ranges::find(answers_, *reply, &InstrumentAnswer::reply) == answers_.end()) {
            answers_.push_back(table_.Name(*reply));
        }
        return phase_ == Phase::Identity;
    }
    const auto model = phase_ == Phase::XgModel ? ReadXgModelName(message) : std::nullopt;
    if (model) {
        AddXgModel(*model);
    }
    return model.has_value();
}

void IdentityQuestion::AddXgModel(const std::string& model) {
    if (std::ranges::find(answers_, model, &InstrumentAnswer::xgModel) != answers_.end()) {
        return;
    }
    auto answer = std::ranges::find_if(answers_, IsUnknownYamaha);
    if (answer == answers_.end()) {
        answer = std::ranges::find_if(answers_, IsYamahaWithoutXgModel);
    }
    if (answer == answers_.end()) {
        answer = answers_.insert(answers_.end(), InstrumentAnswer());
    }
    IdentityTable::AddXgModel(*answer, model);
}

} // namespace tracksmith::instruments
