#include "app/health/check_health.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "app/health/channel_check.h"
#include "app/health/note_check.h"

namespace tracksmith::health {
namespace {

// What loading and preparing have counted.
void TakeReports(const session::Workspace& workspace, FindingList& found) {
    const std::int64_t lengthened = workspace.loadReport[song::LoadChange::NotesLengthened];
    if (lengthened > 0) {
        found.Add(Rule::LengthenedNotes, Severity::Hint, kAllChannels, false).count = lengthened;
    }
    std::int64_t early = 0;
    for (const instruments::ChannelReport& channel : workspace.preparation.channels) {
        early += channel.earlyNotes;
    }
    if (early > 0) {
        found.AddAt(Rule::EarlyNotes, Severity::Warning, kAllChannels, 0, false).count = early;
    }
}

} // namespace

std::size_t HealthReport::Repairable() const {
    return static_cast<std::size_t>(std::ranges::count(findings, true, &Finding::repairable));
}

HealthCheck::HealthCheck(const session::Workspace& workspace, const HealthOptions& options)
    : workspace_(workspace), options_(options) {}

HealthCheck::~HealthCheck() = default;

bool HealthCheck::Step(std::size_t events) {
    const song::Song& song = workspace_.song;
    std::size_t done = 0;
    for (; track_ < song.tracks.size() && done < events; ++track_) {
        CheckNotes(song, song.tracks[track_], options_.shortNote, found_);
        done += static_cast<std::size_t>(std::max(song.tracks[track_].eventCount, 0));
    }
    if (track_ < song.tracks.size() || done >= events) {
        return false;
    }
    if (!channels_) {
        channels_ = std::make_unique<ChannelCheck>(song, options_, found_);
    }
    return channels_->Step(events - done);
}

HealthReport HealthCheck::Take() {
    TakeReports(workspace_, found_);
    HealthReport report;
    report.findings = found_.Take();
    for (const Finding& finding : report.findings) {
        ++report.counts.at(static_cast<std::size_t>(finding.severity));
    }
    return report;
}

HealthReport CheckHealth(const session::Workspace& workspace, const HealthOptions& options) {
    HealthCheck check(workspace, options);
    while (!check.Step(std::numeric_limits<std::size_t>::max())) {
    }
    return check.Take();
}

} // namespace tracksmith::health
