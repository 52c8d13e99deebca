#include "base/message_host.h"

#include "base/errors.h"

namespace tracksmith {

void RaiseMidiError(MessageHost& host, const Text& text) {
    RaiseMidiError(host, std::string(text.In(host.CurrentLanguage())));
}

void RaiseMidiError(MessageHost& host, const std::string& text) {
    host.ShowMessage(text);
    throw EMidiError(text);
}

} // namespace tracksmith
