#include "song/lead_in.h"

#include <gtest/gtest.h>

#include "support/song_assert.h"

namespace tracksmith::test {
namespace {

TEST(LeadIn, MovesTheMusicAndLeavesWhatTheSongBeginsWith) {
    DecodedSong decoded(
        MidiFileBuilder()
            .Track(TrackBuilder()
                       .TimeSignature(0, 6, 3)
                       .Tempo(0, 400'000)
                       .Text(0, 3, "Waltz")
                       .Text(0, 5, "la")
                       .Sysex(0, {0x7E, 0x7F, 0x09, 0x01, 0xF7})
                       .TimeSignature(1440, 3, 2)
                       .End())
            .Track(TrackBuilder().Note(0, 0, 60, 90).Program(0, 1, 30).NoteOff(480, 0, 60).End())
            .Track(TrackBuilder().Program(0, 0, 24).Program(0, 2, 7).Program(1, 3, 9).End())
            .Build());
    decoded.Timed();
    const std::int32_t length = decoded.song.songLength;
    const std::int32_t events = decoded.song.tracks[0].eventCount;
    ASSERT_TRUE(song::InsertLeadInMeasure(decoded.song));
    EXPECT_EQ(song::CheckSong(decoded.song), "");
    EXPECT_EQ(decoded.song.songLength, length + 1440);
    EXPECT_EQ(decoded.song.tracks[0].eventCount, events);
    std::vector<std::string> ticks;
    for (const song::Track& track : decoded.song.tracks) {
        std::string text;
        for (song::ConstEventLink event = track.first->next; event->next; event = event->next) {
            text += (text.empty() ? "" : " ") + std::to_string(event->tick);
        }
        ticks.push_back(text);
    }
    // The lyric goes behind the message; the program behind the first note of its channel goes
    // along.
    EXPECT_EQ(ticks, (std::vector<std::string>{"0 0 0 0 1440 2880", "0 1440 1920", "0 1440 1441"}));
    EXPECT_EQ(decoded.song.tracks[1].last->prev->timeMs, 1200 + 400);
}

TEST(LeadIn, RefusesASongThatWouldBecomeTooLong) {
    DecodedSong decoded(
        MidiFileBuilder(0, 32'767)
            .Track(TrackBuilder().TimeSignature(0, 255, 0).Note(0x7FFE'0000, 0, 60, 90).End())
            .Build());
    decoded.Timed();
    const std::string before = decoded.List(0);
    EXPECT_FALSE(song::InsertLeadInMeasure(decoded.song));
    EXPECT_EQ(decoded.List(0), before);
}

} // namespace
} // namespace tracksmith::test
