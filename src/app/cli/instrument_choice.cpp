#include "app/cli/instrument_choice.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <ostream>
#include <sstream>

#include "app/cli/texts.h"

namespace tracksmith::cli {
namespace {

using instruments::Instrument;
using Matches = std::vector<const Instrument*>;

std::string Lower(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return lower;
}

const Instrument* ByNumber(std::string_view text) {
    int number = -1;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool whole = error == std::errc() && end == text.data() + text.size();
    return whole && number >= 0 && number < int{instruments::kInstrumentCount}
               ? instruments::FindInstrument(static_cast<instruments::InstrumentId>(number))
               : nullptr;
}

// "-1" is a number that no instrument has, although a name may contain it.
bool IsSignedNumber(std::string_view text) {
    return text.size() > 1 && (text.front() == '-' || text.front() == '+') &&
           text.find_first_not_of("0123456789", 1) == std::string_view::npos;
}

bool ContainsAll(const std::string& name, std::string_view words) {
    std::istringstream stream{Lower(words)};
    for (std::string word; stream >> word;) {
        if (name.find(word) == std::string::npos) {
            return false;
        }
    }
    return true;
}

// "genos" is the Genos although the Genos2 has it in its name too.
const Instrument* OnlyOneThatEndsWith(const Matches& matches, const std::string& ending) {
    const Instrument* found = nullptr;
    for (const Instrument* match : matches) {
        if (Lower(match->name).ends_with(ending)) {
            if (found != nullptr) {
                return nullptr;
            }
            found = match;
        }
    }
    return found;
}

} // namespace

Matches MatchInstruments(std::string_view words) {
    if (const Instrument* numbered = ByNumber(words)) {
        return {numbered};
    }
    Matches matches;
    for (const Instrument& instrument : instruments::Catalogue()) {
        if (ContainsAll(Lower(instrument.name), words)) {
            matches.push_back(&instrument);
        }
    }
    return matches;
}

const Instrument* ChooseInstrument(const CliContext& context, const std::string& name) {
    if (const Instrument* exact = instruments::FindInstrument(instruments::CurrentName(name))) {
        return exact;
    }
    const bool isName = !name.empty() && !IsSignedNumber(name);
    const Matches matches = isName ? MatchInstruments(name) : Matches();
    const Instrument* chosen =
        matches.size() == 1 ? matches.front() : OnlyOneThatEndsWith(matches, Lower(name));
    if (chosen == nullptr) {
        std::vector<std::string> names;
        for (const Instrument* match : matches) {
            names.emplace_back(match->name);
        }
        context.log << texts::NotOneInstrument(context.language, name, names) << "\n";
    }
    return chosen;
}

} // namespace tracksmith::cli
