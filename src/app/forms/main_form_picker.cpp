#include "base/data_folders.h"
#include "base/display_text.h"
#include "base/forms/qt_text.h"

#include "app/forms/main_form.h"
#include "app/forms/notices/notice_bar.h"
#include "app/forms/notices/status_line.h"
#include "app/forms/song/song_picker_host.h"
#include "app/forms/song/song_view.h"
#include "app/forms/texts.h"
#include "app/picker_task.h"
#include "instruments/forms/picker_form.h"
#include "instruments/picker/drum_notes.h"
#include "instruments/voices/voice_file_error.h"
#include "mixer/mixer.h"

// Picking a voice for a channel.

namespace tracksmith::forms {
namespace {

// Without the table the notes have their numbers only.
instruments::DrumNotes ReadDrumNotes() {
    const auto folder = FindData("drums");
    if (!folder) {
        return {};
    }
    try {
        return instruments::DrumNotes::ReadFile(*folder / "notes.tsv");
    } catch (const instruments::VoiceFileError&) {
        return {};
    }
}

const instruments::DrumNotes& ShippedDrumNotes() {
    static const instruments::DrumNotes notes = ReadDrumNotes();
    return notes;
}

std::int64_t NotesOf(const app::SongDescription& song, std::size_t channel) {
    for (const auto& line : song.channels) {
        if (line.channel == channel) {
            return line.notes;
        }
    }
    return 0;
}

} // namespace

void TMainForm::MMI_PickVoiceClick() {
    PickVoice(songView_->ChosenChannel());
}

SongPickerHost::Window TMainForm::PickerWindow() {
    return {[this](const std::function<void()>& change) {
                if (Run(change)) {
                    ShowChanges();
                }
            },
            [this](const Text& text) { notice_->ShowText(text); },
            [this](std::size_t channel, bool on) {
                if (mixer_->Solo(channel) != on) {
                    static_cast<void>(mixer_->Btn_Solo00MouseDown(channel, false));
                    songView_->ShowMixer();
                }
            },
            [this](const instruments::VoiceReplacement& replacement) {
                return SaveToRevoicer(replacement);
            }};
}

void TMainForm::PickVoice(std::size_t channel) {
    const Language language = host_.CurrentLanguage();
    const app::LookupOptionsOf options = [this](instruments::InstrumentId id) {
        return voices_.OptionsOf(id);
    };
    const app::SongDescription& song = songView_->Description();
    instruments::PickerTask task =
        app::PickerTaskOf(session_.Work(), voices_.Tables(), song, options, channel);
    const auto start = app::StartBanksOf(session_.Work(), voices_.Tables(), song, options);
    pickerHost_ = std::make_unique<SongPickerHost>(session_, host_, start, PickerWindow());
    const std::string instrument(instruments::FindInstrument(task.instrument)->name);
    QStringList places;
    for (const std::string& place : app::PlacesOf(task, session_.Song())) {
        places << ToQString(place);
    }
    const instruments::VoiceNumbers numbers =
        task.changes.empty() ? task.inForce : task.changes.front().state.Numbers();
    TPickerForm::Program program{.host = *pickerHost_,
                                 .instrument = ToQString(instrument),
                                 .notes = NotesOf(song, channel),
                                 .store = store_,
                                 .places = places,
                                 .playStop = [this] { MMP_PlayStopClick(); },
                                 .playing = [this] { return session_.Controls().Playing(); },
                                 .kitNotes = ShippedDrumNotes().NotesOf(task.instrument, numbers)};
    auto* form = new TPickerForm(voices_.Tables(), std::move(task),
                                 std::make_unique<instruments::VoiceMemory>(store_, instrument),
                                 std::move(program), language, this);
    form->open();
}

} // namespace tracksmith::forms
