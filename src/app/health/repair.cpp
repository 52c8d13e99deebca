#include "app/health/repair.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <optional>
#include <utility>
#include <vector>

#include "instruments/voices/shared_sets.h"
#include "song/event_chain.h"
#include "song/mode_message.h"
#include "song/note_length.h"
#include "song/note_overlaps.h"
#include "song/note_pairing.h"
#include "song/track_notes.h"
#include "song/track_walk.h"

namespace tracksmith::health {
namespace {

using song::EventLink;
using song::Song;
using song::Track;

using Channels = std::bitset<song::kMidiChannels>;

Channels ChannelsOf(std::span<const Finding> findings, Rule rule) {
    Channels channels;
    for (const Finding& finding : findings) {
        if (finding.rule == rule && finding.repairable && finding.channel < channels.size()) {
            channels.set(finding.channel);
        }
    }
    return channels;
}

void InsertBefore(Track& track, EventLink place, EventLink event) {
    song::InsertAfter(track, place->prev, event);
}

// The tick of the last event that is played.
std::int32_t LastTick(const Song& song) {
    std::int32_t last = 0;
    for (const Track& track : song.tracks) {
        song::ConstEventLink event = track.last;
        while (event && !event->IsChannelMessage()) {
            event = event->prev;
        }
        last = std::max(last, event ? event->tick : 0);
    }
    return last;
}

/// Mends one rule after the other on the channels that are asked for. The notes must be paired.
class Repairer {
public:
    Repairer(Song& song, const HealthOptions& options)
        : song_(song), options_(options), lastTick_(LastTick(song)) {}

    std::int64_t EndNotes(Channels channels) {
        std::int64_t done = 0;
        ForTracks(channels, [&](Track& track) {
            const song::TrackNotes notes = song::NotesOfTrack(track);
            for (const song::TrackNote& note : notes.notes) {
                if (!note.off && channels[note.on->Channel()]) {
                    EndNote(track, notes, note);
                    ++done;
                }
            }
        });
        return done;
    }

    std::int64_t RemoveStrays(Channels channels) {
        std::int64_t done = 0;
        ForTracks(channels, [&](Track& track) {
            for (const song::ConstEventLink off : song::NotesOfTrack(track).strays) {
                if (channels[off->Channel()]) {
                    song::RemoveEvent(song_, track, EventLink(off.Unit()));
                    ++done;
                }
            }
        });
        return done;
    }

    std::int64_t RemoveOverlaps(Channels channels) {
        return channels.none() ? 0 : song::RemoveNoteOverlaps(song_, [&](const auto& overlap) {
            return channels[overlap.off->Channel()];
        });
    }

    std::int64_t Lengthen(Channels channels) {
        if (channels.none()) {
            return 0;
        }
        std::vector<song::NoteEnd> ends = song::FindShortNotes(song_, options_.shortNote);
        std::erase_if(ends,
                      [&](const song::NoteEnd& end) { return !channels[end.off->Channel()]; });
        return song::LengthenLoadedNotes(song_, ends, {options_.shortNote});
    }

    // At the end, on the track that has left it on.
    std::int64_t Release(Channels channels, bool bend) {
        std::array<Track*, song::kMidiChannels> tracks{};
        std::array<std::int32_t, song::kMidiChannels> ticks{};
        ForTracks(channels, [&](Track& track) {
            for (EventLink event = track.first; event; event = event->next) {
                const bool sets = bend ? event->Command() == song::kPitchBend
                                       : event->Command() == song::kControlChange &&
                                             event->data1 == song::kSustain;
                if (sets && event->length > 0 && event->tick >= ticks.at(event->Channel())) {
                    tracks.at(event->Channel()) = &track;
                    ticks.at(event->Channel()) = event->tick;
                }
            }
        });
        std::int64_t done = 0;
        for (std::uint8_t channel = 0; channel < song::kMidiChannels; ++channel) {
            if (channels[channel] && tracks.at(channel) != nullptr) {
                song::InsertByTick(*tracks.at(channel),
                                   bend ? Short(song::kPitchBend, channel, 0, 64)
                                        : Short(song::kControlChange, channel, song::kSustain, 0));
                ++done;
            }
        }
        return done;
    }

