#include "instruments/capabilities.h"

#include <algorithm>
#include <array>

#include "instruments/catalogue_table.h"
#include "instruments/texts.h"

namespace tracksmith::instruments {
namespace {

using Names = std::span<const std::string_view>;

constexpr std::string_view kRolandSc = "Roland SC-";

constexpr auto kKorgPartEqualizer = std::to_array<std::string_view>(
    {"Korg MP10 Pro", "Korg Pa2Xpro", "Korg Pa3X Musikant", "Korg Pa4X Musikant",
     "Korg Pa5X Musikant", "Korg Pa500 Musikant", "Korg Pa800"});
constexpr auto kLimexTe200 =
    std::to_array<std::string_view>({"Limex HQ200", "Limex HQ260", "Limex Quattropack"});
constexpr auto kIntegra7 = std::to_array<std::string_view>({"Roland Integra-7"});
constexpr auto kMotif = std::to_array<std::string_view>(
    {"Yamaha Motif XF", "Yamaha Motif-Rack ES", "Yamaha Motif-Rack XS"});
constexpr auto kYamahaDsps = std::to_array<std::string_view>(
    {"Yamaha Genos", "Yamaha Genos2", "Yamaha PSR-S900", "Yamaha PSR-S910", "Yamaha PSR-S950",
     "Yamaha PSR-S970", "Yamaha PSR-SX900", "Yamaha PSR-SX920", "Yamaha Tyros", "Yamaha Tyros 2",
     "Yamaha Tyros 3", "Yamaha Tyros 4", "Yamaha Tyros 5"});
constexpr auto kYamahaMasterEq = std::to_array<std::string_view>(
    {"Yamaha Genos", "Yamaha Genos2", "Yamaha PSR-S970", "Yamaha PSR-SX900", "Yamaha PSR-SX920",
     "Yamaha Tyros 3", "Yamaha Tyros 4", "Yamaha Tyros 5"});
constexpr auto kYamahaVocalHarmony = std::to_array<std::string_view>(
    {"Yamaha Genos", "Yamaha Genos2", "Yamaha PSR-S970", "Yamaha PSR-SX900", "Yamaha PSR-SX920",
     "Yamaha Tyros 4", "Yamaha Tyros 5"});

struct ScMaps {
    std::string_view instrument;
    Names maps;
};

constexpr auto kSc88 = std::to_array<std::string_view>({"SC-55", "SC-88"});
constexpr auto kSc88Pro = std::to_array<std::string_view>({"SC-55", "SC-88", "SC-88Pro"});
constexpr auto kSc880 = std::to_array<std::string_view>({"SC-55", "SC-88", "SC-880"});
constexpr auto kSc8820 = std::to_array<std::string_view>({"SC-55", "SC-88", "SC-88Pro", "SC-8820"});
constexpr auto kSc8850 = std::to_array<std::string_view>({"SC-55", "SC-88", "SC-88Pro", "SC-8850"});
constexpr auto kScD70 = std::to_array<std::string_view>({"SC-55", "SC-88", "SC-88Pro", "SC-D70"});

// The catalogue names the last one "Roland SC-VA (VSTi)", which therefore has no choice.
constexpr auto kScMaps = std::to_array<ScMaps>({
    {"Roland SC-88", kSc88},
    {"Roland SC-88Pro", kSc88Pro},
    {"Roland SC-880", kSc880},
    {"Roland SC-8820", kSc8820},
    {"Roland SC-8850", kSc8850},
    {"Roland SC-D70", kScD70},
    {"Roland SC-VA", kSc8820},
});

struct Group {
    Names instruments;
    Text whyUnavailable;
};

// In the order of Capability; the Roland SC group is told by the beginning of the name.
constexpr auto kGroups = std::to_array<Group>({
    {kKorgPartEqualizer, texts::kOnlyKorgPa},
    {kLimexTe200, texts::kOnlyLimex},
    {kIntegra7, texts::kOnlyIntegra7},
    {{}, texts::kOnlyRolandSc},
    {kMotif, texts::kOnlyMotif},
    {kYamahaDsps, texts::kOnlyYamahaArrangers},
    {kYamahaMasterEq, texts::kOnlyYamahaMasterEq},
    {kYamahaVocalHarmony, texts::kOnlyYamahaVocalHarmony},
});

constexpr bool NamesCatalogueOnce(const Group& group) {
    const Names names = group.instruments;
    return std::ranges::all_of(names, [names](std::string_view name) {
        return IsInCatalogue(name) && std::ranges::count(names, name) == 1;
    });
}

static_assert(kGroups.size() == kCapabilityCount);
static_assert(std::ranges::all_of(kGroups, NamesCatalogueOnce));

} // namespace

bool HasCapability(std::string_view instrumentName, Capability capability) {
    if (capability == Capability::RolandScMap) {
        return instrumentName.starts_with(kRolandSc);
    }
    const Names names = kGroups.at(static_cast<std::size_t>(capability)).instruments;
    return std::ranges::find(names, instrumentName) != names.end();
}

std::span<const std::string_view> RolandScMaps(std::string_view instrumentName) {
    const auto* found = std::ranges::find(kScMaps, instrumentName, &ScMaps::instrument);
    return found == kScMaps.end() ? Names() : found->maps;
}

std::int32_t RolandScMap(std::string_view instrumentName, std::int32_t stored) {
    const auto count = static_cast<std::int32_t>(RolandScMaps(instrumentName).size());
    return count > 0 && (stored < 1 || stored > count) ? count : stored;
}

const Text& WhyUnavailable(Capability capability) {
    return kGroups.at(static_cast<std::size_t>(capability)).whyUnavailable;
}

} // namespace tracksmith::instruments
