#include "app/health/channel_check.h"

#include <array>
#include <bitset>
#include <optional>

#include "app/channel_voices.h"
#include "app/health/text_encoding.h"
#include "instruments/voices/shared_sets.h"
#include "song/mode_message.h"
#include "song/track_walk.h"

namespace tracksmith::health {
namespace {

using song::MidiEvent;

// More than the polyphony of simpler instruments.
constexpr std::int32_t kManyNotes = 64;
constexpr std::uint8_t kPedalDown = 64;

// The settings that a musician misses when a reset has wiped them.
enum Kept : std::size_t { KeptProgram, KeptVolume, KeptPan, KeptReverb, KeptChorus, KeptCount };

std::optional<Kept> KeptOf(const MidiEvent& event) {
    if (event.Command() == song::kProgramChange) {
        return KeptProgram;
    }
    switch (event.data1) {
        case song::kVolume:
            return KeptVolume;
        case song::kPan:
            return KeptPan;
        case song::kReverbSend:
            return KeptReverb;
        case song::kChorusSend:
            return KeptChorus;
        default:
            return std::nullopt;
    }
}

struct Channel {
    std::optional<std::uint8_t> bankMsb;
    std::optional<std::uint8_t> bankLsb;
    bool program = false;
    bool volume = false;
    std::int32_t firstNote = -1;
    std::int32_t firstWithoutProgram = -1;
    std::int64_t notesWithoutProgram = 0;
    std::bitset<KeptCount> set;
    std::bitset<KeptCount> wiped;
    std::int32_t sustainSince = -1;
    std::int32_t bendSince = -1;
    std::int32_t bend = 0;
};

struct Wanted : song::EveryEvent {
    static bool Enters(const song::Track& track) { return track.ignored == 0; }
};

} // namespace

class ChannelWalk {
public:
    ChannelWalk(const song::Song& song, const HealthOptions& options, FindingList& found)
        : walk_(song), options_(options), found_(found) {}

    bool Step(std::size_t events) {
        for (; events > 0; --events) {
            const MidiEvent* event = walk_.Take();
            if (event == nullptr) {
                End();
                return true;
            }
            if (event->length > 0) {
                Meet(*event);
            }
        }
        return false;
    }

private:
    void Meet(const MidiEvent& event) {
        switch (event.Command()) {
            case song::kNoteOn:
                NoteOn(event);
                break;
            case song::kNoteOff:
                sounding_ -= event.noteOnLink ? 1 : 0;
                break;
            case song::kControlChange:
                Controller(event);
                break;
            case song::kProgramChange:
                Program(event);
                break;
            case song::kPitchBend:
                Bend(event);
                break;
            default:
                Long(event);
        }
    }

    Channel& Of(const MidiEvent& event) { return channels_.at(event.Channel()); }

    void NoteOn(const MidiEvent& event) {
        Channel& channel = Of(event);
        channel.firstNote = channel.firstNote < 0 ? event.tick : channel.firstNote;
        if (!channel.program && event.Channel() != song::kDrumChannel) {
            ++channel.notesWithoutProgram;
            channel.firstWithoutProgram =
                channel.firstWithoutProgram < 0 ? event.tick : channel.firstWithoutProgram;
        }
        if (channel.wiped.any()) {
            found_
                .AddAt(Rule::SettingsBeforeReset, Severity::Warning, event.Channel(), event.tick,
                       false)
                .value = static_cast<std::int32_t>(channel.wiped.count());
            channel.wiped.reset();
        }
        if (++sounding_ > most_) {
            most_ = sounding_;
            mostTick_ = event.tick;
        }
    }

    void Controller(const MidiEvent& event) {
        Channel& channel = Of(event);
        Keep(event, channel);
        switch (event.data1) {
            case song::kBankMsb:
                channel.bankMsb = event.data2;
                break;
            case song::kBankLsb:
                channel.bankLsb = event.data2;
                break;
            case song::kVolume:
                channel.volume = true;
                break;
            case song::kSustain:
                channel.sustainSince = event.data2 < kPedalDown   ? -1
                                       : channel.sustainSince < 0 ? event.tick
                                                                  : channel.sustainSince;
                break;
            case song::kResetAllControllers:
                channel.sustainSince = channel.bendSince = -1;
                break;
            default:
                break;
        }
    }

    static void Keep(const MidiEvent& event, Channel& channel) {
        if (const auto kept = KeptOf(event)) {
            channel.set.set(*kept);
            channel.wiped.reset(*kept);
        }
    }

