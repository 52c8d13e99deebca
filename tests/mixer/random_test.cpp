#include <map>
#include <random>
#include <set>

#include "mixer/mixer_fixture.h"

namespace tracksmith::mixer {
namespace {

using test::Bytes;
using test::TrackBuilder;

/// An event of the plain model: what the song should hold.
struct Plain {
    std::int32_t tick;
    std::uint8_t status, data1, data2;
    std::uint8_t pitch; // as in the file
};

/// Random use of the mixer beside a model that knows nothing of links and threads.
class RandomTest : public test::MixerFixture {
protected:
    static constexpr std::int32_t kLength = 4'000;

    int Roll(int below) { return std::uniform_int_distribution(0, below - 1)(random_); }

    // Three tracks, so that the order of equal ticks matters, with four channels among them.
    void MakeSong() {
        tracks_.assign(3, {});
        std::initializer_list<std::uint8_t> controllers{7, 10, 11, 91};
        for (auto& track : tracks_) {
            for (int i = 0; i < 60; ++i) {
                const auto channel = static_cast<std::uint8_t>(std::array{0, 1, 5, 9}[Roll(4)]);
                const std::int32_t tick = Roll(kLength / 50) * 50;
                const auto key = static_cast<std::uint8_t>(Roll(128));
                if (Roll(3) == 0) {
                    const std::uint8_t controller = controllers.begin()[Roll(4)];
                    track.push_back({tick, Status(0xB0, channel), controller, key, controller});
                } else {
                    track.push_back({tick, Status(0x90, channel), key, 90, key});
                    track.push_back({tick + 20, Status(0x80, channel), key, 64, key});
                }
            }
            std::ranges::stable_sort(track, {}, &Plain::tick);
        }
        test::MidiFileBuilder file(1, 500);
        for (const auto& track : tracks_) {
            TrackBuilder builder;
            std::int32_t last = 0;
            for (const Plain& event : track) {
                builder.Short(static_cast<std::uint64_t>(event.tick - last), event.status,
                              event.data1, event.data2);
                last = event.tick;
            }
            file.Track(builder.End(static_cast<std::uint64_t>(kLength + 100 - last)));
        }
        Open(file.Build());
    }
    static std::uint8_t Status(int command, std::uint8_t channel) {
        return static_cast<std::uint8_t>(command | channel);
    }

    template <typename F>
    void ForEach(F&& take) {
        // By tick, equal ticks in track order: stable over the tracks one behind the other.
        std::vector<Plain*> all;
        for (auto& track : tracks_) {
            for (Plain& event : track) {
                all.push_back(&event);
            }
        }
        std::ranges::stable_sort(all, {}, [](const Plain* event) { return event->tick; });
        for (Plain* event : all) {
            take(*event);
        }
    }
    // What a slider changes at the place: everything up to it has passed while playing.
    Plain* InEffect(std::uint8_t channel, std::uint8_t controller) {
        Plain* found = nullptr;
        Plain* first = nullptr;
        ForEach([&](Plain& event) {
            if (event.status == Status(0xB0, channel) && event.data1 == controller) {
                first = first == nullptr ? &event : first;
                if (event.tick < place_ || (!sought_ && event.tick == place_)) {
                    found = &event;
                }
            }
        });
        return found == nullptr && place_ == 0 ? first : found;
    }

