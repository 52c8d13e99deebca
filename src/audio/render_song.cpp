#include "audio/render_song.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "audio/audio_error.h"
#include "audio/limiter.h"
#include "audio/soundfont.h"
#include "audio/synth_adapter.h"
#include "audio/texts.h"

#include "song/track_walk.h"

namespace tracksmith::audio {
namespace {

using Block = std::array<float, std::size_t{2} * kBlockFrames>;

// Quieter than one step of 16 bits.
constexpr float kSilence = 1.0F / 65'536.0F;
constexpr std::int64_t kProgressFrames = 4'410;

/// What is heard of a song.
struct Audible {
    static bool Enters(const song::Track& track) { return track.ignored == 0 && track.muted == 0; }
    static bool Wants(const song::MidiEvent& event) {
        return event.length > 0 &&
               (event.IsChannelMessage() || event.status == song::kSystemExclusive);
    }
    static song::ConstEventLink EndOf(const song::Track& /*track*/) { return {}; }
};

/// One run of RenderSong.
class Rendering {
public:
    Rendering(const song::Song& song, const RenderOptions& options, const RenderProgress& progress)
        : options_(options),
          progress_(progress),
          totalMs_(std::max<std::int64_t>(song.lengthMs, 0)),
          song_(song),
          walk_(song),
          synth_(FindSoundfont(options.soundfont), options.sampleRate, options.gain),
          adapter_(synth_) {}

    RenderResult Run(WavWriter& writer) {
        PlaySong(writer);
        if (!result_.cancelled) {
            PlayTail(writer);
        }
        result_.lengthMs = frames_ * 1'000 / options_.sampleRate;
        return result_;
    }

private:
    void PlaySong(WavWriter& writer) {
        while (!result_.cancelled && (walk_.Peek() != nullptr || FrameOf(totalMs_) > frames_)) {
            SendDue();
            RenderBlock(writer);
        }
    }

    void PlayTail(WavWriter& writer) {
        adapter_.ReleaseAll();
        const std::int64_t end = frames_ + FrameOf(options_.longestTailMs);
        bool silent = false;
        while (!silent && frames_ < end && !result_.cancelled) {
            silent = RenderBlock(writer) < kSilence && synth_.ActiveVoices() == 0;
        }
    }

    /// First frame at or behind `ms`, so that nothing sounds early.
    std::int64_t FrameOf(std::int64_t ms) const { return (ms * options_.sampleRate + 999) / 1'000; }

    std::int64_t DueMs(const song::MidiEvent& event) const {
        return song::DueMs(song_.tracks[walk_.NextTrack()], event);
    }

    void SendDue() {
        const song::MidiEvent* event = walk_.Peek();
        while (event != nullptr && FrameOf(DueMs(*event)) <= frames_) {
            Send(*event, DueMs(*event));
            walk_.Take();
            event = walk_.Peek();
        }
    }

    void Send(const song::MidiEvent& event, std::int64_t dueMs) {
        if (event.status == song::kSystemExclusive) {
            adapter_.SendSysex(event.Payload());
        } else if ((options_.channels >> event.Channel() & 1U) != 0 &&
                   (dueMs >= 0 || event.Command() >= song::kControlChange)) {
            adapter_.SendShort(event.status, event.data1, event.data2);
        }
    }

    /// Writes one block and returns its peak.
    float RenderBlock(WavWriter& writer) {
        Block block;
        synth_.Render(block);
        float peak = 0;
        for (float& sample : block) {
            const float size = std::abs(sample);
            peak = std::max(peak, size);
            result_.limitedSamples += size > 1.0F ? 1 : 0;
            sample = Limited(sample);
        }
        result_.peak = std::max(result_.peak, peak);
        writer.Write(block);
        frames_ += kBlockFrames;
        ReportProgress();
        return peak;
    }

    void ReportProgress() {
        if (!progress_ || frames_ < nextReport_) {
            return;
        }
        nextReport_ = frames_ + kProgressFrames;
        const std::int64_t doneMs = frames_ * 1'000 / options_.sampleRate;
        result_.cancelled = !progress_(std::min(doneMs, totalMs_), totalMs_);
    }

    const RenderOptions& options_;
    const RenderProgress& progress_;
    std::int64_t totalMs_;
    const song::Song& song_;
    song::TrackWalk<song::DueOrder, Audible> walk_;
    SoftSynth synth_;
    SynthAdapter adapter_;
    RenderResult result_;
    std::int64_t frames_ = 0;
    std::int64_t nextReport_ = 0;
};

void CheckLength(const song::Song& song, const RenderOptions& options) {
    const std::int64_t bytesPerFrame = options.bits == SampleBits::Pcm24 ? 6 : 4;
    const std::int64_t ms = std::max<std::int64_t>(song.lengthMs, 0) + options.longestTailMs;
    if (ms * options.sampleRate / 1'000 * bytesPerFrame >
        std::numeric_limits<std::uint32_t>::max() - std::int64_t{1'024}) {
        throw EAudioError(AudioFault::NotWritten, texts::kTooLong);
    }
}

} // namespace

RenderResult RenderSong(const song::Song& song, const std::filesystem::path& target,
                        const RenderOptions& options, const RenderProgress& progress) {
    CheckLength(song, options);
    Rendering rendering(song, options, progress);
    WavWriter writer(target, options.sampleRate, options.bits);
    const RenderResult result = rendering.Run(writer);
    if (!result.cancelled) {
        writer.Commit();
    }
    return result;
}

} // namespace tracksmith::audio
