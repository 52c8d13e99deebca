#pragma once

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

#include "app/health/finding.h"

namespace tracksmith::health {

/// Collects findings, one of a rule and channel.
class FindingList {
public:
    /// One more place of the rule on `channel`.
    Finding& Add(Rule rule, Severity severity, std::uint8_t channel, bool repairable) {
        Finding& finding = findings_[{rule, channel}];
        finding.rule = rule;
        finding.severity = severity;
        finding.channel = channel;
        finding.repairable = repairable;
        ++finding.count;
        return finding;
    }
    Finding& AddAt(Rule rule, Severity severity, std::uint8_t channel, std::int32_t tick,
                   bool repairable) {
        Finding& finding = Add(rule, severity, channel, repairable);
        if (finding.ticks.size() < kMostPlaces) {
            finding.ticks.push_back(tick);
        }
        return finding;
    }

    /// By severity, then by rule and channel; the places in order.
    std::vector<Finding> Take() {
        std::vector<Finding> list;
        for (auto& [key, finding] : findings_) {
            std::ranges::sort(finding.ticks);
            list.push_back(std::move(finding));
        }
        std::ranges::stable_sort(list, {}, &Finding::severity);
        return list;
    }

private:
    std::map<std::pair<Rule, std::uint8_t>, Finding> findings_;
};

} // namespace tracksmith::health
