#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/text.h"

#include "app/instrument_asker.h"
#include "instruments/catalogue.h"

/// What asking which instrument is connected has come to, in words.
namespace tracksmith::app {

/// A heading without a full stop, what to do in sentences, and the instrument that answered.
struct AskWords {
    std::string headline;
    /// Lines separated by line feeds; may be empty.
    std::string detail;
    /// What can be chosen now: what has answered, or the sound set that it follows, unless it is
    /// chosen already. Null without.
    const instruments::Instrument* offer = nullptr;
};

/// The answer that counts when several have come: that of the chosen instrument, else of one that
/// the catalogue has, else the first. Null when there is none.
const instruments::InstrumentAnswer* MainAnswer(const AskResult& result, std::string_view chosen);

/// What has answered, as the user knows it: "Yamaha Genos", "An instrument by Ketron".
std::string AnswerName(const instruments::InstrumentAnswer& answer, Language language);

/// The words for `result`. `chosen` is the instrument's name that songs are prepared for, empty
/// for none; nothing where there is no such choice. Empty for a question that was given up.
AskWords WordsOf(const AskResult& result, std::optional<std::string_view> chosen,
                 Language language);

} // namespace tracksmith::app
