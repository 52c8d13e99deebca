#include "song/parameter_list.h"

#include <algorithm>

namespace tracksmith::song {
namespace {

std::uint16_t KeyOf(ParameterNumber number) {
    return static_cast<std::uint16_t>((number.registered ? 1U << 14 : 0U) |
                                      (static_cast<unsigned>(number.msb) << 7) | number.lsb);
}

} // namespace

void ParameterList::Enter(ParameterNumber number, bool msb, Setting value) {
    ParameterSetting entry{number, {}, {}};
    const auto known = places_.find(KeyOf(number));
    if (known != places_.end()) {
        entry = entries_[known->second];
        entries_[known->second].number = {};
    }
    (msb ? entry.dataMsb : entry.dataLsb) = value;
    places_[KeyOf(number)] = entries_.size();
    entries_.push_back(entry);
    if (entries_.size() > 2 * places_.size()) {
        DropGaps();
    }
}

const ParameterSetting* ParameterList::Find(ParameterNumber number) const {
    const auto known = places_.find(KeyOf(number));
    return known == places_.end() ? nullptr : &entries_[known->second];
}

void ParameterList::DropGaps() {
    std::erase_if(entries_, [](const ParameterSetting& entry) { return !entry.number.Selects(); });
    for (std::size_t place = 0; place < entries_.size(); ++place) {
        places_[KeyOf(entries_[place].number)] = place;
    }
}

} // namespace tracksmith::song
