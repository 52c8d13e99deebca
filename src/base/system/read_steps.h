#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

#include "base/system/file_io.h"

namespace tracksmith::system {

/// Fills `target` by calls of `read`, which fills a part of it and says whether it could: all at
/// once, or in steps that are told to `progress`. False when a part could not be read or `progress`
/// ended it.
template <typename Read>
bool ReadInSteps(std::span<std::uint8_t> target, const ReadProgress& progress, Read&& read) {
    // Even a slow medium has delivered so much in a moment.
    constexpr std::size_t kStep = std::size_t{256} << 10;
    if (!progress) {
        return read(target);
    }
    for (std::size_t done = 0; done < target.size();) {
        const std::size_t step = std::min(kStep, target.size() - done);
        if (!read(target.subspan(done, step))) {
            return false;
        }
        done += step;
        if (!progress(done, target.size())) {
            return false;
        }
    }
    return true;
}

} // namespace tracksmith::system
