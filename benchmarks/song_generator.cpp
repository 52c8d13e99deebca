#include "song_generator.h"

#include <algorithm>
#include <initializer_list>
#include <random>
#include <utility>

namespace tracksmith::benchmarks {
namespace {

constexpr std::size_t kChannels = 16;
constexpr unsigned kTicksPerEvent = 160; // on average
constexpr std::size_t kMostTempos = 4000;

class Generator {
public:
    explicit Generator(std::size_t events) : events_(events) {
        bytes_.reserve(events * 4 + 4096);
        Put({'M', 'T', 'h', 'd', 0, 0, 0, 6, 0, 1, 0, kChannels + 1, 0x01, 0xE0});
    }
    std::vector<std::uint8_t> Song() {
        const std::size_t perTrack = events_ / kChannels;
        Conductor(std::clamp<std::size_t>(events_ / 1000, 1, kMostTempos),
                  perTrack * kTicksPerEvent);
        for (std::size_t channel = 0; channel < kChannels; ++channel) {
            ChannelTrack(static_cast<std::uint8_t>(channel), perTrack);
        }
        return std::move(bytes_);
    }
    std::vector<std::uint8_t> Settings(SettingsKind kind) {
        Conductor(1, 1);
        for (std::size_t channel = 0; channel < kChannels; ++channel) {
            SettingsTrack(static_cast<std::uint8_t>(channel), events_ / kChannels, kind);
        }
        return std::move(bytes_);
    }

private:
    unsigned Roll(unsigned sides) { return static_cast<unsigned>(random_()) % sides; }

    void Byte(unsigned value) { bytes_.push_back(static_cast<std::uint8_t>(value)); }
    void Put(std::initializer_list<unsigned> values) {
        for (const unsigned value : values) {
            Byte(value);
        }
    }
    void Quantity(std::size_t value) {
        for (int shift = 21; shift > 0; shift -= 7) {
            if (value >> shift != 0) {
                Byte(static_cast<unsigned>((value >> shift) & 0x7F) | 0x80);
            }
        }
        Byte(static_cast<unsigned>(value & 0x7F));
    }

    void BeginTrack() {
        Put({'M', 'T', 'r', 'k', 0, 0, 0, 0});
        start_ = bytes_.size();
        running_ = 0;
    }
    void EndTrack() {
        Put({0, 0xFF, 0x2F, 0});
        const std::size_t length = bytes_.size() - start_;
        for (std::size_t i = 0; i < 4; ++i) {
            bytes_[start_ - 4 + i] = static_cast<std::uint8_t>(length >> (24 - 8 * i));
        }
    }

    void Conductor(std::size_t tempos, std::size_t ticks) {
        BeginTrack();
        Put({0, 0xFF, 0x58, 4, 4, 2, 24, 8});
        for (std::size_t i = 0; i < tempos; ++i) {
            Quantity(i == 0 ? 0 : ticks / tempos);
            const unsigned tempo = 400'000 + Roll(300'000);
            Put({0xFF, 0x51, 3, tempo >> 16, tempo >> 8 & 0xFF, tempo & 0xFF});
        }
        EndTrack();
    }

    // A channel message behind `delta` ticks, its status left out where it is in force.
    void Message(std::size_t delta, unsigned status, unsigned data1) {
        Quantity(delta);
        if (status != running_) {
            Byte(status);
            running_ = status;
        }
        Byte(data1);
    }

    // Two notes that overlap: four events.
    void Notes(unsigned channel) {
        const unsigned key = 36 + Roll(48);
        for (const unsigned velocity : {64 + Roll(60), 0U}) {
            for (const unsigned interval : {0U, 4U}) {
                Message(interval == 0 ? 128 + Roll(300) : Roll(240), 0x90 | channel,
                        key + interval);
                Byte(velocity);
            }
        }
    }

    // A movement of a controller or the wheel: eight events.
    void Movement(unsigned channel) {
        const bool wheel = Roll(3) == 0;
        const unsigned controller = Roll(2) == 0 ? 11 : 1;
        for (unsigned i = 0; i < 8; ++i) {
            Message(5 + Roll(20), (wheel ? 0xE0 : 0xB0) | channel, wheel ? 0 : controller);
            Byte(64 + i);
        }
    }

    // One of the rare ones: a text, a system exclusive message or a program change.
    void Rare(unsigned channel) {
        switch (Roll(4)) {
            case 0:
                Put({10, 0xFF, 0x05, 4, 's', 'y', 'l', '-'});
                running_ = 0;
                break;
            case 1:
                Put({10, 0xF0, 8, 0x43, 0x10, 0x4C, 0x02, 0x01, Roll(128), Roll(128), 0xF7});
                running_ = 0;
                break;
            default:
                Message(10, 0xC0 | channel, Roll(128));
        }
    }

    void ChannelTrack(std::uint8_t channel, std::size_t events) {
        BeginTrack();
        Put({0, 0xFF, 0x03, 5, 'T', 'r', 'a', 'c', 'k'});
        std::size_t done = 0;
        while (done < events) {
            const unsigned kind = Roll(100);
            if (kind < 89) {
                Notes(channel);
                done += 4;
            } else if (kind < 98) {
                Movement(channel);
                done += 8;
            } else {
                Rare(channel);
                done += 1;
            }
        }
        EndTrack();
    }

    void Controllers(unsigned channel, std::initializer_list<unsigned> controllers) {
        for (const unsigned controller : controllers) {
            Message(0, 0xB0 | channel, controller);
            Byte(controller < 100 ? Roll(128) : 0);
        }
    }

    // What sliders, wheels and pressure give: 16 events at tick 0.
    void Movements(unsigned channel) {
        Controllers(channel, {7, 10, 11, 1, 2, 64, 91, 93, 94, 71, 72, 73, 74, 5});
        Message(0, 0xD0 | channel, Roll(128));
        Message(0, 0xE0 | channel, 0);
        Byte(Roll(128));
    }

    // 7 more events, which belong to the set-up of a channel.
    void Voice(unsigned channel) {
        Controllers(channel, {0, 32});
        Message(0, 0xC0 | channel, Roll(128));
        Controllers(channel, {101, 100, 6, 38});
    }

    void SettingsTrack(std::uint8_t channel, std::size_t events, SettingsKind kind) {
        BeginTrack();
        const bool voices = kind == SettingsKind::SetUps;
        for (std::size_t i = 0; i < events; i += voices ? 23 : 16) {
            if (voices || i == 0) {
                Voice(channel);
            }
            Movements(channel);
        }
        Message(960, 0x90U | channel, 60);
        Byte(100);
        Message(480, 0x90U | channel, 60);
        Byte(0);
        EndTrack();
    }

    std::size_t events_;
    std::vector<std::uint8_t> bytes_;
    std::size_t start_ = 0;
    unsigned running_ = 0;
    std::minstd_rand random_;
};

} // namespace

std::vector<std::uint8_t> GenerateSong(std::size_t events) {
    return Generator(events).Song();
}

std::vector<std::uint8_t> GenerateSettings(std::size_t events, SettingsKind kind) {
    return Generator(events).Settings(kind);
}

} // namespace tracksmith::benchmarks
