#pragma once

#include <cstdint>
#include <span>

#include "base/text.h"

namespace tracksmith::app {

/// What a file is that is no Standard MIDI File, by its first bytes; null when they tell nothing.
/// The text completes the sentence "The file is …".
const Text* OtherFileType(std::span<const std::uint8_t> start);

} // namespace tracksmith::app
