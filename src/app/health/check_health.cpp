#include "app/health/check_health.h"

#include <algorithm>

#include "app/health/channel_check.h"
#include "app/health/finding_list.h"
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

HealthReport CheckHealth(const session::Workspace& workspace, const HealthOptions& options) {
    FindingList found;
    CheckNotes(workspace.song, options.shortNote, found);
    CheckChannels(workspace.song, options, found);
    TakeReports(workspace, found);
    HealthReport report;
    report.findings = found.Take();
    for (const Finding& finding : report.findings) {
        ++report.counts.at(static_cast<std::size_t>(finding.severity));
    }
    return report;
}

} // namespace tracksmith::health
