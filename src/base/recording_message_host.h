#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/message_host.h"

namespace tracksmith {

/// A host that keeps every message and question instead of showing it, for tests and for batch
/// work that reports them later. Not thread-safe: one host for each worker.
class RecordingMessageHost final : public MessageHost {
public:
    explicit RecordingMessageHost(Language language = Language::English) : language_(language) {}

    Language CurrentLanguage() const override { return language_; }
    void ShowMessage(std::string_view text) override { messages.emplace_back(text); }
    bool AskYesNo(std::string_view question) override {
        questions.emplace_back(question);
        return answer;
    }

    /// Messages in the order in which they were shown.
    std::vector<std::string> messages;
    /// Questions in the order in which they were asked.
    std::vector<std::string> questions;
    /// What AskYesNo answers.
    bool answer = false;

private:
    Language language_;
};

} // namespace tracksmith
