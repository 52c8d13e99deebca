#pragma once

#include <cstdint>
#include <gtest/gtest.h>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "instruments/importers/import_ins.h"
#include "instruments/importers/import_midnam.h"
#include "instruments/voices/voice_file_error.h"
#include "instruments/voices/voice_table_reader.h"
#include "instruments/voices/voice_table_writer.h"

namespace tracksmith::instruments::test {

inline std::span<const std::uint8_t> Bytes(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

/// The rows of a table as lines "family|category|msb|lsb|program|name".
inline std::string Lines(const ImportedTable& imported) {
    std::string text = VoiceTableText(imported.table.Voices());
    text.erase(0, text.find('\n') + 1);
    for (char& c : text) {
        c = c == '\t' ? '|' : c;
    }
    return text;
}

using Import = std::vector<ImportedTable> (*)(std::span<const std::uint8_t>);

/// Expects that the file is refused for this reason and in this line.
inline void ExpectRefused(Import import, std::string_view file, const Text& reason,
                          std::size_t line) {
    try {
        import(Bytes(file));
        FAIL() << "imported";
    } catch (const VoiceFileError& error) {
        EXPECT_EQ(error.Reason().english, reason.english);
        EXPECT_EQ(error.Line(), line);
    }
}

inline std::string Repeated(std::size_t times, std::string_view text) {
    std::string out;
    out.reserve(times * text.size());
    for (std::size_t i = 0; i < times; ++i) {
        out += text;
    }
    return out;
}

/// A MIDNAM document with one device of these parts.
inline std::string Midnam(std::string_view parts) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<!DOCTYPE MIDINameDocument PUBLIC \"-//MIDI Manufacturers Association//DTD "
           "MIDINameDocument 1.0//EN\" \"http://www.midi.org/dtds/MIDINameDocument10.dtd\">\n"
           "<MIDINameDocument><MasterDeviceNames>"
           "<Manufacturer>Maker</Manufacturer><Model>One</Model>\n" +
           std::string(parts) + "</MasterDeviceNames></MIDINameDocument>\n";
}

} // namespace tracksmith::instruments::test
