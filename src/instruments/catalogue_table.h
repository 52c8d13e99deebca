#pragma once

#include <algorithm>
#include <array>

#include "instruments/catalogue.h"

/// The catalogue as a constant, for checks of other tables while compiling. Everybody else asks
/// instruments/catalogue.h.
namespace tracksmith::instruments {

inline constexpr bool kXg = true;

inline constexpr auto kCatalogue = std::to_array<Instrument>({
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
    {"Yamaha Genos", 87, kXg},
    {"Yamaha Genos2", 106, kXg},
    {"Yamaha Motif XF", 69},
    {"Yamaha Motif-Rack ES", 26},
    {"Yamaha Motif-Rack XS", 51},
    {"Yamaha MU-90", 8, kXg},
    {"Yamaha PSR-3000", 18, kXg},
    {"Yamaha PSR-8000", 5, kXg},
    {"Yamaha PSR-9000", 6, kXg},
    {"Yamaha PSR-S900", 41, kXg},
    {"Yamaha PSR-S910", 59, kXg},
    {"Yamaha PSR-S950", 70, kXg},
    {"Yamaha PSR-S970", 80, kXg},
    {"Yamaha PSR-SX900", 97, kXg},
    {"Yamaha PSR-SX920", 108, kXg},
    {"Yamaha 9000Pro", 7, kXg},
    {"Yamaha S90", 33},
    {"Yamaha S90ES", 34},
    {"Yamaha Tyros", 9, kXg},
    {"Yamaha Tyros 2", 31, kXg},
    {"Yamaha Tyros 3", 54, kXg},
    {"Yamaha Tyros 4", 62, kXg},
    {"Yamaha Tyros 5", 74, kXg},
    {"Yamaha XG Soundset", 19, kXg},
});

static_assert(kCatalogue.size() == kInstrumentCount);

/// Whether an instrument has exactly this name.
constexpr bool IsInCatalogue(std::string_view name) {
    return std::ranges::find(kCatalogue, name, &Instrument::name) != kCatalogue.end();
}

/// Whether every code from 0 on stands in the catalogue once.
constexpr bool EachCodeOnce() {
    std::array<int, kInstrumentCount> counts{};
    for (const Instrument& instrument : kCatalogue) {
        ++counts.at(instrument.id);
    }
    return std::ranges::all_of(counts, [](int count) { return count == 1; });
}

static_assert(EachCodeOnce());

} // namespace tracksmith::instruments