    void Program(const MidiEvent& event) {
        Channel& channel = Of(event);
        Keep(event, channel);
        channel.program = true;
        if (!channel.bankMsb && !reset_ && event.Channel() != song::kDrumChannel) {
            found_.AddAt(Rule::ProgramWithoutBank,
                         StartsInGeneralMidi() ? Severity::Hint : Severity::Warning,
                         event.Channel(), event.tick, options_.instrument.has_value());
        }
        if (options_.voices != nullptr && options_.instrument) {
            LookFor(event, channel);
        }
    }

    // Songs for General MIDI, most of those without bank selects, mean the bank 0. Only where the
    // instrument keeps other voices there they sound wrong.
    bool StartsInGeneralMidi() const {
        const auto start = options_.instrument
                               ? instruments::NumbersInForce(*options_.instrument, false, {}, {}, 0)
                               : instruments::VoiceNumbers{};
        return start.msb == 0 && start.lsb == 0;
    }

    void LookFor(const MidiEvent& event, const Channel& channel) {
        const app::SongDescription::ChannelLine line{event.Channel(), 0, channel.bankMsb,
                                                     channel.bankLsb, event.data1};
        const auto voice =
            app::FirstVoiceOf(*options_.voices, line, *options_.instrument, options_.lookup);
        const auto match = FindVoice(*options_.voices, *options_.instrument, voice.drums,
                                     voice.numbers, options_.lookup)
                               .match;
        if (match != instruments::VoiceMatch::Exact) {
            found_.AddAt(
                Rule::UnknownVoice,
                match == instruments::VoiceMatch::Unknown ? Severity::Error : Severity::Warning,
                event.Channel(), event.tick, false);
        }
    }

    void Bend(const MidiEvent& event) {
        Channel& channel = Of(event);
        channel.bend = (event.data1 | (event.data2 << 7)) - song::kBendCentre;
        channel.bendSince = channel.bend == 0       ? -1
                            : channel.bendSince < 0 ? event.tick
                                                    : channel.bendSince;
    }

    void Long(const MidiEvent& event) {
        if (event.status == song::kSystemExclusive) {
            if (song::ModeOfReset(song::WithoutFrame(event.Payload()))) {
                Reset(event.tick);
            }
        } else if (event.status == song::kMeta && event.metaType >= song::kMetaText &&
                   event.metaType <= kLastText && IsUnclearText(event.data.Text())) {
            found_.AddAt(Rule::UnclearEncoding, Severity::Hint, kAllChannels, event.tick, false);
        }
    }

    void Reset(std::int32_t tick) {
        if (reset_) {
            found_.AddAt(Rule::SeveralResets, Severity::Hint, kAllChannels, tick, false);
        }
        reset_ = true;
        for (Channel& channel : channels_) {
            channel.wiped |= channel.set;
            channel.set.reset();
            channel.bankMsb.reset();
            channel.bankLsb.reset();
            channel.sustainSince = channel.bendSince = -1;
        }
    }

    void End() {
        for (std::uint8_t index = 0; index < song::kMidiChannels; ++index) {
            EndChannel(index, channels_.at(index));
        }
        if (most_ > kManyNotes) {
            found_.AddAt(Rule::ManyNotes, Severity::Hint, kAllChannels, mostTick_, false).value =
                most_;
        }
    }

    void EndChannel(std::uint8_t index, const Channel& channel) {
        if (channel.sustainSince >= 0) {
            found_.AddAt(Rule::SustainAtEnd, Severity::Warning, index, channel.sustainSince, true);
        }
        if (channel.bendSince >= 0) {
            found_.AddAt(Rule::BendAtEnd, Severity::Warning, index, channel.bendSince, true).value =
                channel.bend;
        }
        if (channel.firstNote < 0) {
            return;
        }
        if (channel.notesWithoutProgram > 0) {
            found_
                .AddAt(Rule::NoProgram, Severity::Warning, index, channel.firstWithoutProgram,
                       false)
                .count = channel.notesWithoutProgram;
        }
        if (!channel.volume) {
            found_.AddAt(Rule::NoVolume, Severity::Hint, index, channel.firstNote, true);
        }
    }

    static constexpr std::uint8_t kLastText = 0x09;

    song::TrackWalk<song::TickOrder, Wanted> walk_;
    const HealthOptions& options_;
    FindingList& found_;
    std::array<Channel, song::kMidiChannels> channels_;
    bool reset_ = false;
    std::int32_t sounding_ = 0;
    std::int32_t most_ = 0;
    std::int32_t mostTick_ = 0;
};

ChannelCheck::ChannelCheck(const song::Song& song, const HealthOptions& options, FindingList& found)
    : walk_(std::make_unique<ChannelWalk>(song, options, found)) {}

ChannelCheck::~ChannelCheck() = default;

bool ChannelCheck::Step(std::size_t events) {
    return walk_->Step(events);
}

} // namespace tracksmith::health
