#include "app/ask_words.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "base/display_text.h"

#include "app/ask_texts.h"
#include "instruments/voices/texts.h"

namespace tracksmith::app {
namespace {

using instruments::InstrumentAnswer;

// The wording with `value` in place of %1 and `second` in place of %2.
std::string Fill(const Text& text, Language language, std::string_view value,
                 std::string_view second = {}) {
    std::string filled(text.In(language));
    const std::size_t two = filled.find("%2");
    if (two != std::string::npos) {
        filled.replace(two, 2, second);
    }
    const std::size_t one = filled.find("%1");
    return one == std::string::npos ? filled : filled.replace(one, 2, value);
}

void AddSentence(std::string& text, const std::string& sentence) {
    text.append(text.empty() || sentence.empty() ? "" : "\n").append(sentence);
}

// What an answer means for the choice of the instrument.
std::string Remark(const InstrumentAnswer& answer, Language language) {
    if (answer.FollowsSetOnly()) {
        return Fill(texts::kFollowsSet, language,
                    instruments::texts::SetName(answer.instrument->id));
    }
    if (answer.instrument != nullptr) {
        return {};
    }
    return answer.model.empty() ? Fill(texts::kModelUnknown, language,
                                       answer.reply.family + ' ' + answer.reply.member)
                                : std::string(texts::kNotListed.In(language));
}

std::string ChoiceRemark(const InstrumentAnswer& answer, std::string_view chosen,
                         Language language) {
    if (answer.instrument != nullptr && answer.instrument->name == chosen) {
        return std::string(texts::kIsChosen.In(language));
    }
    return chosen.empty() ? std::string(texts::kNoneIsChosen.In(language))
                          : Fill(texts::kOtherIsChosen, language, chosen);
}

std::string OthersRemark(const AskResult& result, const InstrumentAnswer& main, Language language) {
    std::string names;
    for (const InstrumentAnswer& answer : result.answers) {
        if (&answer != &main) {
            names += (names.empty() ? "" : ", ") + AnswerName(answer, language);
        }
    }
    return names.empty() ? names : Fill(texts::kAlsoAnswered, language, names);
}

AskWords AnsweredWords(const AskResult& result, std::optional<std::string_view> chosen,
                       Language language) {
    AskWords words;
    const InstrumentAnswer* answer = MainAnswer(result, chosen.value_or(""));
    words.headline =
        Fill(texts::kAnswered, language, AnswerName(*answer, language), DisplayText(result.output));
    AddSentence(words.detail, Remark(*answer, language));
    if (chosen) {
        AddSentence(words.detail, ChoiceRemark(*answer, *chosen, language));
    }
    AddSentence(words.detail, OthersRemark(result, *answer, language));
    const bool isChosen = answer->instrument != nullptr && answer->instrument->name == chosen;
    words.offer = isChosen ? nullptr : answer->instrument;
    return words;
}

/// The words for a question that nothing has answered.
struct PlainWords {
    AskState state;
    Text headline;
    Text detail;
};

constexpr auto kPlainWords = std::to_array<PlainWords>({
    {AskState::Asking, texts::kAsking, texts::kAwaited},
    {AskState::NoAnswer, texts::kNoAnswer, texts::kNoAnswerChecks},
    {AskState::Playing, texts::kSongPlays, texts::kSongPlaysAdvice},
    {AskState::BuiltIn, texts::kBuiltInIsKnown, texts::kBuiltInAdvice},
    {AskState::NoOutput, texts::kOutputMissing, texts::kOutputMissingAdvice},
    {AskState::OutputFails, texts::kOutputFails, texts::kOutputFailsAdvice},
    {AskState::NoInput, texts::kInputMissing, texts::kInputMissingAdvice},
    {AskState::InputFails, texts::kInputFails, texts::kInputFailsAdvice},
});

} // namespace

const InstrumentAnswer* MainAnswer(const AskResult& result, std::string_view chosen) {
    const auto rank = [&](const InstrumentAnswer& answer) {
        if (answer.instrument == nullptr) {
            return 0;
        }
        return answer.instrument->name == chosen ? 3 : answer.FollowsSetOnly() ? 1 : 2;
    };
    const auto best = std::ranges::max_element(result.answers, {}, rank);
    return best == result.answers.end() ? nullptr : &*best;
}

std::string AnswerName(const InstrumentAnswer& answer, Language language) {
    if (answer.instrument != nullptr && !answer.FollowsSetOnly()) {
        return std::string(answer.instrument->name);
    }
    if (answer.maker.empty()) {
        return Fill(texts::kMakerUnknown, language, answer.reply.maker);
    }
    return answer.model.empty() ? Fill(texts::kModelOf, language, answer.maker)
                                : answer.maker + ' ' + answer.model;
}

AskWords WordsOf(const AskResult& result, std::optional<std::string_view> chosen,
                 Language language) {
    if (result.state == AskState::Answered) {
        return AnsweredWords(result, chosen, language);
    }
    const auto* words = std::ranges::find(kPlainWords, result.state, &PlainWords::state);
    if (words == kPlainWords.end()) {
        return {};
    }
    const bool ofInput = result.state == AskState::InputFails;
    return {Fill(words->headline, language, DisplayText(ofInput ? result.input : result.output)),
            Fill(words->detail, language, DisplayText(result.input)), nullptr};
}

} // namespace tracksmith::app
