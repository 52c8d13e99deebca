#pragma once

namespace tracksmith::forms {

/// The columns of the list of findings.
enum HealthColumn {
    SeverityColumn,
    FindingColumn,
    ChannelColumn,
    PositionColumn,
    CountColumn,
    RepairColumn,
    Columns
};

} // namespace tracksmith::forms
