#include "instruments/picker/voice_picker.h"

#include <algorithm>
#include <utility>

#include "instruments/voices/voice_table_writer.h"

namespace tracksmith::instruments {
namespace {

// A voice takes a moment after its program change; then the note is long enough to judge it.
constexpr int kBeforeNoteMs = 30;
constexpr int kNoteMs = 400;
// A snare tells more about a kit than the note of middle C.
constexpr std::uint8_t kSnare = 38;

} // namespace

VoicePicker::VoicePicker(const VoiceTables& tables, PickerTask task, VoiceMemory& memory,
                         PickerHost& host)
    : tables_(tables),
      task_(std::move(task)),
      memory_(memory),
      host_(host),
      lists_(VoicesOf(tables, task_.instrument, task_.options), memory),
      inForce_(task_.changes.empty() ? task_.inForce : task_.changes[0].state.Numbers()),
      selected_{task_.drums, inForce_} {
    if (!task_.changes.empty()) {
        chosen_ = {0};
    }
    if (task_.drums) {
        testNote_ = kSnare;
        lists_.ChooseFamily(FamilyKind::Own, kDrumsFamily) ||
            lists_.ChooseFamily(FamilyKind::Inherited, kDrumsFamily);
    }
    const FoundVoice found =
        FindVoice(tables_, task_.instrument, task_.drums, inForce_, task_.options);
    if (found.voice != nullptr) {
        lists_.Show(*found.voice);
    }
}

void VoicePicker::ChooseCategory(std::string_view family, std::size_t row) {
    if (lists_.ChooseFamily(FamilyKind::Own, family) ||
        lists_.ChooseFamily(FamilyKind::Inherited, family)) {
        lists_.ChooseCategory(row);
    }
}

void VoicePicker::LB_SoundsClick(std::size_t row) {
    if (row < lists_.Sounds().size()) {
        Select(KeyOf(*lists_.Sounds()[row].voice));
    }
}

void VoicePicker::Select(const VoiceKey& key) {
    selected_ = key;
    Btn_NewVoiceClick();
    if (noteOnSelection_) {
        noteStep_ = NoteStep::Begin;
    }
}

void VoicePicker::Btn_SearchClick() {
    const std::size_t count = lists_.Sounds().size();
    if (count > 0) {
        const std::size_t row = lists_.RowOf(selected_);
        LB_SoundsClick(row + 1 < count ? row + 1 : 0);
    }
}

std::string VoicePicker::PM_SaveVoicesClick() const {
    std::vector<Voice> voices;
    std::ranges::transform(lists_.Sounds(), std::back_inserter(voices),
                           [](const SoundRow& row) { return *row.voice; });
    return VoiceTableText(voices);
}

bool VoicePicker::ToggleFavourite() {
    const bool stored = memory_.ToggleFavourite(selected_);
    lists_.UpdateFavourites();
    return stored;
}

void VoicePicker::Btn_OldVoiceClick() {
    EndNote();
    hearsOld_ = true;
    host_.TryVoice(task_.channel, inForce_);
    isTrying_ = true;
}

void VoicePicker::Btn_NewVoiceClick() {
    EndNote();
    hearsOld_ = false;
    host_.TryVoice(task_.channel, selected_.numbers);
    isTrying_ = true;
}

void VoicePicker::CB_SoloClick(bool on) {
    isSolo_ = on;
    host_.SetSolo(task_.channel, on);
}

void VoicePicker::SoundTestNote() {
    EndNote();
    noteStep_ = NoteStep::Begin;
}

void VoicePicker::PlayANoteTimerTimer() {
    if (noteStep_ == NoteStep::Begin) {
        sounding_ = testNote_;
        host_.PlayNote(task_.channel, sounding_, true);
        noteStep_ = NoteStep::End;
    } else {
        EndNote();
    }
}

int VoicePicker::NextNoteMs() const {
    switch (noteStep_) {
        case NoteStep::Begin:
            return kBeforeNoteMs;
        case NoteStep::End:
            return kNoteMs;
        default:
            return 0;
    }
}

void VoicePicker::EndNote() {
    if (noteStep_ == NoteStep::End) {
        host_.PlayNote(task_.channel, sounding_, false);
    }
    noteStep_ = NoteStep::None;
}

void VoicePicker::ChooseChanges(std::span<const std::size_t> changes) {
    std::vector<std::size_t> chosen;
    std::ranges::copy_if(changes, std::back_inserter(chosen),
                         [this](std::size_t index) { return index < task_.changes.size(); });
    if (!chosen.empty()) {
        chosen_ = std::move(chosen);
        inForce_ = task_.changes[std::ranges::min(chosen_)].state.Numbers();
    }
}

void VoicePicker::Leave() {
    EndNote();
    if (isSolo_) {
        CB_SoloClick(false);
    }
    if (isTrying_) {
        host_.EndTrying(task_.channel);
        isTrying_ = false;
    }
}

bool VoicePicker::Btn_SaveToRevoicerClick(Language language) {
    return host_.SaveToRevoicer(
        {inForce_, OldVoice(language).name, selected_.numbers, NewVoice(language).name});
}

void VoicePicker::Btn_OKClick() {
    EndNote();
    voiceChanged_ = selected_.numbers != inForce_;
    memory_.AddLastUsed(selected_);
    host_.WriteVoice(task_.channel, chosen_, selected_.numbers);
    Leave();
}

void VoicePicker::Btn_CancelClick() {
    if (isTrying_ && !hearsOld_) {
        Btn_OldVoiceClick();
    }
    Leave();
}

void VoicePicker::UpdateMSB_LSB_PC(PatchState& state) const {
    state.bankMsb = selected_.numbers.msb;
    state.bankLsb = selected_.numbers.lsb;
    state.program = selected_.numbers.program;
}

NamedVoice VoicePicker::OldVoice(Language language) const {
    return NameVoice(tables_, {task_.instrument, task_.drums, inForce_}, task_.options, language);
}

NamedVoice VoicePicker::NewVoice(Language language) const {
    return NameVoice(tables_, {task_.instrument, selected_.isKit, selected_.numbers}, task_.options,
                     language);
}

std::vector<std::size_t> VoicePicker::ChannelsWith(const Voice& voice) const {
    std::vector<std::size_t> channels;
    for (const auto& [channel, key] : task_.inSong) {
        if (key == KeyOf(voice)) {
            channels.push_back(channel);
        }
    }
    return channels;
}

} // namespace tracksmith::instruments
