#include "app/backups/auto_backup.h"

#include <cstdint>
#include <ctime>
#include <exception>
#include <functional>
#include <span>
#include <string_view>
#include <utility>

#include "base/recording_message_host.h"
#include "base/system_reason.h"

#include "app/backups/texts.h"
#include "app/save_song.h"

namespace tracksmith::backups {
namespace {

std::size_t HashOf(std::span<const std::uint8_t> bytes) {
    return std::hash<std::string_view>{}(
        {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

} // namespace

AutoBackup::AutoBackup(session::Session& session, std::filesystem::path folder, MessageHost& host)
    : session_(session), folder_(std::move(folder)), host_(host) {
    session_.AddListener(*this);
}

// Nobody can be told any more.
AutoBackup::~AutoBackup() {
    session_.RemoveListener(*this);
    if (writing_.valid()) {
        writing_.wait();
    }
}

void AutoBackup::Look(Time now) {
    if (writing_.valid()) {
        if (writing_.wait_for(std::chrono::seconds(0)) != std::future_status::ready) {
            return;
        }
        Finish();
    }
    if (!options_.on || !session_.HasSong() || !session_.Modified()) {
        due_.reset();
    } else if (!due_) {
        due_ = now + options_.interval;
    } else if (now >= *due_ && !session_.Changing()) {
        due_ = now + options_.interval;
        StartWriting();
    }
}

bool AutoBackup::WriteNow() {
    Finish();
    return session_.HasSong() && !session_.Changing() && StartWriting();
}

void AutoBackup::OnLeavingSong() {
    if (options_.on) {
        WriteNow();
    }
    due_.reset();
}

// The bytes are the copy of the song: coding takes little more time than copying its events.
std::vector<std::uint8_t> AutoBackup::Encode() {
    RecordingMessageHost unseen(host_.CurrentLanguage());
    const auto bytes = app::EncodeSong(session_, app::SaveFormat::AsSong, unseen);
    return {bytes.begin(), bytes.end()};
}

bool AutoBackup::StartWriting() {
    try {
        if (folder_.Path().empty()) {
            return Fail(std::string(texts::kNoFolder.In(host_.CurrentLanguage())));
        }
        std::vector<std::uint8_t> bytes = Encode();
        const session::FileState& file = session_.Work().file;
        const Written now{file.source, HashOf(bytes), bytes.size()};
        if (now == written_) {
            return true;
        }
        BackupSource source{
            SongNameOf(file.source, texts::kUnnamedSong.In(host_.CurrentLanguage())),
            file.name.empty() ? file.name : std::filesystem::absolute(file.name),
            StampOf(std::time(nullptr))};
        writing_ = std::async(std::launch::async,
                              [folder = folder_, source = std::move(source),
                               bytes = std::move(bytes)] { return folder.Write(source, bytes); });
        written_ = now;
        return true;
    } catch (const std::exception& error) {
        return Fail(texts::Reason(error, host_.CurrentLanguage()));
    }
}

bool AutoBackup::Finish() {
    if (!writing_.valid()) {
        return true;
    }
    try {
        return Take(writing_.get());
    } catch (const std::exception& error) {
        return Fail(texts::Reason(error, host_.CurrentLanguage()));
    }
}

bool AutoBackup::Take(const BackupFolder::Outcome& outcome) {
    if (outcome.result.outcome != system::WriteOutcome::Written) {
        return Fail(SystemReason(outcome.result.error, host_.CurrentLanguage()));
    }
    told_.clear();
    return true;
}

// Each reason once, until a backup succeeds.
bool AutoBackup::Fail(const std::string& reason) {
    written_.reset();
    if (told_ != reason) {
        told_ = reason;
        host_.ShowMessage(texts::Failed(host_.CurrentLanguage(), reason));
    }
    return false;
}

} // namespace tracksmith::backups
