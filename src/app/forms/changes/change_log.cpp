#include "app/forms/changes/change_log.h"

#include <algorithm>
#include <cstddef>
#include <new>
#include <string_view>
#include <utility>

#include "app/forms/changes/texts.h"

namespace tracksmith::forms {
namespace {

using diff::Change;
using diff::Difference;
using diff::Fingerprint;

constexpr std::size_t kMostStates = 64;

// A stretch, or the song's end.
bool TellsOfTime(const Difference& row) {
    return row.change >= Change::Cut ||
           (row.kind == diff::Kind::Tempo && row.control == diff::kSongLength);
}

} // namespace

ChangeLog::ChangeLog(session::Session& session) : session_(session) {
    session_.AddListener(*this);
}

ChangeLog::~ChangeLog() {
    session_.RemoveListener(*this);
}

// Without memory the edits before are told as the loading's; nothing else depends on them.
void ChangeLog::OnChanging() {
    try {
        NoteMixer();
    } catch (const std::bad_alloc&) {
        Forget();
    }
}

void ChangeLog::OnSongChanged(const session::ChangeKind& kind) {
    if (kind.replaces || !last_) {
        Forget();
        return;
    }
    try {
        Add(kind.name, Fingerprint(session_.Song(), Fingerprint::Values::Now));
    } catch (const std::bad_alloc&) {
        Forget();
    }
}

void ChangeLog::Forget() {
    last_.reset();
    entries_.clear();
    states_.clear();
}

// What has changed since the last edit was moved in place.
void ChangeLog::NoteMixer() {
    if (!last_) {
        last_.emplace(session_.Song(), Fingerprint::Values::AsLoaded);
        states_[last_->Sum()] = entries_;
    } else if (edits_ == session_.Edits()) {
        return;
    }
    Add(changes_texts::kByMixer, Fingerprint(session_.Song(), Fingerprint::Values::Now));
}

void ChangeLog::Add(const Text& tool, const Fingerprint& now) {
    edits_ = session_.Edits();
    if (now == *last_) {
        return;
    }
    const std::uint64_t sum = now.Sum();
    if (const auto former = states_.find(sum); former != states_.end()) {
        entries_ = former->second;
    } else {
        auto entry = std::ranges::find_if(
            entries_, [&](const Entry& each) { return each.tool.english == tool.english; });
        if (entry == entries_.end()) {
            entry = entries_.insert(entry, Entry{tool, {}, false});
        }
        entry->touched |= now.Against(*last_);
        entry->movesTime = entry->movesTime || now.OtherLength(*last_);
        if (states_.size() >= kMostStates) {
            states_.clear();
        }
        states_[sum] = entries_;
    }
    last_ = now;
}

// The transposition and the practice tempo are no edits, but are saved.
const Text& ChangeLog::WithoutTool(const Difference& row) const {
    if (row.change == Change::Transposed) {
        return changes_texts::kByMixer;
    }
    const bool tempo = row.kind == diff::Kind::Tempo && row.control == song::kMetaTempo;
    return tempo && session_.TempoOffset() != 0 ? changes_texts::kByPracticeTempo
                                                : changes_texts::kByLoading;
}

std::string ChangeLog::Tools(const Difference& row, bool movesTime, Language language) const {
    std::string names;
    for (const Entry& entry : entries_) {
        if (entry.movesTime == movesTime &&
            (TellsOfTime(row) || diff::Touches(entry.touched, row))) {
            names += (names.empty() ? "" : ", ") + std::string(entry.tool.In(language));
        }
    }
    return names;
}

// What moves the time of everything is only named where nothing else has been at work.
std::string ChangeLog::DoneBy(const Difference& row, Language language) {
    if (session_.HasSong() && !session_.HearsOther()) {
        OnChanging();
    }
    std::string names = TellsOfTime(row) ? std::string() : Tools(row, false, language);
    if (names.empty()) {
        names = Tools(row, true, language);
    }
    return names.empty() ? std::string(WithoutTool(row).In(language)) : names;
}

} // namespace tracksmith::forms
