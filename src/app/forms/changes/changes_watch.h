#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include <QObject>

#include "app/forms/changes/background_comparison.h"
#include "app/session/session.h"

namespace tracksmith::forms {

class SessionSignals;

/// While it is active: compares the loaded file with the song as it would be saved, anew after each
/// edit. The song is coded here, the rest is done beside the window. Not while another song is
/// heard, since it cannot be changed then.
class ChangesWatch : public QObject {
    Q_OBJECT

public:
    /// Both must outlive the watch.
    ChangesWatch(session::Session& session, SessionSignals& signalSource);

    /// Begins at once or rests from now on. Faults are worded in `language`.
    void SetActive(bool active, Language language);

    /// Null until the first comparison is done; may be about an earlier state while Busy.
    const std::shared_ptr<const ComparedSongs>& Result() const { return result_; }
    bool Busy() const { return comparison_.Busy(); }

signals:
    /// A result is there, or a comparison has begun.
    void Changed();

private:
    /// What tells one state of the song from another.
    struct State {
        std::uint64_t edits = 0;
        std::int32_t tempoOffset = 0;
        const std::vector<std::uint8_t>* loaded = nullptr;
        friend bool operator==(const State&, const State&) = default;
    };

    void Look();
    void Begin();

    session::Session& session_;
    BackgroundComparison comparison_;
    std::shared_ptr<const ComparedSongs> result_;
    State compared_;
    Language language_ = Language::English;
    bool active_ = false;
};

} // namespace tracksmith::forms
