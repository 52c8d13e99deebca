#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>

#include "instruments/catalogue.h"
#include "instruments/voices/voice.h"

namespace tracksmith::instruments {

/// The sounds on the keys of a drum kit.
struct KitNotes {
    /// Name of each note, empty where none is known. Lives as long as the table.
    std::array<std::string_view, 128> names;
    /// The names are those of this very kit; otherwise those that most kits have in common.
    bool isExact = false;
};

/// Names of the notes of drum kits: XG, GS, and General MIDI for all others. Immutable; any thread.
class DrumNotes {
public:
    /// No names at all.
    DrumNotes() = default;
    /// `bytes` are those of the table's file: UTF-8, lines with the columns set, msb, program, kit,
    /// note and name, separated by tabs, the header first. Throws VoiceFileError with the line of a
    /// fault.
    explicit DrumNotes(std::string bytes);

    /// Reads the table in a file; throws VoiceFileError, also for a file that cannot be read.
    static DrumNotes ReadFile(const std::filesystem::path& path);

    /// The notes of the kit that `numbers` select on the instrument. A kit that the table does not
    /// have gets the names of General MIDI, and an effects kit none.
    KitNotes NotesOf(InstrumentId instrument, VoiceNumbers numbers) const;

private:
    enum class Set : std::uint8_t { Gm, Gs, Xg };
    struct KitKey {
        Set set = Set::Gm;
        std::uint8_t msb = 0;
        std::uint8_t program = 0;
        friend bool operator<(const KitKey& a, const KitKey& b) {
            return std::tie(a.set, a.msb, a.program) < std::tie(b.set, b.msb, b.program);
        }
    };
    using Names = std::array<std::string_view, 128>;

    static KitKey KeyFor(InstrumentId instrument, VoiceNumbers numbers);
    void AddLine(std::string_view line, std::size_t number);

    std::unique_ptr<const std::string> text_;
    std::map<KitKey, Names> kits_;
};

} // namespace tracksmith::instruments
