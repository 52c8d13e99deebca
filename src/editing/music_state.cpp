#include "editing/music_state.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <utility>

#include "player/state_messages.h"
#include "song/mode_message.h"
#include "song/track_walk.h"

namespace tracksmith::editing {
namespace {

using player::ChannelMessage;
using song::MidiEvent;

bool SetsChannel(const MidiEvent& event) {
    return event.IsChannelMessage() && event.status >= song::kPolyPressure;
}

// A walk over what sets something between two places.
class Between {
public:
    Between(const song::Song& song, const CutPlaces& begin, const CutPlaces& end)
        : song_(&song), begin_(&begin), end_(&end) {}

    static bool Enters(const song::Track& /*track*/) { return true; }
    static bool Wants(const MidiEvent& event) {
        return event.length > 0 &&
               (SetsChannel(event) || event.status == song::kSystemExclusive ||
                event.IsMeta(song::kMetaTempo) || event.IsMeta(song::kMetaTimeSignature) ||
                event.IsMeta(song::kMetaKeySignature));
    }
    song::ConstEventLink BeginOf(const song::Track& track, std::size_t index) const {
        return begin_->empty() ? song::ConstEventLink(track.first)
                               : song::ConstEventLink((*begin_)[index]);
    }
    song::ConstEventLink EndOf(const song::Track& track) const {
        return (*end_)[static_cast<std::size_t>(&track - song_->tracks.data())];
    }

private:
    const song::Song* song_;
    const CutPlaces* begin_;
    const CutPlaces* end_;
};

// What is played or sung at its place, unlike names and settings.
bool BelongsToMusic(const MidiEvent& event) {
    return event.IsNoteOn() || event.Command() == song::kNoteOff ||
           event.IsMeta(song::kMetaLyric) || event.IsMeta(song::kMetaMarker) ||
           event.IsMeta(song::kMetaEndOfTrack);
}

std::span<const std::uint8_t> BytesOf(song::ConstEventLink event,
                                      std::span<const std::uint8_t> usual) {
    return event ? event->Payload() : usual;
}

// Puts a meta event where both states differ in it.
void CarryMeta(song::ConstEventLink from, song::ConstEventLink to,
               std::span<const std::uint8_t> usual, CarriedMeta meta,
               std::vector<CarriedMeta>& metas) {
    const auto wanted = BytesOf(to, usual);
    if (!std::ranges::equal(BytesOf(from, usual), wanted)) {
        meta.bytes.assign(wanted.begin(), wanted.end());
        metas.push_back(std::move(meta));
    }
}

std::vector<CarriedMeta> CarriedMetas(const Seam& seam) {
    // What holds as long as nothing is set: 120 quarter notes a minute, 4/4, C major.
    static constexpr std::array<std::uint8_t, 3> kTempo{0x07, 0xA1, 0x20};
    static constexpr std::array<std::uint8_t, 4> kMetre{4, 2, 24, 8};
    static constexpr std::array<std::uint8_t, 2> kKey{0, 0};
    const std::size_t keyTrack = seam.to.key ? seam.to.keyTrack : seam.from.keyTrack;
    std::vector<CarriedMeta> metas;
    CarryMeta(seam.from.tempo, seam.to.tempo, kTempo, {0, song::kMetaTempo, {}}, metas);
    CarryMeta(seam.from.metre, seam.to.metre, kMetre, {0, song::kMetaTimeSignature, {}}, metas);
    CarryMeta(seam.from.key, seam.to.key, kKey, {keyTrack, song::kMetaKeySignature, {}}, metas);
    return metas;
}

// The messages of one channel that lead from one state into the other; which of them come first are
// banks and program.
class Bridge {
public:
    explicit Bridge(Seam& seam) : seam_(seam) {}

    std::span<const ChannelMessage> Compose(std::size_t channel) {
        return composer_.Compose(
            seam_.to.channels.at(channel),
            {seam_.from.channels.at(channel), std::nullopt, channel == song::kDrumChannel},
            player::Extent::Difference);
    }
    static std::size_t CountVoice(std::span<const ChannelMessage> messages) {
        const auto behind = std::ranges::find_if_not(messages, [](const ChannelMessage& message) {
            return message.command == song::kProgramChange ||
                   (message.command == song::kControlChange &&
                    (message.data1 == song::kBankMsb || message.data1 == song::kBankLsb));
        });
        return static_cast<std::size_t>(behind - messages.begin());
    }
    void Put(std::span<const ChannelMessage> messages, std::size_t channel,
             std::vector<CarriedMessage>& carried) {
        const std::size_t track =
            seam_.to.track.at(channel).value_or(seam_.from.track.at(channel).value_or(0));
        for (const ChannelMessage& message : messages) {
            carried.push_back({track, static_cast<std::uint8_t>(message.command | channel),
                               message.data1, message.data2});
        }
    }

