#include "song/mode_message.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "song/midi_numbers.h"

namespace tracksmith::song {
namespace {

using Bytes = std::span<const std::uint8_t>;

// Whether the body sets one value, of at most `most`, at the address.
bool Sets(Bytes body, const std::array<std::uint8_t, 3>& address, std::uint8_t most) {
    return body.size() == address.size() + 1 &&
           std::equal(address.begin(), address.end(), body.begin()) && body.back() <= most;
}

constexpr std::array<std::uint8_t, 3> kGsReset{0x40, 0x00, 0x7F};
constexpr std::array<std::uint8_t, 3> kGsSystemMode{0x00, 0x00, 0x7F};
constexpr std::array<std::uint8_t, 3> kXgSystemOn{0x00, 0x00, 0x7E};
constexpr std::array<std::uint8_t, 3> kXgAllReset{0x00, 0x00, 0x7F};

/// Address and data of a Roland GS "data set" message, empty for anything else. The checksum makes
/// the sum of address and data divisible by 128.
Bytes GsBody(Bytes sysex) {
    if (sysex.size() < 9 || sysex[0] != 0x41 || sysex[2] != 0x42 || sysex[3] != 0x12) {
        return {};
    }
    const Bytes checked = sysex.subspan(4);
    unsigned sum = 0;
    for (const std::uint8_t byte : checked) {
        sum += byte;
    }
    return sum % 128 == 0 ? checked.first(checked.size() - 1) : Bytes{};
}

/// Address and data of a Yamaha XG parameter change, empty for anything else.
Bytes XgBody(Bytes sysex) {
    const bool isXg =
        sysex.size() >= 7 && sysex[0] == 0x43 && (sysex[1] & 0xF0) == 0x10 && sysex[2] == 0x4C;
    return isXg ? sysex.subspan(3) : Bytes{};
}

// GS counts its parts 10, 1-9, 11-16.
std::uint8_t ChannelOfGsPart(std::uint8_t part) {
    if (part == 0) {
        return 9;
    }
    return part <= 9 ? static_cast<std::uint8_t>(part - 1) : part;
}

} // namespace

Bytes WithoutFrame(Bytes message) {
    if (!message.empty() && message.front() == 0xF0) {
        message = message.subspan(1);
    }
    if (!message.empty() && message.back() == 0xF7) {
        message = message.first(message.size() - 1);
    }
    return message;
}

std::optional<SynthMode> ModeOfReset(Bytes sysex) {
    if (sysex.size() >= 4 && sysex[0] == 0x7E && sysex[2] == 0x09) {
        if (sysex[3] == 0x01) {
            return SynthMode::Gm;
        }
        return sysex[3] == 0x03 ? std::optional(SynthMode::Gm2) : std::nullopt;
    }
    const Bytes gs = GsBody(sysex);
    if (Sets(gs, kGsReset, 0) || Sets(gs, kGsSystemMode, 1)) {
        return SynthMode::Gs;
    }
    const Bytes xg = XgBody(sysex);
    if (Sets(xg, kXgSystemOn, 0) || Sets(xg, kXgAllReset, 0)) {
        return SynthMode::Xg;
    }
    return std::nullopt;
}

std::uint8_t BankMsbAfterReset(SynthMode mode, bool drum) {
    switch (mode) {
        case SynthMode::Gm2:
            return drum ? kGm2DrumBank : kGm2MelodyBank;
        case SynthMode::Xg:
            return drum ? kXgDrumBank : std::uint8_t{0};
        default:
            return 0;
    }
}

std::optional<RhythmPart> RhythmPartOf(Bytes sysex) {
    const Bytes gs = GsBody(sysex);
    if (gs.size() == 4 && gs[0] == 0x40 && (gs[1] & 0xF0) == 0x10 && gs[2] == 0x15) {
        const auto part = static_cast<std::uint8_t>(gs[1] & 0x0F);
        return RhythmPart{ChannelOfGsPart(part), gs[3] != 0};
    }
    const Bytes xg = XgBody(sysex);
    if (xg.size() == 4 && xg[0] == 0x08 && xg[1] < 16 && xg[2] == 0x07) {
        return RhythmPart{xg[1], xg[3] != 0};
    }
    return std::nullopt;
}

} // namespace tracksmith::song
