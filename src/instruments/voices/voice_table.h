#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "instruments/voices/voice.h"

namespace tracksmith::instruments {

/// The voices of one instrument in the order of their file, all texts in one buffer. Immutable, so
/// any number of threads may read it; moving keeps the records and their texts where they are.
class VoiceTable {
public:
    VoiceTable() = default;
    /// `voices` refer to `text`, which the table takes over.
    VoiceTable(std::unique_ptr<const std::string> text, std::vector<Voice> voices);

    VoiceTable(VoiceTable&&) noexcept = default;
    VoiceTable& operator=(VoiceTable&&) noexcept = default;
    VoiceTable(const VoiceTable&) = delete;
    VoiceTable& operator=(const VoiceTable&) = delete;
    ~VoiceTable() = default;

    std::span<const Voice> Voices() const { return voices_; }
    /// Every family once, in the order in which they first occur.
    std::span<const std::string_view> Families() const { return families_; }
    bool HasFamily(std::string_view family) const;

    /// The first drum kit (`kits`) or else the first voice with these numbers; null without one.
    const Voice* Find(bool kits, VoiceNumbers numbers) const;

private:
    std::unique_ptr<const std::string> text_;
    std::vector<Voice> voices_;
    std::vector<std::string_view> families_;
    // Kind and numbers in the upper half, the place of the record in the lower; sorted.
    std::vector<std::uint64_t> index_;
};

} // namespace tracksmith::instruments
