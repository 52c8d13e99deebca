#include <map>
#include <random>
#include <sstream>

#include "player_fixture.h"
#include "support/instrument_model.h"

namespace tracksmith::test {
namespace {

constexpr int kSongMs = 4000;
constexpr unsigned kTracks = 6;

std::string Describe(const ChannelState& state) {
    std::ostringstream text;
    text << "program " << +state.bankMsb << '/' << +state.bankLsb << '/' << +state.program
         << " bend " << state.bend << " pressure " << +state.pressure;
    for (std::size_t number = 0; number < state.controllers.size(); ++number) {
        text << (state.controllers[number] != 0 ? " c" + std::to_string(number) + "=" +
                                                      std::to_string(state.controllers[number])
                                                : "");
    }
    for (const auto& [number, value] : state.parameters) {
        text << " rpn" << +std::get<2>(number) << '=' << value;
    }
    return text.str();
}

void Give(InstrumentModel& model, const Bytes& message) {
    if (message[0] == 0xF0) {
        model.Sysex(std::span(message).subspan(1));
    } else {
        model.Short(message[0], message[1], message.size() > 2 ? message[2] : std::uint8_t{0});
    }
}

/// Two instruments that listen to a player which is told to do this and that at random. Every note
/// must begin in the state that it has when the song is played through.
class StateTest : public PlayerFixture, public ::testing::WithParamInterface<unsigned> {
protected:
    // Each channel is played by one track, and no two notes of a channel are alike.
    using Note = std::tuple<int, int, int>; // channel, key, velocity

    int Pick(int below) { return std::uniform_int_distribution<int>(0, below - 1)(random_); }

    MidiFileBuilder MakeSong(bool resetInTheMiddle) {
        MidiFileBuilder file = MillisecondFile();
        const Bytes gmOn{0x7E, 0x7F, 0x09, 0x01, 0xF7};
        TrackBuilder first;
        first.Sysex(0, gmOn).Sysex(30, {0x43, 0xF7});
        file.Track(resetInTheMiddle ? first.Sysex(kSongMs / 2, gmOn).End(2000)
                                    : first.End(kSongMs));
        for (unsigned track = 0; track < kTracks; ++track) {
            TrackBuilder events;
            for (int ms = 35, count = 0; ms < kSongMs; ++count) {
                const int delta = count == 0 ? 35 : Pick(3) == 0 ? Pick(40) : 0;
                ms += delta;
                AddEvent(events, static_cast<std::uint32_t>(delta), static_cast<int>(track), count);
            }
            file.Track(events.End(10));
        }
        return file;
    }

    void AddEvent(TrackBuilder& events, std::uint32_t delta, int channel, int count) {
        constexpr std::array<std::uint8_t, 14> kControls{0,  1,  7,  10,  11,  32, 64,
                                                         74, 91, 93, 100, 101, 6,  121};
        const auto status = [&](int command) {
            return static_cast<std::uint8_t>(command | channel);
        };
        const auto value = static_cast<std::uint8_t>(Pick(128));
        const int kind = Pick(10);
        if (kind < 3) {
            events.Short(delta, status(0x90), static_cast<std::uint8_t>(count % 128),
                         static_cast<std::uint8_t>(1 + count / 128));
        } else if (kind < 4) {
            events.Raw(delta, {status(0xC0), value});
        } else if (kind < 5) {
            events.Short(delta, status(0xE0), value, value);
        } else if (kind < 6 && value < 20) {
            events.Raw(delta, {status(0xD0), value});
        } else {
            const std::uint8_t control = kControls.at(static_cast<std::size_t>(Pick(14)));
            const auto parameter = static_cast<std::uint8_t>(control == 101 ? 0 : value % 3);
            events.Short(delta, status(0xB0), control, control >= 100 ? parameter : value);
        }
    }

    // Played through on one instrument.
    void FindExpected() {
        std::vector<std::tuple<std::int64_t, std::size_t, song::ConstEventLink>> events;
        for (std::size_t track = 0; track < decoded->song.tracks.size(); ++track) {
            for (song::ConstEventLink event = decoded->song.tracks[track].first; event;
                 event = event->next) {
                events.emplace_back(event->timeMs, track, event);
            }
        }
        std::ranges::stable_sort(events, {}, [](const auto& event) {
            return std::pair(std::get<0>(event), std::get<1>(event));
        });
        InstrumentModel model(DrumRule::ByReset);
        for (const auto& [ms, track, event] : events) {
            if (event->IsNoteOn()) {
                expected_[{event->Channel(), event->data1, event->data2}] =
                    Describe(model.Channel(event->Channel()));
            } else if (event->IsChannelMessage()) {
                model.Short(event->status, event->data1, event->data2);
            } else if (event->status == song::kSystemExclusive) {
                model.Sysex(event->Payload());
            }
        }
    }

