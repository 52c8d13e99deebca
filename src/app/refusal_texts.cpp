#include "app/refusal_texts.h"

#include <sstream>

namespace tracksmith::app::texts {
namespace {

// The German or the English pieces, joined.
template <typename... Pieces>
std::string Joined(const Pieces&... pieces) {
    std::ostringstream text;
    (text << ... << pieces);
    return text.str();
}

bool IsGerman(Language language) {
    return language == Language::German;
}

} // namespace

std::string IsOtherType(Language language, const Text& type) {
    return IsGerman(language) ? Joined("Die Datei ist kein Song, sondern ", type.german, ".")
                              : Joined("The file is no song but ", type.english, ".");
}

std::string HasOnlyBytes(Language language, std::size_t bytes) {
    return IsGerman(language) ? Joined("Die Datei hat nur ", bytes, " Bytes, das ist kein Song.")
                              : Joined("The file has only ", bytes, " bytes, which is no song.");
}

std::string BytesBefore(Language language, std::size_t at) {
    return IsGerman(language) ? Joined("Vor dem Song stehen ", at, " fremde Bytes.")
                              : Joined(at, " other bytes stand before the song.");
}

std::string TracksMissing(Language language, std::uint32_t promised, std::uint32_t found) {
    return IsGerman(language) ? Joined("Die Datei ist abgeschnitten: Sie müsste ", promised,
                                       " Spuren haben und endet nach ", found, ".")
                              : Joined("The file is cut off: it should have ", promised,
                                       " tracks and ends after ", found, ".");
}

std::string NoTrackHere(Language language, std::uint32_t track, std::uint64_t at) {
    return IsGerman(language)
               ? Joined("Wo Spur ", track, " anfangen müsste (Byte ", at, "), steht etwas anderes.")
               : Joined("Where track ", track, " should begin (byte ", at,
                        ") stands something else.");
}

std::string CutOff(Language language, std::uint32_t track) {
    return IsGerman(language) ? Joined("Die Datei ist in Spur ", track, " abgeschnitten.")
                              : Joined("The file is cut off in track ", track, ".");
}

std::string DamagedTrack(Language language, std::uint32_t track, std::uint64_t at,
                         const Text& what) {
    return IsGerman(language) ? Joined("Die Datei ist beschädigt: In Spur ", track, ", Byte ", at,
                                       ", ", what.german, ".")
                              : Joined("The file is damaged: in track ", track, ", byte ", at, ", ",
                                       what.english, ".");
}

std::string NotEnoughMemory(Language language, std::uint64_t needed, std::uint64_t allowed) {
    constexpr std::uint64_t kMegabyte = 1'000'000;
    const std::uint64_t megabytes = (needed + kMegabyte - 1) / kMegabyte;
    return IsGerman(language) ? Joined("Der Song braucht ", megabytes, " MB Speicher, höchstens ",
                                       allowed / kMegabyte, " MB sind erlaubt.")
                              : Joined("The song takes ", megabytes, " MB of memory; at most ",
                                       allowed / kMegabyte, " MB are allowed.");
}

} // namespace tracksmith::app::texts
