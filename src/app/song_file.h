#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

#include "base/system/file_io.h"

namespace tracksmith::app {

/// Bytes at the start of a file that are enough to tell what it is.
inline constexpr std::size_t kFileStartBytes = 4'096;

/// The bytes of a file that is to be decoded. Of a file that does not begin like a song only the
/// start is read, which the decoder then refuses: so a huge one costs no time. Empty optional where
/// ReadRegularFile has none, also when `progress`, which is told of the rest, ended it. Any thread.
/// Throws std::bad_alloc.
std::optional<std::vector<std::uint8_t>> ReadSongFile(const std::filesystem::path& file,
                                                      const system::ReadProgress& progress = {});

} // namespace tracksmith::app
