#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>

#include "base/message_host.h"

#include "app/session/session.h"
#include "instruments/picker/patch_state.h"
#include "instruments/picker/picker_host.h"

namespace tracksmith::forms {

/// Lets a channel (0-15) sound with a voice, or as the song says again; opens the port that it goes
/// to, which may not be open yet while nothing plays. False: not now.
[[nodiscard]] bool TryVoice(session::Session& session, std::size_t channel,
                            const std::optional<instruments::VoiceNumbers>& numbers);

/// What a picker does to the song and lets be heard: trying goes to the player, writing through a
/// change of the session. User-interface thread.
class SongPickerHost : public instruments::PickerHost {
public:
    /// What the picker's host asks of the window.
    struct Window {
        /// Runs a change of the song, whose failure has been told when it returns.
        std::function<void(const std::function<void()>&)> run;
        /// Says that something cannot be heard now.
        std::function<void(const Text&)> tell;
        /// Solo as the lamp of the channel's strip has it.
        std::function<void(std::size_t, bool)> setSolo;
        /// Stores a replacement in the auto revoicer's table.
        std::function<bool(const instruments::VoiceReplacement&)> saveToRevoicer;
    };

    /// `session` and `messages` must outlive the host. `start` are the banks before any bank select
    /// of the song.
    SongPickerHost(session::Session& session, MessageHost& messages,
                   const instruments::StartBanks& start, Window window)
        : session_(session), messages_(messages), start_(start), window_(std::move(window)) {}

    void TryVoice(std::size_t channel, instruments::VoiceNumbers numbers) override;
    void EndTrying(std::size_t channel) override;
    void PlayNote(std::size_t channel, std::uint8_t note, bool on) override;
    void SetSolo(std::size_t channel, bool on) override { window_.setSolo(channel, on); }
    bool SaveToRevoicer(const instruments::VoiceReplacement& replacement) override {
        return window_.saveToRevoicer(replacement);
    }
    void WriteVoice(std::size_t channel, std::span<const std::size_t> changes,
                    instruments::VoiceNumbers numbers) override;

private:
    session::Session& session_;
    MessageHost& messages_;
    instruments::StartBanks start_;
    Window window_;
};

} // namespace tracksmith::forms
