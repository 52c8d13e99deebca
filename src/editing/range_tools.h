#pragma once

#include <cstdint>

#include "base/message_host.h"

#include "app/session/session.h"
#include "editing/range_check.h"
#include "editing/range_edits.h"
#include "editing/range_position.h"
#include "editing/undo.h"

namespace tracksmith::editing {

/// The three tools as a user runs them: each checks what was typed, asks where the song has faults,
/// changes the song of a session as one change that can be undone, and raises EMidiError, with the
/// message shown, when it does not; the song and what could be undone are as before then. Owner's
/// thread of the session.
class RangeTools {
public:
    /// All must outlive the object.
    RangeTools(session::Session& session, Undo& undo, MessageHost& host)
        : session_(session), undo_(undo), host_(host) {}

    SeamReport Delete(const RangeWish& wish);
    /// With `bringState` the copy plays with the voices, settings and tempo of its source.
    SeamReport Copy(const RangeWish& wish, bool bringState = true);

    /// Returns how many notes were moved.
    std::int64_t Transpose(const RangeWish& wish, const Transposing& transposing);

private:
    NoteFaultListener Questions(bool transposing);

    session::Session& session_;
    Undo& undo_;
    MessageHost& host_;
};

} // namespace tracksmith::editing
