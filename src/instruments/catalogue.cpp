#include "instruments/catalogue.h"

#include <algorithm>
#include <array>

#include "instruments/catalogue_table.h"

namespace tracksmith::instruments {
namespace {

constexpr std::string_view kFormerMbMusic = "MB Music PRO.MAX/SX";
constexpr std::string_view kMbMusic = "MB Music PRO.DX/XS/MAX";

/// Makers whose name has a blank in it.
constexpr auto kSpacedMakers = std::to_array<std::string_view>({"MB Music"});

// Where each code stands in the catalogue.
constexpr auto kPlaces = [] {
    std::array<std::uint8_t, kInstrumentCount> places{};
    for (std::size_t place = 0; place < kCatalogue.size(); ++place) {
        places[kCatalogue[place].id] = static_cast<std::uint8_t>(place);
    }
    return places;
}();

} // namespace

std::span<const Instrument> Catalogue() {
    return kCatalogue;
}

const Instrument* FindInstrument(std::string_view name) {
    const auto* found = std::ranges::find(kCatalogue, name, &Instrument::name);
    return found == kCatalogue.end() ? nullptr : found;
}

const Instrument* FindInstrument(InstrumentId id) {
    return id < kInstrumentCount ? &kCatalogue[kPlaces[id]] : nullptr;
}

std::string_view CurrentName(std::string_view name) {
    return name == kFormerMbMusic ? kMbMusic : name;
}

std::string_view MakerOf(const Instrument& instrument) {
    for (const std::string_view maker : kSpacedMakers) {
        if (instrument.name.starts_with(maker)) {
            return maker;
        }
    }
    return instrument.name.substr(0, instrument.name.find(' '));
}

} // namespace tracksmith::instruments
