#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "support/song_assert.h"

namespace tracksmith::test {

/// Notes and settings of few channels on several tracks, tempos and metres; measures of about 400
/// ticks.
inline Bytes RandomMusic(Dice& dice) {
    MidiFileBuilder file(1, 100);
    TrackBuilder conductor;
    for (int i = dice.Roll(6); i >= 0; --i) {
        const auto delta = static_cast<std::uint64_t>(dice.Roll(500));
        dice.Roll(2) == 0
            ? conductor.Tempo(delta, static_cast<std::uint32_t>(300'000 + dice.Roll(9) * 50'000))
            : conductor.TimeSignature(delta, 2 + dice.Roll(4), 2);
    }
    file.Track(conductor.End());
    for (int tracks = 1 + dice.Roll(4); tracks > 0; --tracks) {
        TrackBuilder track;
        std::array<int, 8> open{};
        for (int i = 60 + dice.Roll(60); i > 0; --i) {
            const auto delta = static_cast<std::uint64_t>(dice.Roll(2) * dice.Roll(70));
            constexpr std::array<int, 6> kControllers{1, 7, 10, 11, 64, 91};
            const int channel = dice.Roll(2) == 0 ? 9 : dice.Roll(2);
            const int pitch = dice.Roll(4);
            int& count = open.at(static_cast<std::size_t>(pitch + (channel == 1 ? 4 : 0)));
            switch (dice.Roll(14)) {
                case 0:
                    track.Program(delta, channel, dice.Roll(128));
                    break;
                case 1:
                    track.Short(delta, 0xB0 | channel, dice.Roll(2) * 32, dice.Roll(100));
                    break;
                case 2:
                    track.Short(delta, 0xE0 | channel, dice.Roll(128), dice.Roll(128));
                    break;
                case 3:
                    track.Short(delta, 0xB0 | channel, 101, 0)
                        .Short(0, 0xB0 | channel, 100, dice.Roll(3))
                        .Short(0, 0xB0 | channel, 6, dice.Roll(24))
                        .Short(0, 0xB0 | channel, dice.Roll(2) == 0 ? 96 : 1, 0);
                    break;
                case 4:
                    track.Short(delta, 0xB0 | channel, dice.Roll(8) == 0 ? 121 : 101,
                                channel == 9 ? 0 : 127);
                    break;
                case 5:
                case 6:
                    track.Short(delta, 0xB0 | channel,
                                kControllers.at(static_cast<std::size_t>(dice.Roll(6))),
                                dice.Roll(128));
                    break;
                case 7:
                    track.Short(delta, 0xA0 | channel, 60 + pitch, dice.Roll(128));
                    break;
                case 8:
                    track.Short(delta, 0xB0 | channel, dice.Roll(2) == 0 ? 96 : 126 + dice.Roll(2),
                                0);
                    break;
                default:
                    if (channel != 9 && count > dice.Roll(3)) {
                        --count;
                        track.NoteOff(delta, channel, 60 + pitch);
                    } else {
                        count += channel != 9 ? 1 : 0;
                        track.Note(delta, channel, 60 + pitch, 1 + dice.Roll(127));
                        if (channel == 9) {
                            track.NoteOff(1, 9, 60 + pitch);
                        }
                    }
            }
        }
        file.Track(track.End());
    }
    return file.Build();
}

} // namespace tracksmith::test
