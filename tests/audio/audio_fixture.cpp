#include "audio_fixture.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <sndfile.h>

#include "audio/audio_error.h"
#include "audio/soundfont.h"

#include "song/event_chain.h"
#include "song/time_map.h"

namespace tracksmith::audio {

namespace fs = std::filesystem;

void AudioTest::SetUp() {
    std::random_device random;
    folder_ = fs::path(testing::TempDir()) / ("tracksmith_audio_" + std::to_string(random()));
    fs::create_directories(folder_);
    try {
        soundfont_ = FindSoundfont();
    } catch (const EAudioError& error) {
        GTEST_SKIP() << error.what();
    }
}

void AudioTest::TearDown() {
    fs::remove_all(folder_);
}

void StartSong(song::Song& song, std::size_t trackCount) {
    song.tracks.resize(trackCount);
    song.trackCount = static_cast<std::int32_t>(trackCount);
    for (song::Track& track : song.tracks) {
        song::InitTrack(song, track);
    }
}

void AddNote(song::Song& song, std::size_t track, std::int32_t start, std::int32_t end,
             std::uint8_t channel, std::uint8_t key, std::uint8_t velocity) {
    const auto on = static_cast<std::uint8_t>(song::kNoteOn | channel);
    const auto off = static_cast<std::uint8_t>(song::kNoteOff | channel);
    song::Track& target = song.tracks[track];
    song::InsertByTick(target, song::NewShortEvent(song.pool, start, on, key, velocity));
    song::InsertByTick(target, song::NewShortEvent(song.pool, end, off, key, 64));
}

void FinishSong(song::Song& song, std::int32_t length) {
    song.songLength = length;
    for (song::Track& track : song.tracks) {
        song::AppendEvent(track, song::NewMetaEvent(song.pool, length, song::kMetaEndOfTrack, {}));
    }
    song::UpdateTimeZoneData(song);
}

float Recording::Peak(std::int64_t fromMs, std::int64_t toMs) const {
    const auto index = [this](std::int64_t ms) {
        return std::min(static_cast<std::size_t>(ms * sampleRate / 1000 * 2), samples.size());
    };
    float peak = 0;
    for (std::size_t i = index(fromMs); i < index(toMs); ++i) {
        peak = std::max(peak, std::abs(samples[i]));
    }
    return peak;
}

Recording ReadWav(const fs::path& file) {
    SF_INFO info{};
    SNDFILE* handle = sf_open(file.c_str(), SFM_READ, &info);
    if (handle == nullptr) {
        return {};
    }
    Recording recording{info.samplerate, info.channels, {}};
    recording.samples.resize(static_cast<std::size_t>(info.frames * info.channels));
    sf_readf_float(handle, recording.samples.data(), info.frames);
    sf_close(handle);
    return recording;
}

} // namespace tracksmith::audio
