#include "instruments/voices/voice_table.h"

#include <algorithm>
#include <utility>

namespace tracksmith::instruments {
namespace {

constexpr unsigned kRowBits = 32;

std::uint64_t KeyOf(bool kits, VoiceNumbers numbers) {
    const std::uint64_t key = (kits ? 1U << 21U : 0U) | (unsigned{numbers.msb} << 14U) |
                              (unsigned{numbers.lsb} << 7U) | numbers.program;
    return key << kRowBits;
}

} // namespace

VoiceTable::VoiceTable(std::unique_ptr<const std::string> text, std::vector<Voice> voices)
    : text_(std::move(text)), voices_(std::move(voices)) {
    index_.reserve(voices_.size());
    for (const Voice& voice : voices_) {
        // Records of one family usually stand together, so that the list is rarely searched.
        if (families_.empty() || (families_.back() != voice.family && !HasFamily(voice.family))) {
            families_.push_back(voice.family);
        }
        index_.push_back(KeyOf(voice.IsKit(), voice.Numbers()) | voice.row);
    }
    std::ranges::sort(index_);
}

bool VoiceTable::HasFamily(std::string_view family) const {
    return std::ranges::find(families_, family) != families_.end();
}

const Voice* VoiceTable::Find(bool kits, VoiceNumbers numbers) const {
    const std::uint64_t key = KeyOf(kits, numbers);
    const auto first = std::ranges::lower_bound(index_, key);
    if (first == index_.end() || *first >> kRowBits != key >> kRowBits) {
        return nullptr;
    }
    return &voices_[static_cast<std::uint32_t>(*first)];
}

} // namespace tracksmith::instruments
