#include <array>
#include <set>

#include "base/display_text.h"
#include "base/forms/qt_text.h"

#include "app/forms/health/health_watch.h"
#include "app/forms/loading/song_loader.h"
#include "app/forms/main_form.h"
#include "app/forms/notices/notice_bar.h"
#include "app/forms/notices/status_line.h"
#include "app/forms/song/song_view.h"
#include "app/forms/texts.h"
#include "app/forms/transport/session_signals.h"
#include "app/prepare_song.h"
#include "app/save_song.h"
#include "instruments/forms/instrument_chooser.h"
#include "instruments/forms/options_form.h"
#include "instruments/forms/patches_form.h"
#include "instruments/forms/texts.h"

// The commands for the instruments at the outputs.

namespace tracksmith::forms {

// The instruments' settings into the workspace, and their names into the window.
void TMainForm::TakeInstruments() {
    app::TakeInstrument(session_.Options(), instruments_);
    std::array<std::string, instruments::OutputTable::kChannels> outputs;
    for (std::size_t channel = 0; channel < outputs.size(); ++channel) {
        outputs[channel] = session_.Controls().Outputs().Route(channel).output;
    }
    app::TakeOtherOutputs(session_.Options(), instruments_, outputs);
    const std::string& name = session_.Work().outputs.outputs.front().name;
    const std::string shown = instruments::FindInstrument(name) != nullptr ? name : std::string();
    if (shown.empty() && instruments_.HasInstrument()) {
        notice_->ShowPlain(
            texts::UnknownInstrument(ToQString(DisplayText(name)), host_.CurrentLanguage()));
    }
    songView_->ShowInstrument(shown);
    status_->SetInstrument(ToQString(shown));
    healthWatch_->Begin();
    if (loader_->Busy()) {
        loader_->StartAnew(session_.Options()); // for the instruments as they are now
    }
}

InstrumentOutput TMainForm::MainOutput() const {
    return {std::string(),
            InLanguage(instrument_texts::kMainOutput, host_.CurrentLanguage())
                .arg(ToQString(DisplayText(session_.Controls().Outputs().Output())))};
}

void TMainForm::MMI_ChooseInstrumentClick() {
    const Language language = host_.CurrentLanguage();
    std::vector<InstrumentOutput> outputs{MainOutput()};
    std::set<std::string> routed;
    for (std::size_t channel = 0; channel < instruments::OutputTable::kChannels; ++channel) {
        const std::string output = session_.Controls().Outputs().Route(channel).output;
        if (!output.empty() && routed.insert(output).second) {
            outputs.push_back({output, ToQString(DisplayText(output))});
        }
    }
    auto* chooser = new InstrumentChooser(
        instruments_, std::move(outputs),
        [this, language](const auto& each) { return voices_.Remark(each, language); }, language,
        this);
    const std::string former = instruments_.ReadInstrument();
    connect(chooser, &InstrumentChooser::Stored, this, [this, former](const QString&, bool onDisk) {
        if (!onDisk) {
            notice_->ShowText(texts::kSettingNotStored);
        }
        TakeInstruments();
        OfferPreparing(former);
    });
    chooser->open();
}

void TMainForm::TakeAnsweredInstrument(const QString& name) {
    if (!instruments_.WriteInstrument(name.toStdString())) {
        notice_->ShowText(texts::kSettingNotStored);
    }
    TakeInstruments();
}

void TMainForm::OfferPreparing(const std::string& formerInstrument) {
    const std::string& name = session_.Work().outputs.outputs.front().name;
    const QString question = texts::PrepareQuestion(ToQString(name), host_.CurrentLanguage());
    if (!session_.HasSong() || loader_->Busy() || name == formerInstrument) {
        return;
    }
    if (host_.AskWayOn(question.toStdString(), texts::kPrepare, texts::kLeaveAsItIs)) {
        MMI_PrepareSongClick();
    } else {
        ShowChanges();
    }
}

void TMainForm::MMI_PrepareSongClick() {
    if (Run([&] { app::PrepareSong(session_, host_); })) {
        ShowChanges();
    }
}

void TMainForm::MMI_InsertLeadInClick() {
    bool inserted = false;
    if (Run([&] { inserted = app::InsertLeadIn(session_, host_); })) {
        ShowChanges();
        status_->ShowStatus(inserted ? texts::kLeadInInserted : texts::kNoLeadIn);
    }
}

// The first voice of a channel, with the reason where it is only similar.
QString TMainForm::PlayingText(std::size_t channel) const {
    for (const auto& line : songView_->Description().channels) {
        if (line.channel == channel) {
            const ShownVoice voice = voices_.NameOf(line, host_.CurrentLanguage());
            return voice.similar ? voice.Marked() + QStringLiteral(". ") + voice.why : voice.name;
        }
    }
    return {};
}

void TMainForm::MMI_VoicesClick() {
    const Language language = host_.CurrentLanguage();
    TPatchesForm::Files files{
        [this, language](QWidget* window) {
            return chooser_->ChooseOpen(window, language, FileKind::Voices,
                                        settings_.ReadLastFolder());
        },
        [this, language](QWidget* window, const std::filesystem::path& name) {
            auto file = chooser_->ChooseSave(window, language, FileKind::Voices,
                                             settings_.ReadLastFolder() / name);
            return file && app::ConfirmOverwrite(*file, host_) ? file : std::nullopt;
        }};
    auto* dialog = new TPatchesForm(
        session_.Work().outputs, voices_.Tables(),
        {[this](instruments::InstrumentId id) { return voices_.OptionsOf(id); },
         [this](std::size_t channel) { return PlayingText(channel); }, std::move(files)},
        host_, this);
    dialog->DisplayInstrumentPatches(songView_->ChosenChannel());
    connect(dialog, &TPatchesForm::TableChanged, this, &TMainForm::TakeInstruments);
    dialog->open();
}

void TMainForm::MMS_InstrumentsClick() {
    const Language language = host_.CurrentLanguage();
    std::vector<InstrumentOutput> outputs{MainOutput()};
    for (const auto& device : session_.Controls().Player().OutputDevices()) {
        outputs.push_back({device.productName, ToQString(DisplayText(device.productName))});
    }
    auto* form = new TOptionsForm(
        instruments_, std::move(outputs),
        [this, language](const auto& each) { return voices_.Remark(each, language); }, language,
        this);
    connect(form, &TOptionsForm::InstrumentStored, this, &TMainForm::TakeInstruments);
    connect(form, &TOptionsForm::SettingStored, this, [this] {
        TakeInstruments();
        if (session_.HasSong()) {
            notice_->ShowReloadOffer();
        }
    });
    const std::string former = instruments_.ReadInstrument();
    connect(form, &QDialog::finished, this, [this, former] { OfferPreparing(former); });
    form->open();
}

} // namespace tracksmith::forms
