#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>

#include "base/forms/qt_text.h"
#include <QDialog>
#include <QKeySequence>
#include <QShortcut>

#include "app/channel_voices.h"
#include "app/forms/changes/change_log.h"
#include "app/forms/changes/changes_form.h"
#include "app/forms/changes/changes_watch.h"
#include "app/forms/changes/texts.h"
#include "app/forms/main_form.h"
#include "app/forms/notices/dialogs.h"
#include "app/forms/notices/notice_bar.h"
#include "app/forms/settings/file_chooser.h"
#include "app/forms/transport/session_signals.h"
#include "app/save_song.h"
#include "editing/forms/range_form.h"

// What has changed in the song, and hearing how it was.

namespace tracksmith::forms {

diff::VoiceNamer TMainForm::VoiceNamer() {
    return [this](std::uint8_t channel, std::optional<std::uint8_t> msb,
                  std::optional<std::uint8_t> lsb, std::uint8_t program) {
        const auto id = session_.Work().outputs.InstrumentOfChannel(channel);
        return app::VoiceOfChannel(voices_.Tables(), {channel, 0, msb, lsb, program}, id,
                                   voices_.OptionsOf(id), host_.CurrentLanguage())
            .name;
    };
}

void TMainForm::MMF_WhatChangedClick() {
    if (!session_.HasSong()) {
        return;
    }
    if (changes_ != nullptr) {
        changes_->raise();
        changes_->activateWindow();
        return;
    }
    const ChangesActions actions{
        [this](QWidget* window, FileKind kind) {
            const auto name = InLanguage(changes_texts::kFileName, host_.CurrentLanguage())
                                  .arg(PathToQString(session_.Work().file.source.stem()));
            const auto file =
                chooser_->ChooseSave(window, host_.CurrentLanguage(), kind,
                                     settings_.ReadLastFolder() / PathFromQString(name));
            return file && app::ConfirmOverwrite(*file, host_) ? file : std::nullopt;
        },
        [this](const std::filesystem::path& file, const std::string& text) {
            return Run([&] {
                app::WriteMidiFile(
                    file, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()}, host_);
            });
        },
        VoiceNamer(),
        [this](const diff::Difference& row) {
            return changeLog_->DoneBy(row, host_.CurrentLanguage());
        },
        [this] { ShowLoadingChanges(); }};
    changesWatch_->SetActive(true, host_.CurrentLanguage());
    changes_ = new ChangesForm(*signals_, *changesWatch_, actions, host_.CurrentLanguage(), this);
    // Here, too, where the mixer is looked at.
    auto* key = new QShortcut(QKeySequence(QStringLiteral("Ctrl+B")), this);
    connect(key, &QShortcut::activated, changes_.data(), &ChangesForm::Switch);
    connect(changes_.data(), &QObject::destroyed, key, &QObject::deleteLater);
    connect(changes_.data(), &QObject::destroyed, changesWatch_.get(),
            [this] { changesWatch_->SetActive(false, host_.CurrentLanguage()); });
    changes_->show();
}

// In another language.
void TMainForm::ShowWhatChangedAnew() {
    if (changes_ != nullptr) {
        delete changes_.data();
        MMF_WhatChangedClick();
    }
}

void TMainForm::ShowLoadingChanges() {
    ShowChangesDialog(this, session_.Work(), host_.CurrentLanguage());
}

// Told once each time that the song is heard as it was, or that another one is being loaded.
void TMainForm::ConnectHearing() {
    connect(signals_.get(), &SessionSignals::HeardSongChanged, this, [this] { EndRefusal(); });
    // Where a hanging port kept the song as it was beyond its window.
    connect(signals_.get(), &SessionSignals::PortsChecked, this, [this] {
        const bool open = changes_ != nullptr || rangeForm_ != nullptr ||
                          findChild<QDialog*>(QStringLiteral("Dlg_Restore")) != nullptr;
        if (!open && session_.HearsOther() && session_.Controls().HangingPort().empty()) {
            session_.Controls().Hear(nullptr);
        }
    });
    connect(signals_.get(), &SessionSignals::ChangeRefused, this, [this] {
        const Text* const reason = session_.WhyNoChange();
        if (reason != nullptr && !std::exchange(toldRefusal_, true)) {
            notice_->ShowRefusal(*reason);
        }
    });
}

void TMainForm::EndRefusal() {
    toldRefusal_ = false;
    notice_->EndRefusal();
}

} // namespace tracksmith::forms
