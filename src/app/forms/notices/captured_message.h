#pragma once

#include <string>
#include <string_view>

#include "base/message_host.h"

namespace tracksmith::forms {

/// Keeps the message of a command's fault instead of showing it, so that it can be shown together
/// with a way on. Questions go to the user as usual. User-interface thread.
class CapturedMessage final : public MessageHost {
public:
    /// `owner` must outlive the object.
    explicit CapturedMessage(MessageHost& owner) : owner_(owner) {}

    Language CurrentLanguage() const override { return owner_.CurrentLanguage(); }
    void ShowMessage(std::string_view text) override {
        text_ += (text_.empty() ? "" : "\n\n") + std::string(text);
    }
    bool AskYesNo(std::string_view question) override { return owner_.AskYesNo(question); }

    /// Everything that was to be shown, UTF-8.
    const std::string& Text() const { return text_; }

private:
    MessageHost& owner_;
    std::string text_;
};

} // namespace tracksmith::forms
