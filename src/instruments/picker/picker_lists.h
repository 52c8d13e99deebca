#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "instruments/picker/voice_memory.h"
#include "instruments/voices/voice_list.h"
#include "instruments/voices/voice_search.h"

namespace tracksmith::instruments {

/// Kinds of rows in the list of families.
enum class FamilyKind : std::uint8_t { Favourites, LastUsed, AllOwn, Own, Inherited };

/// A row of the list of families.
struct FamilyRow {
    FamilyKind kind = FamilyKind::AllOwn;
    /// Name in the table for Own and Inherited.
    std::string_view name;
    /// Voices that the search finds in it.
    std::size_t hits = 0;
};

/// A row of the list of categories.
struct CategoryRow {
    /// Empty for the first row, which stands for all of the family.
    std::string_view name;
    std::size_t hits = 0;
};

/// A row of the list of voices.
struct SoundRow {
    const Voice* voice = nullptr;
    VoiceHit hit = VoiceHit::Name;
    bool isFavourite = false;
};

/// What the list of voices is sorted by.
enum class SoundOrder : std::uint8_t { Table, Name, Msb, Lsb, Program };

/// The three lists of a picker: families, the categories of the chosen one, and the voices of the
/// chosen category, as far as a search finds them. One thread.
class PickerLists {
public:
    /// `memory` must outlive the lists.
    PickerLists(VoiceList list, const VoiceMemory& memory);

    /// Favourites, last used, all own voices, then each family in the order of the tables; rows
    /// without hits stay where they are.
    const std::vector<FamilyRow>& Families() const { return families_; }
    /// All of the family, then its categories in the order of the tables: those with hits before
    /// those without.
    const std::vector<CategoryRow>& Categories() const { return categories_; }
    /// Those found by name or number before those found by their group, each part in the chosen
    /// order.
    const std::vector<SoundRow>& Sounds() const { return sounds_; }

    std::size_t Family() const { return family_; }
    std::size_t Category() const { return category_; }
    SoundOrder Order() const { return order_; }
    bool IsDescending() const { return descending_; }
    /// Voices of the instrument's own, and those that it inherits, whatever the search finds.
    std::size_t OwnCount() const { return list_.own; }
    std::size_t InheritedCount() const { return list_.voices.size() - list_.own; }
    /// Voices that the search finds in all families.
    std::size_t Hits() const { return hitCount_; }

    /// Chooses a family by its row and shows all of it. Rows that do not exist are passed over,
    /// here and below.
    void ChooseFamily(std::size_t row);
    /// Chooses the family of this kind and name; false when there is none.
    bool ChooseFamily(FamilyKind kind, std::string_view name);
    void ChooseCategory(std::size_t row);
    /// Finds by `text`. The chosen family and category stay as long as they have hits; else all of
    /// the family is shown, or all of the first family that has some, own voices first.
    void Search(std::string_view text);
    /// Sorts by `order`, in the other direction when it is the order already.
    void Sort(SoundOrder order);
    /// Chooses family and category so that `voice` is among the voices; false when the search does
    /// not find it or it is none of the list.
    bool Show(const Voice& voice);
    /// Row of the voice among the voices shown; their number when it is not shown.
    std::size_t RowOf(const VoiceKey& key) const;
    /// The favourites have changed.
    void UpdateFavourites();

private:
    bool IsInFamily(const FamilyRow& row, std::size_t index) const;
    std::vector<std::size_t> IndicesOf(const FamilyRow& row) const;
    void ListFamilies();
    void CountFamilies();
    void GoToHits();
    void ListCategories();
    void ListSounds();
    void SortIndices(std::vector<std::size_t>& indices);
    const std::vector<std::size_t>& NameRanks();

    VoiceList list_;
    const VoiceMemory& memory_;
    std::vector<VoiceHit> hits_;
    std::size_t hitCount_ = 0;
    std::vector<FamilyRow> families_;
    std::vector<CategoryRow> categories_;
    std::vector<SoundRow> sounds_;
    std::size_t family_ = 0;
    std::size_t category_ = 0;
    // Name of the chosen category, which keeps its place in no row.
    std::string_view categoryName_;
    SoundOrder order_ = SoundOrder::Table;
    bool descending_ = false;
    std::vector<std::size_t> nameRanks_;
};

} // namespace tracksmith::instruments
