#pragma once

#include <cstdint>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

#include "base/errors.h"
#include "base/recording_message_host.h"
#include "support/midi_file_builder.h"

#include "song/check_song.h"
#include "song/event_chain.h"
#include "song/midi_file_reader.h"
#include "song/time_map.h"

namespace tracksmith::test {

inline std::string Hex(std::span<const std::uint8_t> bytes) {
    constexpr const char* kDigits = "0123456789ABCDEF";
    std::string text;
    for (const std::uint8_t byte : bytes) {
        text += {kDigits[byte >> 4], kDigits[byte & 15]};
    }
    return text;
}

/// "tick bytes" of an event as it would be sent, for example "480 903C40" or "0 FF51 07A120".
inline std::string EventText(const song::MidiEvent& event) {
    std::string text = std::to_string(event.tick) + " ";
    if (event.kind == song::kShortMessage) {
        const std::uint8_t bytes[] = {event.status, event.data1, event.data2};
        return text + Hex(std::span(bytes).first(static_cast<std::size_t>(event.length)));
    }
    const std::uint8_t start[] = {event.status, event.metaType};
    text += Hex(std::span(start).first(event.status == song::kMeta ? 2 : 1));
    return event.Payload().empty() ? text : text + " " + Hex(event.Payload());
}

/// The events of a track between its head and its End of Track, joined by "; ".
inline std::string Listing(const song::Track& track) {
    std::string text;
    for (song::ConstEventLink event = track.first->next; event != track.last; event = event->next) {
        text += (text.empty() ? "" : "; ") + EventText(*event);
    }
    return text;
}

/// A song decoded from bytes, with what the decoder said. Checks the invariants.
class DecodedSong {
public:
    explicit DecodedSong(const Bytes& file, const song::DecodeOptions& options = {}) {
        result = song::DecodeMidiData(song, file, options, host);
        EXPECT_EQ(song::CheckSong(song), "");
        EXPECT_TRUE(host.messages.empty());
    }
    /// Builds the time map as after an edit.
    DecodedSong& Timed() {
        song::UpdateTimeZoneData(song);
        EXPECT_EQ(song::CheckSong(song), "");
        return *this;
    }
    std::string List(std::size_t track) const { return Listing(song.tracks.at(track)); }

    song::Song song;
    song::DecodeResult result;
    RecordingMessageHost host;
};

/// The error with which decoding ends; fails the test when there is none or when it was not shown.
inline std::string DecodeError(const Bytes& file, Language language,
                               const song::DecodeOptions& options = {}) {
    song::Song song;
    RecordingMessageHost host(language);
    try {
        song::DecodeMidiData(song, file, options, host);
    } catch (const EMidiError& error) {
        EXPECT_EQ(host.messages, std::vector<std::string>{error.what()});
        return error.what();
    }
    ADD_FAILURE() << "decoded without an error";
    return {};
}

/// Repeatable random numbers.
class Dice {
public:
    explicit Dice(unsigned seed) : engine_(seed) {}
    /// A number from 0 to `sides` - 1.
    int Roll(int sides) { return static_cast<int>(engine_() % static_cast<unsigned>(sides)); }

private:
    std::minstd_rand engine_;
};

/// A valid file of one conductor track and `tracks` others, full of everything. Tempo and time
/// signature events stand in the first track, and also in the others when `scattered`.
inline Bytes RandomFile(unsigned seed, int format, bool scattered = false) {
    Dice dice(seed);
    const int divisions[] = {480, 96, 120, 384, 1000, 1};
    MidiFileBuilder file(format, divisions[dice.Roll(6)]);
    const int tracks = format == 0 ? 1 : 2 + dice.Roll(4);
    for (int index = 0; index < tracks; ++index) {
        TrackBuilder track;
        for (int i = dice.Roll(80); i >= 0; --i) {
            const auto delta = static_cast<std::uint64_t>(dice.Roll(3) * dice.Roll(700));
            const bool conductor = index == 0 || scattered;
            switch (dice.Roll(9)) {
                case 0:
                    conductor ? track.Tempo(delta, static_cast<std::uint32_t>(dice.Roll(1 << 24)))
                              : track.Program(delta, dice.Roll(16), dice.Roll(128));
                    break;
                case 1:
                    conductor ? track.TimeSignature(delta, 1 + dice.Roll(12), dice.Roll(5))
                              : track.Text(delta, 0x05, "la");
                    break;
                case 2:
                    track.Sysex(delta, {0x7E, 0x7F, 0x09, 0x01, 0xF7});
                    break;
                case 3:
                    track.Short(delta, 0xB0 | dice.Roll(16), dice.Roll(128), dice.Roll(128));
                    break;
                default:
                    track.Note(delta, dice.Roll(16), dice.Roll(128), dice.Roll(128));
            }
        }
        file.Track(track.End(static_cast<std::uint64_t>(dice.Roll(900))));
    }
    return file.Build();
}

} // namespace tracksmith::test
