#include "app/kept_words.h"

#include "app/texts.h"

namespace tracksmith::app {
namespace {

using instruments::ChannelReport;

// One entry for each kind; those of no channel are null.
constexpr auto kCounts = std::to_array<std::int32_t ChannelReport::*>(
    {&ChannelReport::earlyNotes, &ChannelReport::lost, &ChannelReport::lostDrumNotes,
     &ChannelReport::moved, &ChannelReport::repeated, &ChannelReport::undone, nullptr, nullptr});
constexpr auto kNames = std::to_array<std::string_view>(
    {"earlyNotes", "lost", "lostDrumNotes", "moved", "repeated", "undone", "parts", "messages"});

std::int64_t CountOf(const ChannelReport& channel, KeptKind kind) {
    const auto count = kCounts.at(static_cast<std::size_t>(kind));
    if (kind == KeptKind::Parts) {
        return channel.partKept ? 1 : 0;
    }
    return count == nullptr ? 0 : channel.*count;
}

KeptSum SumOf(const instruments::PreparationReport& report, KeptKind kind) {
    KeptSum sum;
    for (std::size_t i = 0; i < report.channels.size(); ++i) {
        if (const std::int64_t count = CountOf(report.channels.at(i), kind); count != 0) {
            sum.count += count;
            sum.channels.push_back(static_cast<int>(i) + 1);
        }
    }
    return sum;
}

} // namespace

KeptSums SumsOf(const instruments::PreparationReport& report) {
    KeptSums sums;
    for (std::size_t i = 0; i < sums.size(); ++i) {
        sums.at(i) = SumOf(report, static_cast<KeptKind>(i));
    }
    sums.at(static_cast<std::size_t>(KeptKind::Messages)).count = report.movedMessages;
    return sums;
}

std::string_view KeptName(KeptKind kind) {
    return kNames.at(static_cast<std::size_t>(kind));
}

std::vector<std::string> KeptLines(const instruments::PreparationReport& report,
                                   Language language) {
    const KeptSums sums = SumsOf(report);
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < sums.size(); ++i) {
        if (sums.at(i).count > 0) {
            lines.push_back(texts::Kept(language, i, sums.at(i).count, sums.at(i).channels));
        }
    }
    return lines;
}

} // namespace tracksmith::app
