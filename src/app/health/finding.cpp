#include "app/health/finding.h"

#include <array>

#include "app/health/texts.h"

namespace tracksmith::health {
namespace {

const RuleWords& WordsOf(Rule rule) {
    return kRuleWords.at(static_cast<std::size_t>(rule));
}

// "%1" is the number of times, "%2" the value, "%3" the instrument.
std::string Filled(const Text& text, const Finding& finding, std::string_view instrument,
                   Language language) {
    const std::string_view wording = text.In(language);
    std::string filled;
    for (std::size_t i = 0; i < wording.size(); ++i) {
        if (wording[i] != '%' || i + 1 == wording.size()) {
            filled += wording[i];
            continue;
        }
        switch (wording[++i]) {
            case '1':
                filled += std::to_string(finding.count);
                break;
            case '2':
                filled += (finding.rule == Rule::BendAtEnd && finding.value > 0 ? "+" : "") +
                          std::to_string(finding.value);
                break;
            default:
                filled += instrument.empty() ? texts::kTheInstrument.In(language) : instrument;
        }
    }
    return filled;
}

} // namespace

std::string_view RuleName(Rule rule) {
    return WordsOf(rule).name;
}

std::string_view SeverityName(Severity severity) {
    constexpr std::array<std::string_view, 3> kNames{"error", "warning", "hint"};
    return kNames.at(static_cast<std::size_t>(severity));
}

const Text& SeverityText(Severity severity) {
    return texts::kSeverities.at(static_cast<std::size_t>(severity));
}

std::string Title(const Finding& finding, std::string_view instrument, Language language) {
    return Filled(WordsOf(finding.rule).title, finding, instrument, language);
}

std::string Explanation(const Finding& finding, Language language) {
    return Filled(WordsOf(finding.rule).explanation, finding, {}, language);
}

std::string WhatWouldChange(const Finding& finding, Language language) {
    return finding.repairable ? Filled(WordsOf(finding.rule).change, finding, {}, language)
                              : std::string();
}

const Text& RepairText(Rule rule) {
    return WordsOf(rule).repair;
}

} // namespace tracksmith::health
