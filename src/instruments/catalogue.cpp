#include "instruments/catalogue.h"

#include <algorithm>
#include <array>

namespace tracksmith::instruments {
namespace {

constexpr auto kCatalogue = std::to_array<Instrument>({
    {"Deebach MAX II", 102},
    {"GM Soundset", 0},
    {"GM2 Soundset", 16},
    {"GEM Genesys Pro", 13},
    {"GEM Genesys Pro S/XP", 28},
    {"GEM GM-X", 35},
    {"HDS Pro.Sound.1", 39},
    {"Ketron Audya, Audya 4, Audya 5", 55},
    {"Ketron Event", 104},
    {"Ketron Lounge", 101},
    {"Ketron MIDJAY", 20},
    {"Ketron MIDJAY PLUS", 46},
    {"Ketron MIDJPRO", 76},
    {"Ketron SD1", 10},
    {"Ketron SD1 plus", 30},
    {"Ketron SD2/SD4", 40},
    {"Ketron SD3", 47},
    {"Ketron SD5", 32},
    {"Ketron SD7", 79},
    {"Ketron SD9", 92},
    {"Ketron SD40", 84},
    {"Ketron SD1000", 73},
    {"Ketron X1", 11},
    {"Ketron XD3", 49},
    {"Ketron XD9", 50},
    {"Korg i30", 24},
    {"Korg Kronos", 78},
    {"Korg MP10 Pro", 63},
    {"Korg Pa1Xpro", 14},
    {"Korg Pa1Xpro + XMS-1 V3", 48},
    {"Korg Pa2Xpro", 43},
    {"Korg Pa3X Musikant", 64},
    {"Korg Pa4X Musikant", 82},
    {"Korg Pa5X Musikant", 103},
    {"Korg Pa60/Pa80", 36},
    {"Korg Pa500 Musikant", 52},
    {"Korg Pa700", 90},
    {"Korg Pa800", 42},
    {"Korg Pa900 (Musikant)", 75},
    {"Korg Pa1000 (Musikant)", 91},
    {"Limex ALPIN MASTER 16", 23},
    {"Limex ALPIN MASTER 32", 29},
    {"Limex ALPIN MASTER 128", 57},
    {"Limex Doppelpack 256", 56},
    {"Limex G4", 85},
    {"Limex G4 Plus", 86},
    {"Limex G5", 93},
    {"Limex G5 Plus", 107},
    {"Limex HQ200", 65},
    {"Limex HQ260", 66},
    {"Limex Quattropack", 77},
    {"Limex Tradition Exclusiv", 44},
    {"Limex Tradition Exclusiv 200v3", 58},
    {"MB Music PRO.DX/XS/MAX", 100},
    {"Miditemp DoX-1", 37},
    {"Miditemp MP11", 67},
    {"M-Live DIVO", 105},
    {"M-Live Merish5 (Plus)", 98},
    {"M-Live Okyweb4", 99},
    {"Roland BK-9", 72},
    {"Roland DisCover 5", 38},
    {"Roland fantom XR", 25},
    {"Roland G-70 (SR-G01)", 22},
    {"Roland Integra-7", 71},
    {"Roland Juno-Stage", 68},
    {"Roland SC-88", 15},
    {"Roland SC-88Pro", 1},
    {"Roland SC-880", 2},
    {"Roland SC-8820", 3},
    {"Roland SC-8850", 4},
    {"Roland SC-D70", 17},
    {"Roland SC-VA (VSTi)", 83},
    {"Roland SD-50", 61},
    {"Roland Sonic Cell", 45},
    {"Roland VIMA JM-8", 60},
    {"Soli GM ALPHA", 27},
    {"Soli Tradition XL", 21},
    {"Solton SG-X", 12},
    {"Technics KN6000", 53},
    {"V3Sound MM-Edition", 94},
    {"V3Sound MPR5+", 88},
    {"V3Sound Musik Herzing", 96},
    {"V3Sound Sonority", 89},
    {"V3Sound Sonority XXL", 95},
    {"V3Sound TR521", 81},
    {"Yamaha Genos", 87},
    {"Yamaha Genos2", 106},
    {"Yamaha Motif XF", 69},
    {"Yamaha Motif-Rack ES", 26},
    {"Yamaha Motif-Rack XS", 51},
    {"Yamaha MU-90", 8},
    {"Yamaha PSR-3000", 18},
    {"Yamaha PSR-8000", 5},
    {"Yamaha PSR-9000", 6},
    {"Yamaha PSR-S900", 41},
    {"Yamaha PSR-S910", 59},
    {"Yamaha PSR-S950", 70},
    {"Yamaha PSR-S970", 80},
    {"Yamaha PSR-SX900", 97},
    {"Yamaha PSR-SX920", 108},
    {"Yamaha 9000Pro", 7},
    {"Yamaha S90", 33},
    {"Yamaha S90ES", 34},
    {"Yamaha Tyros", 9},
    {"Yamaha Tyros 2", 31},
    {"Yamaha Tyros 3", 54},
    {"Yamaha Tyros 4", 62},
    {"Yamaha Tyros 5", 74},
    {"Yamaha XG Soundset", 19},
});

static_assert(kCatalogue.size() == kInstrumentCount);

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
