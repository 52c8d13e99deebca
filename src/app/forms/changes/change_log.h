#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "base/text.h"

#include "app/diff/fingerprint.h"
#include "app/session/session.h"

namespace tracksmith::forms {

/// Remembers which tool has touched what since the song was loaded, so that each difference can be
/// told with the name of the tools that may have made it. Where the song comes back to a state that
/// it had, by an undo for example, what was done since then is forgotten. Owner's thread of the
/// session; each edit costs two passes over the song.
class ChangeLog : private session::SessionListener {
public:
    /// `session` must outlive the log.
    explicit ChangeLog(session::Session& session);
    ChangeLog(const ChangeLog&) = delete;
    ChangeLog& operator=(const ChangeLog&) = delete;
    ~ChangeLog() override;

    /// The tools that have touched what `row` is about, in their order: "Preparing, Mixer". What
    /// none of them has touched was done while the song was loaded.
    std::string DoneBy(const diff::Difference& row, Language language);

private:
    struct Entry {
        Text tool;
        diff::TouchedControls touched;
        /// What follows has another place.
        bool movesTime = false;
    };
    using Entries = std::vector<Entry>;

    void OnChanging() override;
    void OnSongChanged(const session::ChangeKind& kind) override;

    void Forget();
    void NoteMixer();
    std::string Tools(const diff::Difference& row, bool movesTime, Language language) const;
    void Add(const Text& tool, const diff::Fingerprint& now);
    const Text& WithoutTool(const diff::Difference& row) const;

    session::Session& session_;
    std::optional<diff::Fingerprint> last_;
    /// Session::Edits when that was taken.
    std::uint64_t edits_ = 0;
    Entries entries_;
    /// What had been done in each state that the song has had, by the sum of its fingerprint.
    std::map<std::uint64_t, Entries> states_;
};

} // namespace tracksmith::forms