    void Listen() {
        Collect();
        for (const Received& message : std::exchange(log, {})) {
            InstrumentModel& model =
                models_.try_emplace(message.device, DrumRule::ByReset).first->second;
            if ((message.bytes[0] & 0xF0) == 0x90) {
                const int target = message.bytes[0] & 0x0F;
                const Note note{SourceOf(message.device, target), message.bytes[1],
                                message.bytes[2]};
                EXPECT_EQ(Describe(model.Channel(static_cast<std::size_t>(target))),
                          expected_.at(note))
                    << what_ << ", channel " << std::get<0>(note);
                ++heard_;
            } else {
                Give(model, message.bytes);
            }
        }
    }
    int SourceOf(const std::string& device, int target) {
        const std::size_t port = device == "Keyboard" ? 0 : 1;
        for (int channel = 0; channel < 16; ++channel) {
            const auto source = static_cast<std::size_t>(channel);
            if (player->Routes().Port(source) == port &&
                player->Routes().Target(source) == target) {
                return channel;
            }
        }
        return -1;
    }

    void RouteAtRandom(bool twoPorts) {
        player::ChannelRoutes routes = player->Routes().Routes();
        std::swap(routes[static_cast<std::size_t>(Pick(kTracks))],
                  routes[static_cast<std::size_t>(Pick(16))]);
        if (twoPorts) {
            routes[static_cast<std::size_t>(1 + Pick(kTracks - 1))].port ^= 1U;
        }
        std::set<std::pair<std::size_t, std::uint8_t>> targets;
        for (const player::ChannelRoute& route : routes) {
            targets.emplace(route.port, route.target);
        }
        if (targets.size() == routes.size()) {
            EXPECT_TRUE(player->SetRoutes(routes));
        }
    }

    void Act(bool twoPorts) {
        const auto channel = static_cast<std::size_t>(Pick(kTracks));
        const std::size_t track = 1 + channel;
        const int action = Pick(9);
        what_ += " " + std::to_string(action);
        if (action < 2) {
            EXPECT_TRUE(player->MoveToTimePosition(Pick(kSongMs)));
        } else if (action == 2) {
            player->SetChannelMuted(channel, !player->ChannelMuted(channel));
        } else if (action == 3) {
            player->SetChannelSolo(channel, !player->ChannelSolo(channel));
        } else if (action == 4) {
            const bool muted = decoded->song.tracks[track].muted != 0;
            EXPECT_TRUE(player->SetTrackMuted(track, !muted));
        } else if (action == 5) {
            const int start = Pick(kSongMs);
            EXPECT_TRUE(player->SetLoop(start, start + 100 + Pick(900)));
            EXPECT_TRUE(player->SetLooping(Pick(3) > 0));
        } else if (action == 6) {
            RouteAtRandom(twoPorts);
        } else if (action == 7) {
            Stop();
        } else {
            driver.SetPresent("Keyboard", false);
            player->CheckPorts();
            Run(Pick(200));
            driver.SetPresent("Keyboard", true);
            player->CheckPorts();
        }
    }

    std::mt19937 random_{GetParam()};
    std::map<Note, std::string> expected_;
    std::map<std::string, InstrumentModel> models_;
    std::string what_;
    int heard_ = 0;
};

TEST_P(StateTest, EveryNoteBeginsInTheStateOfTheSong) {
    const bool twoPorts = GetParam() % 2 == 0;
    driver.Add("Module");
    Load(MakeSong(!twoPorts));
    FindExpected();
    for (int step = 0; step < 60 && !HasFailure(); ++step) {
        Play();
        Run(1 + Pick(400));
        Listen();
        Act(twoPorts);
        Listen();
    }
    EXPECT_GT(heard_, 100);
    sounding.Forget("Keyboard"); // notes that it lost the end of
}

INSTANTIATE_TEST_SUITE_P(Seeds, StateTest, ::testing::Range(1U, 13U));

} // namespace
} // namespace tracksmith::test
