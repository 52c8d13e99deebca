#include <map>
#include <utility>

#include "base/forms/qt_text.h"

#include "app/forms/main_form.h"
#include "app/forms/menu/menu_areas.h"
#include "app/forms/notices/notice_bar.h"
#include "app/forms/notices/status_line.h"
#include "app/forms/revoicer/auto_revoicer_form.h"
#include "app/forms/revoicer/revoice_folder_form.h"
#include "app/forms/settings/file_chooser.h"
#include "app/forms/song/song_picker_host.h"
#include "app/forms/song/song_view.h"
#include "app/forms/texts.h"
#include "app/forms/transport/session_signals.h"
#include "app/save_song.h"
#include "instruments/revoicer/revoicer_table.h"

// Replacing voices by a table.

namespace tracksmith::forms {

AutoRevoicerActions TMainForm::RevoicerActions() {
    const auto revoicer = [this](const std::function<std::size_t()>& edit, const Text& done) {
        std::size_t count = 0;
        if (Run([&] { count = edit(); })) {
            ShowChanges();
            status_->ShowStatus(done, QString::number(count));
        }
    };
    return {.apply =
                [this, revoicer](app::RevoicerDesk& desk) {
                    revoicer([&] { return desk.Apply(host_).changes.size(); }, texts::kRevoiced);
                },
            .addBanks =
                [this, revoicer](app::RevoicerDesk& desk) {
                    revoicer([&] { return desk.AddBanks(host_); }, texts::kBanksAdded);
                },
            .applyToFolder = [this] { OpenRevoiceFolder(); },
            .tell = [this](const QString& line) { host_.ShowMessage(line.toStdString()); },
            .playStop = [this] { MMP_PlayStopClick(); },
            .tryVoice =
                [this](std::size_t channel, const std::optional<instruments::VoiceNumbers>& voice) {
                    return TryVoice(session_, channel, voice);
                },
            .chooseOpen =
                [this](QWidget* window) {
                    return chooser_->ChooseOpen(window, host_.CurrentLanguage(),
                                                FileKind::RevoicerTable,
                                                settings_.ReadLastFolder());
                },
            .chooseSave =
                [this](QWidget* window, const std::filesystem::path& name) {
                    auto file = chooser_->ChooseSave(window, host_.CurrentLanguage(),
                                                     FileKind::RevoicerTable,
                                                     settings_.ReadLastFolder() / name);
                    return file && app::ConfirmOverwrite(*file, host_) ? file : std::nullopt;
                }};
}

void TMainForm::MME_AutoRevoicerClick() {
    if (revoicer_ != nullptr) {
        revoicer_->raise();
        revoicer_->activateWindow();
        return;
    }
    app::RevoicerDesk desk(session_, voices_.Tables(), store_,
                           [this](instruments::InstrumentId id) { return voices_.OptionsOf(id); });
    revoicer_ = new TAutoRevoicerForm(*signals_, std::move(desk), RevoicerActions(),
                                      host_.CurrentLanguage(), this);
    revoicer_->show();
}

// What the worker's thread reads is copied: settings belong to this one.
app::FolderOrder TMainForm::FolderOrderNow() const {
    app::FolderOrder order;
    order.options = static_cast<const session::WorkOptions&>(session_.Work());
    const auto& outputs = order.options.outputs.outputs;
    order.revoice.entries =
        instruments::RevoicerTable::Load(store_, outputs.front().name).Applied();
    std::map<instruments::InstrumentId, instruments::LookupOptions> options;
    for (const instruments::OutputAssignment& output : outputs) {
        options[output.id] = voices_.OptionsOf(output.id);
    }
    order.revoice.options = [options = std::move(options)](instruments::InstrumentId id) {
        const auto found = options.find(id);
        return found == options.end() ? instruments::LookupOptions() : found->second;
    };
    return order;
}

RevoiceFolderActions TMainForm::FolderActions() {
    return {
        .order = [this] { return FolderOrderNow(); },
        .chooseFolder =
            [this](QWidget* window, const QString& title) {
                return chooser_->ChooseFolder(window, title, settings_.ReadLastFolder());
            },
        .ask = [this](const QString& question) { return host_.AskYesNo(question.toStdString()); },
        .tables = voices_.Tables()};
}

void TMainForm::OpenRevoiceFolder() {
    if (revoiceFolder_ == nullptr) {
        revoiceFolder_ = new RevoiceFolderForm(FolderActions(), host_.CurrentLanguage(), this);
        revoiceFolder_->show();
    }
    revoiceFolder_->raise();
    revoiceFolder_->activateWindow();
}

bool TMainForm::SaveToRevoicer(const instruments::VoiceReplacement& replacement) {
    const std::string instrument = session_.Work().outputs.outputs.front().name;
    auto table = instruments::RevoicerTable::Load(store_, instrument);
    const bool saved = table.Put({replacement.target, replacement.targetName, replacement.source,
                                  replacement.sourceName}) &&
                       table.Save(store_, instrument);
    if (revoicer_ != nullptr) {
        revoicer_->LoadRevoiceData();
    }
    return saved;
}

// In another language.
void TMainForm::ShowRevoicerAnew() {
    if (revoicer_ != nullptr) {
        delete revoicer_.data();
        MME_AutoRevoicerClick();
    }
    // One that works keeps its language.
    if (revoiceFolder_ != nullptr && !revoiceFolder_->Busy()) {
        const QString source = revoiceFolder_->Source();
        const QString target = revoiceFolder_->Target();
        delete revoiceFolder_.data();
        OpenRevoiceFolder();
        revoiceFolder_->SetFolders(source, target);
    }
}

} // namespace tracksmith::forms
