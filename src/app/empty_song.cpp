#include "app/empty_song.h"

#include <array>
#include <string>
#include <string_view>

#include "app/texts.h"
#include "song/midi_event.h"

namespace tracksmith::app {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint8_t kChannels = 16;
constexpr std::array<std::uint8_t, 10> kHeader{0,        0,         0, 6, 0, 1, 0, 1 + kChannels,
                                               480 >> 8, 480 & 0xFF};
// Delta time, meta event, type, length, bytes: 500,000 microseconds a quarter note; 4/4.
constexpr std::array<std::uint8_t, 7> kTempo{0, 0xFF, song::kMetaTempo, 3, 0x07, 0xA1, 0x20};
constexpr std::array<std::uint8_t, 8> kTimeSignature{0,  0xFF, song::kMetaTimeSignature, 4, 4, 2,
                                                     24, 8};
constexpr std::array<std::uint8_t, 4> kEnd{0, 0xFF, song::kMetaEndOfTrack, 0};
// Half a beat behind the start, so that resets before it have been carried out.
constexpr std::array<std::uint8_t, 2> kVoiceDelta{0x81, 0x70};

// What a channel begins with; the program follows the bank.
constexpr auto kStartControllers =
    std::to_array({song::kBankMsb, song::kBankLsb, song::kVolume, song::kPan, song::kExpression,
                   song::kReverbSend, song::kChorusSend});

void Append(Bytes& bytes, std::span<const std::uint8_t> more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

void AppendText(Bytes& bytes, std::string_view text) {
    bytes.insert(bytes.end(), text.begin(), text.end());
}

void AppendTrack(Bytes& file, const Bytes& events) {
    AppendText(file, "MTrk");
    const std::size_t size = events.size() + kEnd.size();
    for (int shift = 24; shift >= 0; shift -= 8) {
        file.push_back(static_cast<std::uint8_t>(size >> shift));
    }
    Append(file, events);
    Append(file, kEnd);
}

void AppendName(Bytes& events, std::string_view name) {
    Append(events, std::array<std::uint8_t, 4>{0, 0xFF, song::kMetaTrackName,
                                               static_cast<std::uint8_t>(name.size())});
    AppendText(events, name);
}

Bytes ChannelTrack(std::uint8_t channel, Language language) {
    Bytes events;
    AppendName(events, texts::ChannelName(language, channel + 1));
    Append(events, kVoiceDelta);
    for (const std::uint8_t controller : kStartControllers) {
        events.insert(events.end(), {static_cast<std::uint8_t>(song::kControlChange | channel),
                                     controller, song::NeutralController(controller), 0});
        if (controller == song::kBankLsb) {
            events.insert(events.end(),
                          {static_cast<std::uint8_t>(song::kProgramChange | channel), 0, 0});
        }
    }
    events.pop_back(); // the delta time of the event that does not follow
    return events;
}

} // namespace

Bytes EmptySongBytes(Language language) {
    Bytes file;
    AppendText(file, "MThd");
    Append(file, kHeader);
    Bytes conductor;
    AppendName(conductor, texts::kNewSong.In(language));
    Append(conductor, kTempo);
    Append(conductor, kTimeSignature);
    AppendTrack(file, conductor);
    for (std::uint8_t channel = 0; channel < kChannels; ++channel) {
        AppendTrack(file, ChannelTrack(channel, language));
    }
    return file;
}

} // namespace tracksmith::app
