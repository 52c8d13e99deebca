#include "instruments/sysex/sysex_patterns.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace tracksmith::instruments {
namespace {

constexpr std::uint8_t kEnd = 0xF7;

// Without a closing F7, which a message that was cut off lacks.
SysexBytes WithoutEnd(SysexBytes data) {
    return !data.empty() && data.back() == kEnd ? data.first(data.size() - 1) : data;
}

constexpr auto kVocalHarmony = std::to_array<std::uint8_t>({kYamahaId, 0x73, 0x01, 0x11});
constexpr std::uint8_t kVocalHarmonyControl = 0x50;
constexpr std::uint8_t kXgVocalHarmony = 0x04;

bool IsGmOff(SysexBytes data) {
    return ByteAt(data, 0) == kUniversalNonRealTime && ByteAt(data, 2) == 0x09 &&
           ByteAt(data, 3) == 0x02;
}

} // namespace

bool StartsWith(SysexBytes data, SysexBytes prefix) {
    return data.size() >= prefix.size() && std::ranges::equal(data.first(prefix.size()), prefix);
}

int ByteAt(SysexBytes data, std::size_t index) {
    return index < data.size() ? data[index] : -1;
}

std::uint8_t RolandChecksum(SysexBytes addressAndValues) {
    const auto sum = std::accumulate(addressAndValues.begin(), addressAndValues.end(), 0U);
    return static_cast<std::uint8_t>((128U - sum % 128U) % 128U);
}

std::optional<ParameterMessage> GsMessage(SysexBytes data) {
    constexpr std::size_t kAddress = 4;
    const SysexBytes body = WithoutEnd(data);
    if (body.size() < kAddress + 5 || body[0] != kRolandId || body[2] != 0x42 || body[3] != 0x12) {
        return std::nullopt;
    }
    const SysexBytes checked = body.subspan(kAddress, body.size() - kAddress - 1);
    return ParameterMessage{body[1],    checked[0],         checked[1],
                            checked[2], checked.subspan(3), RolandChecksum(checked) == body.back()};
}

std::optional<ParameterMessage> XgMessage(SysexBytes data) {
    const SysexBytes body = WithoutEnd(data);
    if (body.size() < 7 || body[0] != kYamahaId || (body[1] & 0xF0) != 0x10 || body[2] != 0x4C) {
        return std::nullopt;
    }
    return ParameterMessage{static_cast<std::uint8_t>(body[1] & 0x0F), body[3], body[4], body[5],
                            body.subspan(6)};
}

bool IsXgMasterEq(SysexBytes data) {
    const auto message = XgMessage(data);
    return message && message->high == 0x02 && message->middle == 0x40;
}

bool IsVocalHarmony(SysexBytes data) {
    const auto message = XgMessage(data);
    return (message && message->high == kXgVocalHarmony) ||
           (StartsWith(data, kVocalHarmony) && ByteAt(data, 5) == kVocalHarmonyControl);
}

bool IsOrganFlute(SysexBytes data) {
    return data.size() > 5 && data[0] == kYamahaId && data[1] == 0x73 && data[3] == 0x06 &&
           data[4] == 0x0B;
}

ResetKind ResetKindOf(SysexBytes data) {
    if (const auto mode = song::ModeOfReset(song::WithoutFrame(data))) {
        switch (*mode) {
            case song::SynthMode::Gm:
                return ResetKind::Gm;
            case song::SynthMode::Gm2:
                return ResetKind::Gm2;
            case song::SynthMode::Gs:
                return ResetKind::Gs;
            case song::SynthMode::Xg:
                return ResetKind::Xg;
        }
    }
    const bool own = std::ranges::equal(data, DataOf(templates::kKetron)) ||
                     std::ranges::equal(data, DataOf(templates::kKn6000));
    return own ? ResetKind::Own : IsGmOff(data) ? ResetKind::Gm : ResetKind::None;
}

std::optional<PartMode> PartModeOf(SysexBytes data) {
    return song::RhythmPartOf(song::WithoutFrame(data));
}

std::array<std::uint8_t, 10> GsPartMessage(std::uint8_t device, std::size_t channel,
                                           std::uint8_t value) {
    const std::size_t part = channel == 9 ? 0 : channel < 9 ? channel + 1 : channel;
    std::array<std::uint8_t, 10> data{
        kRolandId, device, 0x42, 0x12, 0x40, static_cast<std::uint8_t>(0x10 | part),
        0x15,      value,  0,    kEnd};
    data[8] = RolandChecksum(SysexBytes(data).subspan(4, 4));
    return data;
}

std::size_t GsChannel(std::uint8_t nibble) {
    const std::size_t part = nibble & 0x0FU;
    if (part == 0) {
        return 9;
    }
    return part <= 9 ? part - 1 : part;
}

} // namespace tracksmith::instruments
