#pragma once

#include <algorithm>
#include <initializer_list>
#include <string>
#include <vector>

#include "app/session/session_fixture.h"
#include "mixer/mixer.h"

namespace tracksmith::test {

/// A session whose song is heard on one recording device, and its mixer. One tick is a millisecond.
class MixerFixture : public SessionFixture {
protected:
    using Messages = std::vector<Bytes>;

    static Bytes FileOf(std::initializer_list<TrackBuilder> tracks) {
        MidiFileBuilder file(1, 500);
        file.Track(TrackBuilder().Tempo(0, 500'000).End());
        for (const TrackBuilder& track : tracks) {
            file.Track(track);
        }
        return file.Build();
    }
    /// Lets time pass; what the device has got meanwhile.
    Messages Run(std::int64_t ms) {
        clock->RunUntil(clock->ElapsedUs() + ms * 1000);
        return TakeAll();
    }
    Messages TakeAll() {
        AwaitSending();
        system::DispatchMessages();
        Messages messages;
        for (Received& message : driver.Take()) {
            messages.push_back(std::move(message.bytes));
        }
        return messages;
    }
    static bool Has(const Messages& messages, const Bytes& wanted) {
        return std::ranges::find(messages, wanted) != messages.end();
    }
    void Seek(std::int32_t tick) { session.Controls().MoveToTick(tick); }
    void Play() {
        EXPECT_TRUE(session.Controls().Play());
        Run(1);
    }
    void Stop() {
        EXPECT_TRUE(session.Controls().Stop());
        TakeAll();
    }
    /// The events of a track in memory.
    std::string Track(std::size_t track) const { return Listing(session.Song().tracks[track]); }

    mixer::Mixer mixer{session, [this] { return clock->ElapsedUs(); }};
};

} // namespace tracksmith::test
