#pragma once

#include <cstdint>
#include <string_view>

namespace tracksmith::instruments {

/// Which words (see VoiceWords) speak for a voice in place of the General MIDI program 0-127, as
/// "word=points" separated by blanks; below 0 they speak against it.
std::string_view MeaningOfProgram(std::uint8_t program);

/// The same for the drum kit at a program, in the places that GM2 and GS have in common; those of
/// the standard kit for other programs.
std::string_view MeaningOfKit(std::uint8_t program);

/// Words that speak against any voice for common use: parts that need a player of their own,
/// effects, layers.
std::string_view WordsAgainst();

} // namespace tracksmith::instruments
