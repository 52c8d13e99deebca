#pragma once

#include <string_view>

#include "base/message_host.h"
#include <QWidget>

namespace tracksmith::forms {

/// Shows the core's messages as message boxes over a window; their text is plain text. For the
/// user-interface thread.
class QtMessageHost final : public MessageHost {
public:
    /// `window` must outlive the host.
    explicit QtMessageHost(QWidget& window) : window_(window) {}

    Language CurrentLanguage() const override { return language_; }
    void SetLanguage(Language language) { language_ = language; }

    void ShowMessage(std::string_view text) override;
    bool AskYesNo(std::string_view question) override;

    /// Shows a fault with one way on, which has the button `way`. True when the user takes it.
    bool AskWayOn(std::string_view text, const Text& way);
    /// Asks between two ways, named by what they do; the first is proposed.
    bool AskWayOn(std::string_view text, const Text& way, const Text& other);

    /// What the user wants with changes that are not saved.
    enum class SaveAnswer { Save, Discard, Cancel };

    /// Asks what to do with the changes in `fileName` before they are lost; closing the box is
    /// Cancel.
    SaveAnswer AskSaveChanges(const QString& fileName);

private:
    QWidget& window_;
    Language language_ = Language::English;
};

} // namespace tracksmith::forms