    // The bank that the instrument starts in, before every program change of the channel up to the
    // first that has one.
    std::int64_t AddBanks(std::span<const Finding> findings) {
        std::int64_t done = 0;
        for (const Finding& finding : findings) {
            if (finding.rule == Rule::ProgramWithoutBank && finding.repairable &&
                options_.instrument) {
                Channels channels;
                channels.set(finding.channel);
                ForTracks(channels, [&](Track& track) { done += AddBank(track, finding); });
            }
        }
        return done;
    }

    // What is in force without it, before the first note, and again behind each reset, which would
    // wipe it.
    std::int64_t InsertVolumes(Channels channels) {
        std::int64_t done = 0;
        for (const FirstNote& first : NotesBehindResets(channels)) {
            const std::uint8_t channel = first.note->Channel();
            const EventLink volume = Short(song::kControlChange, channel, song::kVolume,
                                           song::NeutralController(song::kVolume));
            volume->tick = first.note->tick;
            InsertBefore(*first.track, first.note, volume);
            ++done;
        }
        return done;
    }

private:
    template <typename Work>
    void ForTracks(Channels channels, Work&& work) {
        for (Track& track : song_.tracks) {
            if (channels.any() && track.ignored == 0) {
                work(track);
            }
        }
    }

    struct FirstNote {
        Track* track = nullptr;
        EventLink note;
    };
    struct Wanted : song::EveryEvent {
        static bool Enters(const Track& track) { return track.ignored == 0; }
        static bool Wants(const song::MidiEvent& event) {
            return event.length > 0 && (event.IsNoteOn() || event.status == song::kSystemExclusive);
        }
    };

    // The first note of each channel, and its first one behind each reset of the instrument.
    std::vector<FirstNote> NotesBehindResets(const Channels channels) {
        std::vector<FirstNote> found;
        Channels waiting = channels;
        song::TrackWalk<song::TickOrder, Wanted, Song> walk(song_);
        while (channels.any() && walk.Peek() != nullptr) {
            Track& track = song_.tracks[walk.NextTrack()];
            song::MidiEvent& event = *walk.Take();
            if (!event.IsNoteOn()) {
                waiting =
                    song::ModeOfReset(song::WithoutFrame(event.Payload())) ? channels : waiting;
            } else if (waiting[event.Channel()]) {
                waiting.reset(event.Channel());
                found.push_back({&track, song::LinkTo(event)});
            }
        }
        return found;
    }

    EventLink Short(std::uint8_t command, std::uint8_t channel, std::uint8_t data1,
                    std::uint8_t data2) {
        return song::NewShortEvent(song_.pool, lastTick_,
                                   static_cast<std::uint8_t>(command | channel), data1, data2);
    }

    // A note without an end that begins while an older one of its pitch is open: the older one has
    // lost its end, which is here.
    static bool EndsOlder(const song::TrackNotes& notes, const song::TrackNote& note) {
        return !note.off && note.inside != song::TrackNote::kNone &&
               notes.notes[note.inside].on->tick < note.on->tick;
    }

