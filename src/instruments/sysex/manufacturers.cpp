#include "instruments/sysex/manufacturers.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace tracksmith::instruments {
namespace {

struct Manufacturer {
    std::uint32_t id; // one byte, or the two bytes behind the 0 with kLong set
    std::string_view name;
};

constexpr std::uint32_t kLong = 0x10000;

// In the order of their numbers.
constexpr auto kManufacturers = std::to_array<Manufacturer>({
    {0x01, "Sequential"},
    {0x04, "Moog"},
    {0x06, "Lexicon"},
    {0x07, "Kurzweil"},
    {0x08, "Fender"},
    {0x0F, "Ensoniq"},
    {0x10, "Oberheim"},
    {0x11, "Apple"},
    {0x13, "Digidesign"},
    {0x15, "JLCooper"},
    {0x16, "Lowrey"},
    {0x18, "E-mu"},
    {0x1A, "ART"},
    {0x1B, "Baldwin"},
    {0x1C, "Eventide"},
    {0x21, "SIEL"},
    {0x24, "Hohner"},
    {0x26, "Ketron"},
    {0x27, "Jellinghaus"},
    {0x29, "PPG"},
    {0x2F, "Elka"},
    {0x30, "Dynacord"},
    {0x31, "Viscount"},
    {0x33, "Clavia"},
    {0x35, "Generalmusic"},
    {0x36, "Cheetah"},
    {0x38, "Simmons"},
    {0x3A, "Steinberg"},
    {0x3B, "Wersi"},
    {0x3E, "Waldorf"},
    {0x3F, "Quasimidi"},
    {0x40, "Kawai"},
    {0x41, "Roland"},
    {0x42, "Korg"},
    {0x43, "Yamaha"},
    {0x44, "Casio"},
    {0x46, "Kamiya"},
    {0x47, "Akai"},
    {0x48, "JVC"},
    {0x4B, "Fujitsu"},
    {0x4C, "Sony"},
    {0x4E, "Teac"},
    {0x50, "Technics"},
    {0x51, "Fostex"},
    {0x52, "Zoom"},
    {0x55, "Suzuki"},
    {kLong | 0x000E, "Alesis"},
    {kLong | 0x0016, "Opcode"},
    {kLong | 0x001B, "Peavey"},
    {kLong | 0x003B, "MOTU"},
    {kLong | 0x0041, "Microsoft"},
    {kLong | 0x0066, "Mackie"},
    {kLong | 0x006A, "PG Music"},
    {kLong | 0x0105, "M-Audio"},
    {kLong | 0x2029, "Novation"},
    {kLong | 0x2032, "Behringer"},
    {kLong | 0x2033, "Access"},
    {kLong | 0x203C, "Elektron"},
    {kLong | 0x206B, "Arturia"},
    {kLong | 0x2109, "Native Instruments"},
    {kLong | 0x211D, "Ableton"},
});

static_assert(std::ranges::is_sorted(kManufacturers, {}, &Manufacturer::id));

} // namespace

std::string_view ManufacturerOf(SysexBytes data) {
    if (data.empty() || (data[0] == 0 && data.size() < 3)) {
        return {};
    }
    const std::uint32_t id =
        data[0] != 0 ? data[0] : kLong | (std::uint32_t{data[1]} << 8) | data[2];
    const auto* found = std::ranges::lower_bound(kManufacturers, id, {}, &Manufacturer::id);
    return found == kManufacturers.end() || found->id != id ? std::string_view() : found->name;
}

} // namespace tracksmith::instruments
