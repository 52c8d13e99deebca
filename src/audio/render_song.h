#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>

#include "audio/wav_writer.h"

#include "song/song.h"

namespace tracksmith::audio {

/// How a song is rendered.
struct RenderOptions {
    /// SoundFont to play; empty chooses one (see FindSoundfont).
    std::filesystem::path soundfont;
    /// In Hz, 8,000-96,000.
    int sampleRate = 44'100;
    /// Loudness 0-10 of the instrument; what gets too loud is limited softly.
    float gain = 0.5F;
    SampleBits bits = SampleBits::Pcm16;
    /// The channels that are heard, a bit for each: neither muted nor silent for a solo.
    unsigned channels = 0xFFFF;
    /// Longest time in milliseconds that the last notes may take to die away behind the song's end.
    std::int64_t longestTailMs = 8'000;
};

/// What came out.
struct RenderResult {
    /// The progress callback stopped the work; no file was made.
    bool cancelled = false;
    /// Loudest sample before limiting, 1 being full scale.
    float peak = 0;
    /// Samples beyond full scale, which were limited.
    std::int64_t limitedSamples = 0;
    /// Length of the audio in milliseconds.
    std::int64_t lengthMs = 0;
};

/// Told the milliseconds done and the song's length in milliseconds; false cancels.
using RenderProgress = std::function<bool(std::int64_t doneMs, std::int64_t totalMs)>;

/// Plays the song on the built-in instrument into the stereo WAV file `target`, as fast as the
/// machine allows: what the player plays from the song's start, with muted tracks left out and the
/// time shifts of tracks; of what a shift moves before the start only settings remain. The song
/// needs its time map and clock times, and stays unchanged. `progress` may be empty; it is called
/// on this thread about every 100 ms of sound. The target is replaced only at success; nothing else
/// is left behind. Raises EAudioError.
RenderResult RenderSong(const song::Song& song, const std::filesystem::path& target,
                        const RenderOptions& options = {}, const RenderProgress& progress = {});

} // namespace tracksmith::audio
