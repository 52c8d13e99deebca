#pragma once

#include <string>

#include "app/cli/cli_context.h"

namespace tracksmith::cli {

/// Ports as the user named them.
struct AskPlan {
    std::string output;
    /// Empty for that of the same name as the output, or the only one.
    std::string input;
};

/// Asks which instrument is connected and writes who has answered, with `json` one object per
/// answer and line. Returns kOk for an answer, kFindings for none, kPortOrAudioMissing when there
/// is no such port or it cannot be used.
int AskAtPort(const CliContext& context, const AskPlan& plan, bool json);

} // namespace tracksmith::cli
