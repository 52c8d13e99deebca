#include "instruments/picker/picker_lists.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <utility>

namespace tracksmith::instruments {
namespace {

constexpr std::size_t kAllOwnRow = 2;

std::uint8_t NumberOf(const Voice& voice, SoundOrder order) {
    return order == SoundOrder::Msb   ? voice.msb
           : order == SoundOrder::Lsb ? voice.lsb
                                      : voice.program;
}

} // namespace

PickerLists::PickerLists(VoiceList list, const VoiceMemory& memory)
    : list_(std::move(list)), memory_(memory), family_(kAllOwnRow) {
    ListFamilies();
    Search({});
    if (list_.own == 0 && families_.size() > kAllOwnRow + 1) {
        ChooseFamily(kAllOwnRow + 1);
    }
}

void PickerLists::ListFamilies() {
    families_ = {{FamilyKind::Favourites, {}, 0},
                 {FamilyKind::LastUsed, {}, 0},
                 {FamilyKind::AllOwn, {}, 0}};
    for (std::size_t i = 0; i < list_.voices.size(); ++i) {
        const FamilyKind kind = i < list_.own ? FamilyKind::Own : FamilyKind::Inherited;
        const std::string_view name = list_.voices[i]->family;
        const bool isKnown = std::ranges::any_of(
            families_, [&](const FamilyRow& row) { return row.kind == kind && row.name == name; });
        if (!isKnown) {
            families_.push_back({kind, name, 0});
        }
    }
}

bool PickerLists::IsInFamily(const FamilyRow& row, std::size_t index) const {
    const bool own = index < list_.own;
    switch (row.kind) {
        case FamilyKind::AllOwn:
            return own;
        case FamilyKind::Own:
            return own && list_.voices[index]->family == row.name;
        case FamilyKind::Inherited:
            return !own && list_.voices[index]->family == row.name;
        default:
            return false;
    }
}

// Voices of a family by their places in the list; remembered ones in the order of the memory.
std::vector<std::size_t> PickerLists::IndicesOf(const FamilyRow& row) const {
    std::vector<std::size_t> indices;
    if (row.kind == FamilyKind::Favourites || row.kind == FamilyKind::LastUsed) {
        const bool favourites = row.kind == FamilyKind::Favourites;
        for (const VoiceKey& key : favourites ? memory_.Favourites() : memory_.LastUsed()) {
            const auto found = std::ranges::find(list_.voices, key,
                                                 [](const Voice* voice) { return KeyOf(*voice); });
            if (found != list_.voices.end()) {
                indices.push_back(static_cast<std::size_t>(found - list_.voices.begin()));
            }
        }
        return indices;
    }
    for (std::size_t i = 0; i < list_.voices.size(); ++i) {
        if (IsInFamily(row, i)) {
            indices.push_back(i);
        }
    }
    return indices;
}

void PickerLists::Search(std::string_view text) {
    const VoiceSearch search(text);
    hits_.resize(list_.voices.size());
    std::ranges::transform(list_.voices, hits_.begin(),
                           [&search](const Voice* voice) { return search.Match(*voice); });
    hitCount_ = hits_.size() - static_cast<std::size_t>(std::ranges::count(hits_, VoiceHit::None));
    CountFamilies();
    GoToHits();
    ListCategories();
}

void PickerLists::GoToHits() {
    const auto first = std::ranges::find_if(families_.begin() + kAllOwnRow, families_.end(),
                                            [](const FamilyRow& row) { return row.hits > 0; });
    if (families_[family_].hits == 0 && first != families_.end()) {
        family_ = static_cast<std::size_t>(first - families_.begin());
        categoryName_ = {};
    }
}

void PickerLists::CountFamilies() {
    for (FamilyRow& row : families_) {
        const std::vector<std::size_t> indices = IndicesOf(row);
        row.hits = static_cast<std::size_t>(std::ranges::count_if(
            indices, [this](std::size_t index) { return hits_[index] != VoiceHit::None; }));
    }
}

void PickerLists::ListCategories() {
    categories_ = {{{}, 0}};
    std::map<std::string_view, std::size_t> rows;
    for (const std::size_t index : IndicesOf(families_[family_])) {
        const std::string_view name = list_.voices[index]->category;
        const auto [row, isNew] = rows.try_emplace(name, categories_.size());
        if (isNew) {
            categories_.push_back({name, 0});
        }
        const std::size_t hit = hits_[index] == VoiceHit::None ? 0U : 1U;
        categories_[row->second].hits += hit;
        categories_[0].hits += hit;
    }
    std::stable_partition(categories_.begin() + 1, categories_.end(),
                          [](const CategoryRow& row) { return row.hits > 0; });
    const auto chosen = std::ranges::find(categories_, categoryName_, &CategoryRow::name);
    category_ = chosen == categories_.end() || chosen->hits == 0
                    ? 0
                    : static_cast<std::size_t>(chosen - categories_.begin());
    categoryName_ = categories_[category_].name;
    ListSounds();
}

// Places of the voices by name. Made when first asked for: it takes longer than everything else.
const std::vector<std::size_t>& PickerLists::NameRanks() {
    if (nameRanks_.empty()) {
        std::vector<std::pair<std::string, std::size_t>> names;
        for (std::size_t i = 0; i < list_.voices.size(); ++i) {
            names.emplace_back(FoldedText(list_.voices[i]->name), i);
        }
        std::ranges::sort(names);
        nameRanks_.resize(names.size());
        for (std::size_t rank = 0; rank < names.size(); ++rank) {
            nameRanks_[names[rank].second] = rank;
        }
    }
    return nameRanks_;
}

void PickerLists::SortIndices(std::vector<std::size_t>& indices) {
    const auto keyOf = [this](std::size_t index) {
        return order_ == SoundOrder::Name ? NameRanks()[index]
                                          : NumberOf(*list_.voices[index], order_);
    };
    if (order_ != SoundOrder::Table) {
        std::ranges::stable_sort(indices, {}, keyOf);
    }
    if (descending_) {
        std::ranges::reverse(indices);
    }
    std::stable_partition(indices.begin(), indices.end(),
                          [this](std::size_t index) { return hits_[index] == VoiceHit::Name; });
}

void PickerLists::ListSounds() {
    std::vector<std::size_t> indices = IndicesOf(families_[family_]);
    std::erase_if(indices, [this](std::size_t index) {
        const bool inCategory = category_ == 0 || list_.voices[index]->category == categoryName_;
        return !inCategory || hits_[index] == VoiceHit::None;
    });
    SortIndices(indices);
    sounds_.clear();
    for (const std::size_t index : indices) {
        const Voice* voice = list_.voices[index];
        sounds_.push_back({voice, hits_[index], memory_.IsFavourite(KeyOf(*voice))});
    }
}

void PickerLists::ChooseFamily(std::size_t row) {
    if (row < families_.size()) {
        family_ = row;
        categoryName_ = {};
        ListCategories();
    }
}

bool PickerLists::ChooseFamily(FamilyKind kind, std::string_view name) {
    const auto row = std::ranges::find_if(
        families_, [&](const FamilyRow& each) { return each.kind == kind && each.name == name; });
    if (row == families_.end()) {
        return false;
    }
    ChooseFamily(static_cast<std::size_t>(row - families_.begin()));
    return true;
}

void PickerLists::ChooseCategory(std::size_t row) {
    if (row < categories_.size()) {
        category_ = row;
        categoryName_ = categories_[row].name;
        ListSounds();
    }
}

void PickerLists::Sort(SoundOrder order) {
    descending_ = order == order_ && !descending_;
    order_ = order;
    ListSounds();
}

bool PickerLists::Show(const Voice& voice) {
    const auto found = std::ranges::find(list_.voices, &voice);
    const auto index = static_cast<std::size_t>(found - list_.voices.begin());
    if (found == list_.voices.end() || hits_[index] == VoiceHit::None) {
        return false;
    }
    if (RowOf(KeyOf(voice)) == sounds_.size()) {
        ChooseFamily(index < list_.own ? FamilyKind::Own : FamilyKind::Inherited, voice.family);
        const auto category = std::ranges::find(categories_, voice.category, &CategoryRow::name);
        ChooseCategory(static_cast<std::size_t>(category - categories_.begin()));
    }
    return true;
}

std::size_t PickerLists::RowOf(const VoiceKey& key) const {
    const auto row =
        std::ranges::find(sounds_, key, [](const SoundRow& each) { return KeyOf(*each.voice); });
    return static_cast<std::size_t>(row - sounds_.begin());
}

void PickerLists::UpdateFavourites() {
    CountFamilies();
    ListCategories();
}

} // namespace tracksmith::instruments
