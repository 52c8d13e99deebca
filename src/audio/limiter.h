#pragma once

#include <cmath>

namespace tracksmith::audio {

/// Keeps a sample within -1 to 1: up to about -1 dB it stays as it is, above it is bent, so that
/// loud passages do not crackle.
inline float Limited(float sample) {
    constexpr float kKnee = 0.89F;
    constexpr float kRoom = 1.0F - kKnee;
    const float size = std::abs(sample);
    if (size <= kKnee) {
        return sample;
    }
    return std::copysign(kKnee + kRoom * std::tanh((size - kKnee) / kRoom), sample);
}

} // namespace tracksmith::audio
