#pragma once

#include <span>
#include <string_view>

#include "base/display_text.h"

namespace tracksmith::lyrics {

/// The encoding in which `texts`, all of one song, read best: UTF-8 where all of them are, else the
/// one that turns most of the bytes from 0x80 on into letters of western texts; Windows-1252 where
/// nothing tells.
TextEncoding LikelyEncoding(std::span<const std::string_view> texts);

} // namespace tracksmith::lyrics