    // Of several that each end the one before it, the last. It ends where the next note of the
    // pitch begins, after a measure at the latest.
    void EndNote(Track& track, const song::TrackNotes& notes, const song::TrackNote& unended) {
        const song::TrackNote* note = &unended;
        EventLink on(note->on.Unit());
        const EventLink off = Short(song::kNoteOff, on->Channel(), on->data1, 64);
        if (EndsOlder(notes, *note)) {
            off->tick = on->tick;
            InsertBefore(track, on, off);
            return;
        }
        while (note->next != song::TrackNote::kNone && EndsOlder(notes, notes.notes[note->next])) {
            note = &notes.notes[note->next];
        }
        on = EventLink(note->on.Unit());
        const std::int64_t measure = std::int64_t{4} * std::max<std::int32_t>(song_.division, 1);
        const std::int64_t least =
            std::int64_t{on->tick} + std::max(options_.shortNote, song::kUsualNoteLength);
        const std::int64_t end = std::max<std::int64_t>(least, lastTick_);
        off->tick = static_cast<std::int32_t>(
            std::min({on->tick + measure, end, std::int64_t{song_.songLength}}));
        off->tick = std::max(
            off->tick, static_cast<std::int32_t>(std::min<std::int64_t>(least, song_.songLength)));
        if (note->following != song::TrackNote::kNone) {
            const EventLink next(notes.notes[note->following].on.Unit());
            if (next->tick <= off->tick) {
                off->tick = next->tick;
                InsertBefore(track, next, off);
                return;
            }
        }
        song::InsertByTick(track, off);
    }

    std::int64_t AddBank(Track& track, const Finding& finding) {
        std::int64_t done = 0;
        for (EventLink event = track.first; event; event = event->next) {
            const bool program = event->Command() == song::kProgramChange &&
                                 event->Channel() == finding.channel && event->length > 0;
            if (!program || std::ranges::find(finding.ticks, event->tick) == finding.ticks.end()) {
                continue;
            }
            const auto numbers = instruments::NumbersInForce(
                *options_.instrument, false, std::nullopt, std::nullopt, event->data1);
            for (const auto& [controller, value] :
                 {std::pair{song::kBankMsb, numbers.msb}, std::pair{song::kBankLsb, numbers.lsb}}) {
                const EventLink bank =
                    Short(song::kControlChange, finding.channel, controller, value);
                bank->tick = event->tick;
                InsertBefore(track, event, bank);
                ++done;
            }
            break; // it holds for the later ones
        }
        return done;
    }

    Song& song_;
    const HealthOptions& options_;
    std::int32_t lastTick_;
};

} // namespace

std::int64_t RepairSong(Song& song, std::span<const Finding> findings,
                        const HealthOptions& options) {
    Repairer repairer(song, options);
    const auto on = [&](Rule rule) { return ChannelsOf(findings, rule); };
    std::int64_t done = repairer.RemoveStrays(on(Rule::NoteWithoutBeginning));
    done += repairer.EndNotes(on(Rule::NoteWithoutEnd));
    song::SetNoteOnOffPointers(song);
    done += repairer.RemoveOverlaps(on(Rule::Overlaps));
    done += repairer.Lengthen(on(Rule::ShortNotes));
    done += repairer.Release(on(Rule::SustainAtEnd), false);
    done += repairer.Release(on(Rule::BendAtEnd), true);
    done += repairer.AddBanks(findings);
    done += repairer.InsertVolumes(on(Rule::NoVolume));
    song::SetNoteOnOffPointers(song);
    return done;
}

std::int64_t Repair(session::Session& session, std::span<const Finding> findings,
                    const HealthOptions& options, MessageHost& host) {
    std::int64_t done = 0;
    session.Change(kRepair, host, [&](session::Workspace& workspace) {
        done = RepairSong(workspace.song, findings, options);
        return done > 0;
    });
    return done;
}

std::int64_t RepairAll(session::Session& session, const HealthOptions& options, MessageHost& host) {
    // A note that gets its end may be short or overlap then; nothing comes to light for long.
    constexpr int kMostRounds = 6;
    std::int64_t done = 0;
    session.Change(kRepair, host, [&](session::Workspace& workspace) {
        for (int round = 0; round < kMostRounds; ++round) {
            const HealthReport report = CheckHealth(workspace, options);
            const std::int64_t now = RepairSong(workspace.song, report.findings, options);
            done += now;
            if (now == 0) {
                break;
            }
        }
        return done > 0;
    });
    return done;
}

} // namespace tracksmith::health
