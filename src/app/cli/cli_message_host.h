#pragma once

#include <string>

#include "base/message_host.h"

#include "app/cli/cli_context.h"

namespace tracksmith::cli {

/// Shows the core's messages as lines of the log, each with the name of the file at work. Questions
/// are answered No unless the user said --yes.
class CliMessageHost final : public MessageHost {
public:
    /// `context` must outlive the host.
    explicit CliMessageHost(const CliContext& context) : context_(context) {}

    /// Name of the file that the following messages are about (UTF-8).
    void SetFile(std::string name) { file_ = std::move(name); }

    Language CurrentLanguage() const override { return context_.language; }
    void ShowMessage(std::string_view text) override;
    bool AskYesNo(std::string_view question) override;

private:
    const CliContext& context_;
    std::string file_;
};

} // namespace tracksmith::cli
