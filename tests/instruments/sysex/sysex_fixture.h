#pragma once

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/song_assert.h"

#include "instruments/sysex/check_sysexs.h"
#include "song/midi_file_writer.h"

namespace tracksmith::test {

using instruments::SysexOptions;
using instruments::SysexSession;

/// Bytes of "F0 7E 7F 09 01 F7" or of the same without blanks.
inline Bytes FromHex(std::string text) {
    std::erase(text, ' ');
    Bytes bytes;
    for (std::size_t i = 0; i + 1 < text.size(); i += 2) {
        bytes.push_back(static_cast<std::uint8_t>(std::stoi(text.substr(i, 2), nullptr, 16)));
    }
    return bytes;
}

/// A message of a song that is to be built, given with its F0.
struct Message {
    std::uint64_t tick = 0;
    std::string hex;
};

/// A track with a note at tick 0, these messages and a note behind them.
inline TrackBuilder TrackOf(int channel, const std::vector<Message>& messages) {
    TrackBuilder track;
    track.Note(0, channel, 60, 100);
    std::uint64_t tick = 0;
    for (const Message& message : messages) {
        const Bytes bytes = FromHex(message.hex);
        track.Sysex(message.tick - tick, Bytes(bytes.begin() + 1, bytes.end()));
        tick = message.tick;
    }
    return track.NoteOff(5000, channel, 60).End();
}

/// A format 1 song of a conductor track and 15 others of the channels 1 to 15; `messages` are put
/// into track `track`.
inline Bytes Sixteen(const std::vector<Message>& messages, int track = 3) {
    MidiFileBuilder file;
    file.Track(TrackBuilder()
                   .Tempo(0, 400'000)
                   .TimeSignature(0, 4, 2)
                   .Tempo(40, 700'000)
                   .TimeSignature(7, 3, 2)
                   .End());
    for (int i = 1; i < 16; ++i) {
        file.Track(TrackOf(i - 1, i == track ? messages : std::vector<Message>()));
    }
    return file.Build();
}

/// "track@tick bytes" of each system-exclusive event that counts, F0 left out; with `removed` also
/// those of length 0, marked by a minus.
inline std::vector<std::string> Messages(const song::Song& song, bool removed = false) {
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < song.tracks.size(); ++i) {
        for (song::ConstEventLink event = song.tracks[i].first; event; event = event->next) {
            if (event->status == song::kSystemExclusive && (removed || event->length > 0)) {
                texts.push_back((event->length > 0 ? "" : "-") + std::to_string(i) + "@" +
                                std::to_string(event->tick) + " " + Hex(event->data.Bytes()));
            }
        }
    }
    return texts;
}

/// Everything of a song but its system-exclusive events, clock times included.
inline std::string WithoutSysex(const song::Song& song) {
    std::string text;
    for (const song::Track& track : song.tracks) {
        for (song::ConstEventLink event = track.first; event; event = event->next) {
            if (event->status != song::kSystemExclusive) {
                text += EventText(*event) + "/" + std::to_string(event->timeMs) + "; ";
            }
        }
        text += "| ";
    }
    return text;
}

/// A song, a session and the checks that hold after every operation.
class Prepared : public DecodedSong {
public:
    explicit Prepared(const Bytes& file, const SysexOptions& options = {},
                      const song::DecodeOptions& decode = {})
        : DecodedSong(file, decode), session(options, host), others_(WithoutSysex(song)) {}

    /// Runs one operation.
    Prepared& Run(void (*operation)(song::Song&, SysexSession&)) {
        operation(song, session);
        return Sound();
    }
    Prepared& Check(int instrument) {
        instruments::CheckSysexs(song, static_cast<instruments::InstrumentId>(instrument), session);
        return Sound();
    }
    std::vector<std::string> List(bool removed = false) const { return Messages(song, removed); }

private:
    Prepared& Sound() {
        EXPECT_EQ(song::CheckSong(song), "");
        EXPECT_EQ(WithoutSysex(song), others_);
        return *this;
    }

public:
    SysexSession session;

private:
    std::string others_;
};

/// The saved bytes of a song.
inline Bytes Save(const song::Song& song) {
    RecordingMessageHost host;
    return song::EncodeFormat1(song, {}, host);
}

} // namespace tracksmith::test
