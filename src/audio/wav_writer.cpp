#ifdef _WIN32
#include <windows.h>
#define ENABLE_SNDFILE_WINDOWS_PROTOTYPES 1
#endif

#include <random>
#include <system_error>

#include "audio/audio_error.h"
#include "audio/texts.h"
#include "audio/wav_writer.h"
#include "base/display_text.h"
#include "base/system/file_io.h"

namespace tracksmith::audio {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Raise(const Text& text, const fs::path& path) {
    throw EAudioError(AudioFault::NotWritten, text, DisplayPath(system::PathText(path)));
}

/// The file behind a symbolic link, which keeps pointing to it. Folders and devices are refused:
/// renaming would replace them.
fs::path CheckedTarget(const fs::path& path) {
    std::error_code error;
    fs::path target = fs::is_symlink(path, error) ? fs::weakly_canonical(path, error) : path;
    if (fs::exists(target, error) && !fs::is_regular_file(target, error)) {
        Raise(texts::kCannotCreate, path);
    }
    return target;
}

fs::path TemporaryBeside(const fs::path& target) {
    std::random_device random;
    return target.parent_path() / (".tracksmith-audio-" + std::to_string(random()) + ".tmp");
}

SNDFILE* OpenForWriting(const fs::path& path, SF_INFO& info) {
#ifdef _WIN32
    return sf_wchar_open(path.c_str(), SFM_WRITE, &info);
#else
    return sf_open(path.c_str(), SFM_WRITE, &info);
#endif
}

} // namespace

WavWriter::WavWriter(const fs::path& target, int sampleRate, SampleBits bits)
    : target_(CheckedTarget(target)), temporary_(TemporaryBeside(target_)) {
    SF_INFO info{};
    info.samplerate = sampleRate;
    info.channels = 2;
    info.format = SF_FORMAT_WAV | (bits == SampleBits::Pcm24 ? SF_FORMAT_PCM_24 : SF_FORMAT_PCM_16);
    file_.reset(OpenForWriting(temporary_, info));
    if (!file_) {
        Raise(texts::kCannotCreate, target_);
    }
    sf_command(file_.get(), SFC_SET_CLIPPING, nullptr, SF_TRUE);
}

WavWriter::~WavWriter() {
    file_.reset();
    std::error_code ignored;
    fs::remove(temporary_, ignored);
}

void WavWriter::Write(std::span<const float> interleaved) {
    const auto frames = static_cast<sf_count_t>(interleaved.size() / 2);
    if (sf_writef_float(file_.get(), interleaved.data(), frames) != frames) {
        Fail();
    }
}

void WavWriter::Commit() {
    sf_command(file_.get(), SFC_UPDATE_HEADER_NOW, nullptr, 0);
    sf_write_sync(file_.get());
    if (sf_error(file_.get()) != SF_ERR_NO_ERROR || sf_close(file_.release()) != 0) {
        Fail();
    }
    std::error_code error;
    fs::rename(temporary_, target_, error);
    if (error) {
        Fail();
    }
}

void WavWriter::Fail() const {
    Raise(texts::kCannotWrite, target_);
}

} // namespace tracksmith::audio