    void PutModes(std::size_t channel, std::vector<CarriedMessage>& carried) {
        extra_.clear();
        editing::PutModes(SidesOf(channel), extra_);
        Put(extra_, channel, carried);
    }
    // Behind the messages that were composed for the channel.
    void PutSides(std::size_t channel, std::span<const ChannelMessage> composed,
                  std::vector<CarriedMessage>& carried) {
        extra_.clear();
        editing::PutSides(SidesOf(channel), seam_.to.channels.at(channel), composed, extra_);
        Put(extra_, channel, carried);
    }

private:
    SidePair SidesOf(std::size_t channel) const {
        return {seam_.from.sides.at(channel), seam_.to.sides.at(channel)};
    }

    Seam& seam_;
    player::StateMessages composer_;
    std::vector<ChannelMessage> extra_;
};

} // namespace

CutPlaces PlacesAt(song::Song& song, std::int32_t tick) {
    CutPlaces places;
    places.reserve(song.tracks.size());
    for (song::Track& track : song.tracks) {
        song::EventLink event = track.first->next;
        while (event->next &&
               (tick == 0 ? event->tick == 0 && !BelongsToMusic(*event) : event->tick < tick)) {
            event = event->next;
        }
        places.push_back(event);
    }
    return places;
}

CutPlaces PlacesAt(const CutPlaces& from, std::int32_t tick) {
    CutPlaces places = from;
    for (song::EventLink& event : places) {
        while (event->next && event->tick < tick) {
            event = event->next;
        }
    }
    return places;
}

void MusicState::Play(const song::Song& song, const CutPlaces& begin, const CutPlaces& end) {
    song::TrackWalk<song::TickOrder, Between> walk(song, Between(song, begin, end));
    while (walk.Peek() != nullptr) {
        const std::size_t index = walk.NextTrack();
        const bool ignored = song.tracks[index].ignored != 0;
        const MidiEvent& event = *walk.Take();
        if (SetsChannel(event)) {
            if (!ignored) {
                channels.at(event.Channel()).Take(song::LinkTo(event));
                sides.at(event.Channel()).Take(event, channels.at(event.Channel()));
                track.at(event.Channel()) = index;
            }
        } else if (event.status == song::kSystemExclusive) {
            if (!ignored && song::ModeOfReset(song::WithoutFrame(event.Payload()))) {
                std::ranges::for_each(channels, &song::ChannelState::Clear);
                sides.fill({});
            }
        } else if (event.metaType == song::kMetaTempo) {
            tempo = song::LinkTo(event);
        } else if (event.metaType == song::kMetaTimeSignature) {
            metre = song::LinkTo(event);
        } else {
            key = song::LinkTo(event);
            keyTrack = index;
        }
    }
}

CarriedState Carry(Seam seam, const song::Song& song, const CutPlaces& places, std::int32_t tick,
                   bool apart) {
    CarriedState carried;
    const CutPlaces next = PlacesAt(places, tick + 1);
    seam.from.Play(song, places, next);
    seam.to.Play(song, places, next);
    carried.metas = CarriedMetas(seam);
    Bridge bridge(seam);
    for (std::size_t channel = 0; channel < song::kMidiChannels; ++channel) {
        const auto messages = bridge.Compose(channel);
        const auto voice = apart ? messages.first(Bridge::CountVoice(messages)) : messages;
        bridge.PutModes(channel, carried.messages);
        bridge.Put(voice, channel, carried.messages);
        if (!apart) {
            bridge.PutSides(channel, messages, carried.messages);
        }
        for (const ChannelMessage& message : voice) {
            seam.from.channels.at(channel).Take(message.command, message.data1, message.data2, {});
        }
    }
    if (apart) {
        const CutPlaces afterNext = PlacesAt(next, tick + 2);
        seam.from.Play(song, next, afterNext);
        seam.to.Play(song, next, afterNext);
        for (std::size_t channel = 0; channel < song::kMidiChannels; ++channel) {
            const auto messages = bridge.Compose(channel);
            bridge.Put(messages, channel, carried.behind);
            bridge.PutSides(channel, messages, carried.behind);
        }
    }
    return carried;
}

} // namespace tracksmith::editing
