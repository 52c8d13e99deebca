#pragma once

#include <string_view>

#include "base/forms/qt_text.h"
#include "base/message_host.h"

#include "app/forms/notices/notice_bar.h"

namespace tracksmith::forms {

/// Shows messages that must not interrupt the user, like those of the player, in the notice bar.
/// Questions are answered with No. User-interface thread.
class NoticeHost final : public MessageHost {
public:
    /// `owner` gives the language; both must outlive the host.
    NoticeHost(NoticeBar& bar, const MessageHost& owner) : bar_(bar), owner_(owner) {}

    Language CurrentLanguage() const override { return owner_.CurrentLanguage(); }
    void ShowMessage(std::string_view text) override { bar_.ShowPlain(ToQString(text)); }
    bool AskYesNo(std::string_view /*question*/) override { return false; }

private:
    NoticeBar& bar_;
    const MessageHost& owner_;
};

} // namespace tracksmith::forms
