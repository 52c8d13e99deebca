#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include "base/text.h"

#include "song/midi_file_reader.h"

namespace tracksmith::app {

/// Why a file was refused.
enum class RefusalKind : std::uint8_t {
    None,            ///< Nothing is wrong with the file itself.
    Unreadable,      ///< The system does not let it be read.
    TooLarge,        ///< Larger than any file that is read.
    Empty,           ///< No bytes at all.
    TooShort,        ///< Too few bytes for a song.
    OtherType,       ///< Something else than a Standard MIDI File.
    BytesBefore,     ///< A song with other bytes in front of it.
    DamagedHeader,   ///< It begins like a song, then goes on wrongly.
    NoTracks,        ///< The header promises no tracks.
    TracksMissing,   ///< It ends before the tracks that the header promises.
    NoTrackHere,     ///< Where a track should begin stands something else.
    CutOff,          ///< It ends inside a track.
    DamagedTrack,    ///< A track holds bytes that make no sense.
    NotEnoughMemory, ///< The song takes more memory than it may.
};

/// Name of a kind for programs, for example "cutOff"; stays the same in all versions.
std::string_view RefusalKindName(RefusalKind kind);

/// What to tell the user about a refused file below the message of the refusal itself.
struct RefusalAdvice {
    RefusalKind kind = RefusalKind::None;
    /// Name of the file without its folders, safe to show (UTF-8); empty for bytes without a file.
    std::string fileName;
    /// One plain sentence in each language (UTF-8); empty for RefusalKind::None.
    std::string german;
    std::string english;
    /// The track with the fault, from 1; 0 when it lies in none.
    std::uint32_t track = 0;
    /// Where the fault lies, in bytes from the start of the file.
    std::uint64_t position = 0;
    /// With the option `runningStatusAcrossSysex` of the song the file can be loaded.
    bool loadableWithRunningStatusAcrossSysex = false;

    /// The sentence for the user.
    const std::string& In(Language language) const {
        return language == Language::German ? german : english;
    }
};

/// Looks at a file that was refused and finds out why. `runningStatusAcrossSysex` is what the song
/// was loaded with. Takes about as long as loading. Shows and raises nothing but std::bad_alloc.
RefusalAdvice AdviseOnRefusedFile(const std::filesystem::path& file,
                                  const song::DecodeOptions& options,
                                  bool runningStatusAcrossSysex = false);

/// The same for the whole bytes of a song that were no file.
RefusalAdvice AdviseOnRefusedFile(std::span<const std::uint8_t> bytes,
                                  const song::DecodeOptions& options,
                                  bool runningStatusAcrossSysex = false);

} // namespace tracksmith::app
