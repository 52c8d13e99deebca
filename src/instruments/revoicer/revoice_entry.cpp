#include "instruments/revoicer/revoice_entry.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <span>

#include "base/tab_lines.h"

namespace tracksmith::instruments {
namespace {

constexpr std::size_t kFields = 8;
constexpr std::size_t kSourceField = 4;

std::optional<std::uint8_t> DataByte(std::string_view text) {
    unsigned value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value > 127) {
        return std::nullopt;
    }
    return static_cast<std::uint8_t>(value);
}

std::optional<VoiceNumbers> Numbers(std::span<const std::string_view, 3> fields) {
    const auto msb = DataByte(fields[0]);
    const auto lsb = DataByte(fields[1]);
    const auto program = DataByte(fields[2]);
    if (!msb || !lsb || !program) {
        return std::nullopt;
    }
    return VoiceNumbers{*msb, *lsb, *program};
}

std::string VoiceFields(VoiceNumbers numbers, std::string name) {
    std::ranges::replace_if(
        name, [](char c) { return c == '\t' || c == '\n' || c == '\r'; }, ' ');
    return std::to_string(numbers.msb) + '\t' + std::to_string(numbers.lsb) + '\t' +
           std::to_string(numbers.program) + '\t' + name;
}

} // namespace

std::optional<RevoiceEntry> ReadRevoiceEntry(std::string_view line) {
    const auto fields = SplitColumns<kFields>(line);
    if (!fields) {
        return std::nullopt;
    }
    const std::span<const std::string_view, kFields> all(*fields);
    const auto target = Numbers(all.first<3>());
    const auto source = Numbers(all.subspan<kSourceField, 3>());
    if (!target || !source) {
        return std::nullopt;
    }
    return RevoiceEntry{*target, std::string(all[kSourceField - 1]), *source,
                        std::string(all[kFields - 1])};
}

std::string RevoiceLine(const RevoiceEntry& entry) {
    return VoiceFields(entry.target, entry.targetName) + '\t' +
           VoiceFields(entry.source, entry.sourceName);
}

} // namespace tracksmith::instruments
