#include "song/parameter_list.h"

#include <algorithm>
#include <bit>

namespace tracksmith::song {
namespace {

std::size_t HashOf(ParameterNumber number) {
    const std::size_t key =
        (number.registered ? 1U << 14 : 0U) | (std::size_t{number.msb} << 7) | number.lsb;
    // Neighbours lie beside each other, others far apart.
    return key + (key >> 7) * 37;
}

} // namespace

void ParameterList::Reserve(std::size_t parameters) {
    entries_.reserve(parameters);
    if (2 * parameters > slots_.size()) {
        MakeSlots(parameters);
    }
}

void ParameterList::Clear() {
    entries_.clear();
    std::ranges::fill(slots_, kNone);
    first_ = last_ = kNone;
}

// The slot of a parameter, or the free one that is to be its slot. There is always a free one.
std::size_t ParameterList::SlotOf(ParameterNumber number) const {
    std::size_t slot = HashOf(number) & (slots_.size() - 1);
    while (slots_[slot] != kNone && entries_[slots_[slot]].setting.number != number) {
        slot = (slot + 1) & (slots_.size() - 1);
    }
    return slot;
}

void ParameterList::MakeSlots(std::size_t parameters) {
    slots_.assign(std::bit_ceil(std::max<std::size_t>(2 * parameters, 8)), kNone);
    for (std::size_t place = 0; place < entries_.size(); ++place) {
        slots_[SlotOf(entries_[place].setting.number)] = static_cast<std::uint16_t>(place);
    }
}

void ParameterList::Unlink(std::uint16_t place) {
    const Entry& entry = entries_[place];
    (entry.before == kNone ? first_ : entries_[entry.before].after) = entry.after;
    (entry.after == kNone ? last_ : entries_[entry.after].before) = entry.before;
}

void ParameterList::Append(std::uint16_t place) {
    entries_[place].before = last_;
    entries_[place].after = kNone;
    (last_ == kNone ? first_ : entries_[last_].after) = place;
    last_ = place;
}

void ParameterList::Enter(ParameterNumber number, bool msb, Setting value) {
    if (2 * (entries_.size() + 1) > slots_.size()) {
        MakeSlots(entries_.size() + 1);
    }
    std::uint16_t& slot = slots_[SlotOf(number)];
    if (slot == kNone) {
        entries_.push_back({{number, {}, {}}});
        slot = static_cast<std::uint16_t>(entries_.size() - 1);
    } else {
        Unlink(slot);
    }
    ParameterSetting& setting = entries_[slot].setting;
    (msb ? setting.dataMsb : setting.dataLsb) = value;
    Append(slot);
}

const ParameterSetting* ParameterList::Find(ParameterNumber number) const {
    const std::uint16_t place = slots_.empty() ? kNone : slots_[SlotOf(number)];
    return place == kNone ? nullptr : &entries_[place].setting;
}

} // namespace tracksmith::song
