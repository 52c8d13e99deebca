#include "app/file_signature.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "app/refusal_texts.h"

namespace tracksmith::app {
namespace {

using namespace std::string_view_literals;

// Bytes at a place that only files of one type have there; `more` at 8 tells the kinds of a
// container apart.
struct Signature {
    std::string_view start;
    std::string_view more;
    const Text* type;
};

constexpr auto kSignatures = std::to_array<Signature>({
    {"RIFF", "RMID", &texts::kTypeRmid},
    {"RIFF", "WAVE", &texts::kTypeSound},
    {"RIFF", "", &texts::kTypeRiff},
    {"FORM", "", &texts::kTypeSound},
    {"ID3", "", &texts::kTypeSound},
    {"OggS", "", &texts::kTypeSound},
    {"fLaC", "", &texts::kTypeSound},
    {"PK\x03\x04", "", &texts::kTypeArchive},
    {"PK\x05\x06", "", &texts::kTypeArchive},
    {"\x1F\x8B", "", &texts::kTypeArchive},
    {"7z\xBC\xAF\x27\x1C", "", &texts::kTypeArchive},
    {"Rar!\x1A\x07", "", &texts::kTypeArchive},
    {"BZh", "", &texts::kTypeArchive},
    {"\xFD"
     "7zXZ\0"sv,
     "", &texts::kTypeArchive},
    {"%PDF-", "", &texts::kTypeDocument},
    {"\xD0\xCF\x11\xE0", "", &texts::kTypeDocument},
    {"\x89PNG", "", &texts::kTypePicture},
    {"\xFF\xD8\xFF", "", &texts::kTypePicture},
    {"GIF8", "", &texts::kTypePicture},
    {"\x7F"
     "ELF",
     "", &texts::kTypeProgram},
    {"MZ", "", &texts::kTypeProgram},
});

bool HasAt(std::string_view bytes, std::size_t place, std::string_view part) {
    return bytes.size() >= place && bytes.substr(place).starts_with(part);
}

// A frame of MPEG audio (ISO/IEC 11172-3): eleven set bits, then a version and a layer that exist.
bool IsMpegAudio(std::span<const std::uint8_t> start) {
    return start.size() > 2 && start[0] == 0xFF && (start[1] & 0xE0) == 0xE0 &&
           (start[1] & 0x18) != 0x08 && (start[1] & 0x06) != 0 && (start[2] & 0xF0) != 0xF0;
}

bool IsText(std::span<const std::uint8_t> start) {
    return std::ranges::all_of(start, [](std::uint8_t byte) {
        return byte >= 0x20 ? byte != 0x7F : byte == '\n' || byte == '\r' || byte == '\t';
    });
}

// Markup may begin with a byte order mark and blanks.
bool IsMarkup(std::string_view bytes) {
    if (bytes.starts_with("\xEF\xBB\xBF")) {
        bytes.remove_prefix(3);
    }
    const std::size_t first = bytes.find_first_not_of(" \t\r\n");
    return first != std::string_view::npos && bytes[first] == '<';
}

} // namespace

const Text* OtherFileType(std::span<const std::uint8_t> start) {
    constexpr std::size_t kContainerKind = 8;
    const std::string_view bytes(reinterpret_cast<const char*>(start.data()), start.size());
    for (const Signature& signature : kSignatures) {
        if (HasAt(bytes, 0, signature.start) && HasAt(bytes, kContainerKind, signature.more)) {
            return signature.type;
        }
    }
    if (IsMpegAudio(start)) {
        return &texts::kTypeSound;
    }
    if (std::ranges::all_of(start, [](std::uint8_t byte) { return byte == 0; })) {
        return &texts::kTypeZeros;
    }
    if (!IsText(start)) {
        return nullptr;
    }
    return IsMarkup(bytes) ? &texts::kTypeMarkup : &texts::kTypeText;
}

} // namespace tracksmith::app
