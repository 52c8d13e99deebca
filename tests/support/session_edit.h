#pragma once

#include "base/recording_message_host.h"

#include "app/session/session.h"

namespace tracksmith::test {

/// Lets `edit` change the session's workspace, as an edit of the user's.
template <typename F>
void EditSession(session::Session& session, F&& edit) {
    constexpr session::ChangeKind kEdit{.name = Text{Both{"Test"}}};
    RecordingMessageHost host;
    session.Change(kEdit, host, [&](session::Workspace& workspace) {
        edit(workspace);
        return true;
    });
}

} // namespace tracksmith::test
