#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "instruments/picker/patch_state.h"
#include "instruments/picker/picker_host.h"
#include "instruments/picker/picker_lists.h"
#include "instruments/picker/voice_memory.h"
#include "instruments/voices/voice_lookup.h"

namespace tracksmith::instruments {

/// What a picker serves.
struct PickerTask {
    InstrumentId instrument = kGmSoundset;
    LookupOptions options;
    /// 0-15.
    std::size_t channel = 0;
    /// The channel plays a drum kit.
    bool drums = false;
    /// The voice in force, for a channel without any place below.
    VoiceNumbers inForce;
    /// The places where the song selects the channel's voice.
    std::vector<VoiceChange> changes;
    /// What all channels of the song play, to mark it in the list.
    std::vector<std::pair<std::size_t, VoiceKey>> inSong;
};

/// The logic of the window in which a voice is picked for a channel. It knows no widgets: the
/// window calls the operation of a control, and shows the lists and voices as they are then. Until
/// a voice is accepted the song stays as it is; what is tried is only heard, through the host. One
/// thread.
class VoicePicker {
public:
    /// All must outlive the picker. The family of kits is shown for drums, else the family and
    /// category of the voice in force.
    VoicePicker(const VoiceTables& tables, PickerTask task, VoiceMemory& memory, PickerHost& host);

    const PickerLists& Lists() const { return lists_; }
    const PickerTask& Task() const { return task_; }

    // Families and categories. The named ones choose a category, by its row, of their family.
    void LB_FamiliesClick(std::size_t row) { lists_.ChooseFamily(row); }
    void LB_CategoriesClick(std::size_t row) { lists_.ChooseCategory(row); }
    void LB_PanelCategoriesClick(std::size_t row) { ChooseCategory("Panel", row); }
    void LB_LegacyCategoriesClick(std::size_t row) { ChooseCategory("Legacy", row); }
    void LB_XGCategoriesClick(std::size_t row) { ChooseCategory("XG", row); }
    void LB_GM2CategoriesClick(std::size_t row) { ChooseCategory("GM2", row); }
    void LB_CustomCategoriesClick(std::size_t row) { ChooseCategory(kCustomFamily, row); }

    /// Selects the voice or kit in this row of the voices shown and sounds it; rows that do not
    /// exist are passed over. One list shows the voices of every family, so all mean the same.
    void LB_SoundsClick(std::size_t row);
    void LB_PanelSoundsClick(std::size_t row) { LB_SoundsClick(row); }
    void LB_LegacySoundsClick(std::size_t row) { LB_SoundsClick(row); }
    void LB_XGSoundsClick(std::size_t row) { LB_SoundsClick(row); }
    void LB_GM2SoundsClick(std::size_t row) { LB_SoundsClick(row); }
    void LB_CustomSoundsClick(std::size_t row) { LB_SoundsClick(row); }
    void LB_DrumsClick(std::size_t row) { LB_SoundsClick(row); }

    /// Finds by what has been typed so far.
    void E_SelectSoundNameChangeTracking(std::string_view text) { lists_.Search(text); }
    /// Selects the next voice found behind the selected one, from the top behind the last.
    void Btn_SearchClick();
    /// Sorts the voices, in the other direction when they are sorted so already.
    void PM_SortSoundsClick(SoundOrder order) { lists_.Sort(order); }
    /// The voices shown as the text of a voice table.
    std::string PM_SaveVoicesClick() const;
    /// Makes the selected voice a favourite or takes that back; false when it cannot be stored.
    bool ToggleFavourite();

    /// The voice that was in force is heard again, and the selected one.
    void Btn_OldVoiceClick();
    void Btn_NewVoiceClick();
    bool HearsOldVoice() const { return hearsOld_; }
    /// One of the two is heard in place of what the song says.
    bool IsTrying() const { return isTrying_; }
    /// Lets the channel sound alone.
    void CB_SoloClick(bool on);

    /// The note that sounds when a voice is selected, and whether it does.
    void SetTestNote(std::uint8_t note) { testNote_ = note; }
    std::uint8_t TestNote() const { return testNote_; }
    /// The test note sounds once, see PlayANoteTimerTimer.
    void SoundTestNote();
    void SetNoteOnSelection(bool on) { noteOnSelection_ = on; }
    /// The next step of the test note: it begins, it ends.
    void PlayANoteTimerTimer();
    /// Milliseconds to the next PlayANoteTimerTimer; 0 while none is wanted.
    int NextNoteMs() const;

    /// Chooses the places where the voice is changed, by their indices in the task; the voice in
    /// force is that of the first of them. Places that do not exist are passed over; without any
    /// the choice stays. The first place is chosen at the beginning.
    void ChooseChanges(std::span<const std::size_t> changes);
    std::span<const std::size_t> ChosenChanges() const { return chosen_; }

    /// Stores the selected voice as the replacement of the one in force; false when that failed.
    bool Btn_SaveToRevoicerClick(Language language);
    /// Writes the selected voice into the song and remembers it as used.
    void Btn_OKClick();
    /// Leaves the song unchanged; the voice in force is heard again.
    void Btn_CancelClick();
    /// Writes the selected numbers into the channel's state.
    void UpdateMSB_LSB_PC(PatchState& state) const;

    /// The voice that was accepted differs from the one in force when the picker opened.
    bool VoiceChanged() const { return voiceChanged_; }
    VoiceNumbers InForce() const { return inForce_; }
    VoiceNumbers Selected() const { return selected_.numbers; }
    bool SelectedIsKit() const { return selected_.isKit; }
    NamedVoice OldVoice(Language language) const;
    NamedVoice NewVoice(Language language) const;
    /// Channels (0-15) of the song that play this voice.
    std::vector<std::size_t> ChannelsWith(const Voice& voice) const;

    /// Family of the user's own voices.
    static constexpr std::string_view kCustomFamily = "Custom";

private:
    enum class NoteStep : std::uint8_t { None, Begin, End };

    void ChooseCategory(std::string_view family, std::size_t row);
    void Select(const VoiceKey& key);
    void EndNote();
    void Leave();

    const VoiceTables& tables_;
    PickerTask task_;
    VoiceMemory& memory_;
    PickerHost& host_;
    PickerLists lists_;
    VoiceNumbers inForce_;
    VoiceKey selected_;
    std::vector<std::size_t> chosen_;
    bool hearsOld_ = false;
    bool isTrying_ = false;
    bool isSolo_ = false;
    bool voiceChanged_ = false;
    bool noteOnSelection_ = true;
    std::uint8_t testNote_ = kMiddleC;
    NoteStep noteStep_ = NoteStep::None;
    std::uint8_t sounding_ = kMiddleC;

    static constexpr std::uint8_t kMiddleC = 60;
};

} // namespace tracksmith::instruments
