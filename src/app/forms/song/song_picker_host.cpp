#include "app/forms/song/song_picker_host.h"

#include "app/forms/texts.h"
#include "app/session/change_kind.h"
#include "instruments/picker/write_voice.h"
#include "song/midi_numbers.h"

namespace tracksmith::forms {
namespace {

constexpr std::uint8_t kTestVelocity = 100;

} // namespace

bool TryVoice(session::Session& session, std::size_t channel,
              const std::optional<instruments::VoiceNumbers>& numbers) {
    player::TMidiPlayer& player = session.Controls().Player();
    const std::size_t port = player.Routes().Port(channel);
    if (numbers && !player.Playing() && port < player.OutputPortCount()) {
        static_cast<void>(player.OpenPort(port)); // tells why not itself
    }
    return numbers ? player.TryVoice(
                         channel, player::TrialVoice{numbers->msb, numbers->lsb, numbers->program})
                   : player.TryVoice(channel, std::nullopt);
}

void SongPickerHost::TryVoice(std::size_t channel, instruments::VoiceNumbers numbers) {
    if (!forms::TryVoice(session_, channel, numbers)) {
        window_.tell(texts::kPortBusy);
    }
}

void SongPickerHost::EndTrying(std::size_t channel) {
    if (!forms::TryVoice(session_, channel, std::nullopt)) {
        window_.tell(texts::kPortBusy);
    }
}

void SongPickerHost::PlayNote(std::size_t channel, std::uint8_t note, bool on) {
    player::TMidiPlayer& player = session_.Controls().Player();
    const std::uint8_t velocity = on ? kTestVelocity : std::uint8_t{0};
    if (!player.SendChannel(channel, on ? song::kNoteOn : song::kNoteOff, note, velocity) && on) {
        window_.tell(texts::kPortBusy);
    }
}

void SongPickerHost::WriteVoice(std::size_t channel, std::span<const std::size_t> changes,
                                instruments::VoiceNumbers numbers) {
    window_.run([&] {
        session_.Change(session::kChangeVoice, messages_, [&](session::Workspace& workspace) {
            instruments::WriteVoice(workspace.song, channel, changes, numbers, start_);
            return true;
        });
    });
}

} // namespace tracksmith::forms
