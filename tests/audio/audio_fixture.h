#pragma once

#include <cstdint>
#include <filesystem>
#include <gtest/gtest.h>
#include <vector>

#include "song/song.h"

namespace tracksmith::audio {

/// Tests that need an installed SoundFont and a folder of their own.
class AudioTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    std::filesystem::path folder_;
    std::filesystem::path soundfont_;
};

/// Makes `song` a song of `trackCount` empty tracks at 480 ticks per quarter note and 120 BPM:
/// about one millisecond per tick (500 ms for 480 ticks).
void StartSong(song::Song& song, std::size_t trackCount);

/// Adds a note to a track, `start` and `end` in ticks.
void AddNote(song::Song& song, std::size_t track, std::int32_t start, std::int32_t end,
             std::uint8_t channel, std::uint8_t key, std::uint8_t velocity = 100);

/// Closes all tracks at `length` ticks and computes the clock times.
void FinishSong(song::Song& song, std::int32_t length);

/// The samples of a 16-bit or 24-bit stereo file, left and right in turn.
struct Recording {
    int sampleRate = 0;
    int channels = 0;
    std::vector<float> samples;

    /// Loudest sample between two times in milliseconds.
    float Peak(std::int64_t fromMs, std::int64_t toMs) const;
};
Recording ReadWav(const std::filesystem::path& file);

} // namespace tracksmith::audio
