#pragma once

#include <filesystem>
#include <memory>
#include <sndfile.h>
#include <span>

namespace tracksmith::audio {

/// Resolution of the samples in an audio file.
enum class SampleBits { Pcm16, Pcm24 };

/// Writes a stereo WAV file. The bytes go to a temporary file in the same folder that replaces the
/// target in Commit; without a Commit nothing stays behind.
class WavWriter {
public:
    /// Raises EAudioError (NotWritten) when no file can be made there.
    WavWriter(const std::filesystem::path& target, int sampleRate, SampleBits bits);
    WavWriter(const WavWriter&) = delete;
    WavWriter& operator=(const WavWriter&) = delete;
    ~WavWriter();

    /// Appends frames (left and right in turn, -1 to 1). Raises EAudioError (NotWritten).
    void Write(std::span<const float> interleaved);

    /// Flushes everything to the disk and gives the file its name. Raises EAudioError.
    void Commit();

private:
    struct Close {
        void operator()(SNDFILE* file) const { sf_close(file); }
    };

    [[noreturn]] void Fail() const;

    std::filesystem::path target_;
    std::filesystem::path temporary_;
    std::unique_ptr<SNDFILE, Close> file_;
};

} // namespace tracksmith::audio
