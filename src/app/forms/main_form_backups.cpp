#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "base/forms/qt_text.h"

#include "app/backups/backup_settings.h"
#include "app/backups/crash_records.h"
#include "app/backups/restore_backup.h"
#include "app/forms/backups/restore_form.h"
#include "app/forms/backups/texts.h"
#include "app/forms/changes/changes_form.h"
#include "app/forms/main_form.h"
#include "app/forms/menu/menu_areas.h"
#include "app/forms/notices/notice_bar.h"
#include "app/forms/notices/notice_host.h"
#include "app/forms/notices/status_line.h"
#include "app/forms/song/song_view.h"
#include "app/forms/texts.h"
#include "app/forms/transport/session_signals.h"
#include "app/save_song.h"
#include "app/song_file.h"

// The automatic backups of the song.

namespace tracksmith::forms {

// The clock of the look at the ports serves, so that none more wakes a program that rests.
void TMainForm::StartBackups() {
    backups_ =
        std::make_unique<backups::AutoBackup>(session_, backups::UsualBackupFolder(), *noticeHost_);
    ShowBackupOptions();
    connect(signals_.get(), &SessionSignals::PortsChecked, this,
            [this] { backups_->Look(std::chrono::steady_clock::now()); });
    connect(notice_, &NoticeBar::RestorePressed, this, [this] {
        if (unseen_ && Restore(*unseen_)) {
            unseen_.reset();
            notice_->DropRestoreOffer();
        }
    });
    if (const auto crash = backups::TakeUntoldCrash(store_, backups_->Folder().Path())) {
        notice_->ShowCrash(ShownPath(*crash));
    }
    OfferUnseenBackup();
}

void TMainForm::ShowBackupOptions() {
    const backups::BackupOptions options = backups::ReadBackupOptions(store_);
    menu_->Choose(kAutoBackupMenu, options.on ? static_cast<int>(options.interval.count()) : 0);
    if (backups_) {
        backups_->Options() = options;
    }
}

void TMainForm::MMS_AutoBackupClick() {
    const int minutes = menu_->Chosen(kAutoBackupMenu);
    backups::BackupOptions& options = backups_->Options();
    options.on = minutes > 0;
    if (options.on) {
        options.interval = std::chrono::minutes(minutes);
    }
    if (!backups::WriteBackupOptions(store_, options)) {
        notice_->ShowText(texts::kSettingNotStored);
    }
}

void TMainForm::OfferUnseenBackup() {
    unseen_ = backups::UnseenBackup(store_, backups_->Folder());
    if (unseen_) {
        notice_->ShowRestoreOffer(ToQString(unseen_->name.song),
                                  BackupDate(*unseen_, host_.CurrentLanguage()));
    }
}

void TMainForm::MMF_RestoreEarlierClick() {
    backups_->Finish();
    delete changes_.data(); // one state is heard at a time
    if (!backupComparison_) {
        backupComparison_ = std::make_unique<BackgroundComparison>();
    }
    const RestoreActions actions{[this](const backups::Backup& backup) { return Restore(backup); },
                                 [this](const backups::Backup& backup) { return FilesOf(backup); },
                                 *backupComparison_, *signals_};
    auto* form = new RestoreForm(backups_->Folder().List(), session_.Work().file.name, actions,
                                 host_.CurrentLanguage(), this);
    form->open();
}

std::optional<diff::FilePair> TMainForm::FilesOf(const backups::Backup& backup) {
    const auto read = [](const std::filesystem::path& file) {
        auto bytes = app::ReadSongFile(file);
        return bytes ? std::make_shared<const std::vector<std::uint8_t>>(*std::move(bytes))
                     : nullptr;
    };
    diff::FilePair files;
    files.before = read(backup.file);
    if (!session_.HasSong()) {
        files.after = backup.original.empty() ? nullptr : read(backup.original);
    } else {
        Run([&] {
            const auto bytes = app::EncodeSong(session_, app::SaveFormat::AsSong, host_);
            files.after =
                std::make_shared<const std::vector<std::uint8_t>>(bytes.begin(), bytes.end());
            files.tempoOffset = session_.TempoOffset();
        });
    }
    return files.before && files.after ? std::optional(std::move(files)) : std::nullopt;
}

bool TMainForm::Restore(const backups::Backup& backup) {
    if (!ConfirmDiscard()) {
        return false;
    }
    GiveUpLoading();
    if (!Run([&] { backups::RestoreBackup(session_, backup, host_); })) {
        return false;
    }
    notice_->Clear();
    status_->ShowStatus(backup_texts::kRestored, ToQString(backup.name.song));
    songView_->FocusOverview();
    return true;
}

// Without an answer what the user has done is backed up, and offered at the next start.
void TMainForm::EndBackups(bool answered) {
    if (!answered && session_.Modified()) {
        leftUnanswered_ = true;
        backups_->WriteNow();
    }
    backups_->Finish();
    if (!leftUnanswered_) {
        backups::MarkBackupsSeen(store_, backups_->Folder());
    }
}

} // namespace tracksmith::forms
