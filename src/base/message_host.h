#pragma once

#include <string>
#include <string_view>

#include "base/text.h"

namespace tracksmith {

/// What the core needs from whoever shows its messages: a window, the command line or a test.
/// Called on the thread that runs the operation; an implementation for a window expects the
/// user-interface thread.
class MessageHost {
public:
    virtual ~MessageHost() = default;

    /// The language in which texts are to be shown.
    virtual Language CurrentLanguage() const = 0;

    /// Shows one message (UTF-8) and returns when the user has seen it.
    virtual void ShowMessage(std::string_view text) = 0;

    /// Asks a question (UTF-8). Returns true for Yes; a host that cannot ask answers No, which is
    /// always the answer that loses nothing.
    virtual bool AskYesNo(std::string_view question) = 0;
};

/// Shows `text` and then raises it as EMidiError with the same wording.
[[noreturn]] void RaiseMidiError(MessageHost& host, const Text& text);

/// Shows a composed `text` (UTF-8) and then raises it as EMidiError.
[[noreturn]] void RaiseMidiError(MessageHost& host, const std::string& text);

} // namespace tracksmith