    void MoveSlider() {
        const auto channel = static_cast<std::uint8_t>(std::array{0, 1, 5, 9, 12}[Roll(5)]);
        const Control control = kAllControls[static_cast<std::size_t>(Roll(5))];
        const auto value = static_cast<std::uint8_t>(Roll(128));
        Run(20); // so that the value does not wait
        Elapse(20);
        TakeAll();
        mixer.Move(channel, control, value);
        Plain* event = InEffect(channel, ControllerOf(control));
        if (event != nullptr) {
            event->data2 = value;
        }
        Messages sent;
        if (event != nullptr && playing_) {
            sent = {{Status(0xB0, channel), ControllerOf(control), value}};
        }
        EXPECT_EQ(TakeAll(), sent);
    }
    void Transpose() {
        const int semitones = Roll(40) - 20;
        const auto channel = static_cast<std::size_t>(std::array{0, 1, 5, 9}[Roll(4)]);
        if (Roll(3) == 0) {
            song_ = semitones;
            EXPECT_TRUE(mixer.TransposeChange(semitones));
        } else {
            channels_[channel] = semitones;
            EXPECT_TRUE(mixer.TransposeChannel(channel, semitones));
        }
        ForEach([&](Plain& event) {
            if (event.status < 0xB0 && (event.status & 15) != 9) {
                int pitch = event.pitch + song_ + channels_[event.status & 15U];
                pitch = pitch < 0 ? (pitch % 12 + 12) % 12 : pitch;
                event.data1 =
                    static_cast<std::uint8_t>(pitch > 127 ? 116 + (pitch - 116) % 12 : pitch);
            }
        });
    }
    void PressLamp() {
        const auto channel = static_cast<std::size_t>(std::array{0, 1, 5, 9, 12}[Roll(5)]);
        auto& set = Roll(2) == 0 ? muted_ : solo_;
        if (channel != 12 && !set.erase(channel)) {
            set.insert(channel);
        }
        &set == &muted_ ? mixer.Btn_Mute00MouseDown(channel, false)
                        : mixer.Btn_Solo00MouseDown(channel, false);
    }
    void MovePlace() {
        place_ = Roll(kLength / 10) * 10 + 5;
        sought_ = !playing_;
        Seek(place_);
        TakeAll();
    }
    void PlayOrStop() {
        playing_ ? Stop() : Play();
        playing_ = !playing_;
        sought_ = false;
        Elapse(playing_ ? 1 : 0);
    }
    void Elapse(std::int32_t ms) {
        if (playing_) {
            place_ += ms;
        }
    }
    // Lets the music go on and compares the notes that begin.
    void Listen() {
        TakeAll();
        std::multiset<Bytes> expected;
        const std::int32_t from = place_;
        Elapse(150);
        ForEach([&](const Plain& event) {
            const std::size_t channel = event.status & 15;
            const bool audible =
                !muted_.contains(channel) && (solo_.empty() || solo_.contains(channel));
            if ((event.status & 0xF0) == 0x90 && audible && event.tick > from &&
                event.tick <= place_) {
                expected.insert({event.status, event.data1, event.data2});
            }
        });
        std::multiset<Bytes> heard;
        for (const Bytes& message : Run(150)) {
            if ((message[0] & 0xF0) == 0x90) {
                heard.insert(message);
            }
        }
        EXPECT_EQ(heard, expected);
    }
    void CompareSongs() {
        song::Song saved;
        RecordingMessageHost silent;
        song::DecodeMidiData(saved, Saved(), {}, silent);
        EXPECT_EQ(song::CheckSong(session.Song()), "");
        for (std::size_t track = 0; track < tracks_.size(); ++track) {
            std::string wanted;
            for (const Plain& event : tracks_[track]) {
                const std::uint8_t bytes[]{event.status, event.data1, event.data2};
                wanted += (wanted.empty() ? "" : "; ") + std::to_string(event.tick) + " " +
                          test::Hex(bytes);
            }
            ASSERT_EQ(Track(track), wanted);
            ASSERT_EQ(test::Listing(saved.tracks[track]), wanted);
        }
    }

    std::mt19937 random_{20'260'917};
    std::vector<std::vector<Plain>> tracks_;
    std::set<std::size_t> muted_;
    std::set<std::size_t> solo_;
    std::map<std::size_t, int> channels_;
    int song_ = 0;
    std::int32_t place_ = 0;
    bool playing_ = false;
    // Nothing has passed since the place was moved.
    bool sought_ = true;
};

TEST_F(RandomTest, SongSoundAndFileAgreeWithThePlainModel) {
    MakeSong();
    for (int step = 0; step < 400 && !HasFailure(); ++step) {
        SCOPED_TRACE(step);
        switch (Roll(7)) {
            case 0:
            case 1:
                MoveSlider();
                break;
            case 2:
                Transpose();
                break;
            case 3:
                PressLamp();
                break;
            case 4:
                MovePlace();
                break;
            case 5:
                PlayOrStop();
                break;
            default:
                Listen();
        }
        if (place_ > kLength - 400) {
            MovePlace();
        }
        CompareSongs();
    }
}

} // namespace
} // namespace tracksmith::mixer
