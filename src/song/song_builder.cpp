#include "song/song_builder.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "song/song_length.h"
#include "song/time_map.h"

namespace tracksmith::song {
namespace {

constexpr std::size_t kSplitTracks = 17;
constexpr std::size_t kMetaTrackOfSplit = 1;
constexpr std::size_t kSysexTrackOfSplit = 10;

// Orders a chain whose tail continues from an earlier tick, keeping the order of equal ticks.
void SortByTick(Track& track) {
    std::vector<EventLink> events;
    events.reserve(static_cast<std::size_t>(track.eventCount));
    for (EventLink event = track.first; event; event = event->next) {
        events.push_back(event);
    }
    std::stable_sort(events.begin() + 1, events.end(),
                     [](EventLink a, EventLink b) { return a->tick < b->tick; });
    for (std::size_t i = 1; i < events.size(); ++i) {
        events[i - 1]->next = events[i];
        events[i]->prev = events[i - 1];
    }
    track.last = events.back();
    track.last->next = EventLink();
}

} // namespace

SongBuilder::SongBuilder(Song& song, const FileHeader& header, const DecodeOptions& options)
    : song_(song),
      options_(options),
      split_(header.format == 0 && options.splitFormat0),
      clock_(header.division == 0 ? 1 : header.division) {
    song_.fileFormat = header.format;
    song_.format = header.format == 0 && !split_ ? 0 : 1;
    song_.division = header.division;
    song_.divisionFifth = header.division / 5;
    if (split_) {
        song_.tracks.reserve(kSplitTracks);
        while (song_.tracks.size() < kSplitTracks) {
            AddTrack();
        }
        track_ = &song_.tracks[kMetaTrackOfSplit];
        result_.report.Add(LoadChange::SplitIntoChannels);
    }
}

Track& SongBuilder::AddTrack() {
    Track& track = song_.tracks.emplace_back();
    song_.trackCount = static_cast<std::int32_t>(song_.tracks.size());
    song_.keySignatures.emplace_back();
    InitTrack(song_, track);
    return track;
}

void SongBuilder::BeginTrack(std::uint32_t track) {
    chunk_ = track;
    if (!split_) {
        track_ = &AddTrack();
    }
    endTicks_.push_back(-1);
    clock_.BeginTrack();
}

void SongBuilder::AppendLong(Track& track, std::uint8_t status, std::uint8_t type,
                             std::span<const std::uint8_t> bytes, std::uint32_t tick) {
    MidiEvent values{};
    values.status = status;
    values.length = static_cast<std::int32_t>(bytes.size());
    values.kind = kLongMessage;
    values.data = song_.pool.NewData(bytes);
    values.metaType = type;
    values.prev = track.last;
    values.tick = static_cast<std::int32_t>(tick);
    values.timeMs = MsAt(tick);
    Append(track, values);
}

void SongBuilder::Sysex(std::span<const std::uint8_t> bytes, std::uint32_t tick) {
    if (bytes.empty()) {
        result_.report.Add(LoadChange::EmptySysexDropped);
        return;
    }
    Track& track = split_ ? song_.tracks[kSysexTrackOfSplit] : *track_;
    AppendLong(track, kSystemExclusive, kNoMeta, bytes, tick);
    result_.sysex.push_back({track.last, static_cast<std::int32_t>(&track - song_.tracks.data())});
}

bool SongBuilder::DropMeta(std::uint8_t type, std::size_t size) {
    LoadChange change = LoadChange::UnknownMetaDropped;
    switch (type) {
        case kMetaSequenceNumber:
            if (size == 2) {
                return false;
            }
            change = LoadChange::SequenceNumberDropped;
            break;
        case kMetaChannelPrefix:
            change = LoadChange::ChannelPrefixDropped;
            break;
        case kMetaPort:
            change = LoadChange::PortEventDropped;
            break;
        case 0x4B:
            if (size > 0) {
                return false;
            }
            break;
        case kMetaTempo:
        case kMetaSmpteOffset:
        case kMetaTimeSignature:
        case kMetaKeySignature:
        case kMetaSequencerSpecific:
            return false;
        default:
            if (type <= 0x09) {
                return false;
            }
    }
    result_.report.Add(change);
    return true;
}

void SongBuilder::Meta(std::uint8_t type, std::span<const std::uint8_t> bytes, std::uint32_t tick) {
    if (DropMeta(type, bytes.size())) {
        return;
    }
    AppendLong(*track_, kMeta, type, bytes, tick);
    largestStoredTick_ = std::max(largestStoredTick_, static_cast<std::int32_t>(tick));
    switch (type) {
        case kMetaTrackName:
            TakeName(bytes);
            break;
        case kMetaTempo:
            TakeTempo(*track_->last);
            break;
        case kMetaTimeSignature:
            TakeTimeSignature(*track_->last);
            break;
        case kMetaKeySignature:
            TakeKeySignature(*track_->last);
            break;
        default:
            break;
    }
}

void SongBuilder::TakeName(std::span<const std::uint8_t> bytes) {
    const std::string_view name(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    if (options_.honourZelIgnore && name.find("zel_ignore") != std::string_view::npos &&
        track_->ignored == 0) {
        track_->ignored = 1;
        result_.report.Add(LoadChange::TrackIgnored);
    }
    if (track_->name.empty()) {
        track_->name = name;
    } else if (track_ == &song_.tracks.front()) {
        track_->last->length = 0;
        result_.report.Add(LoadChange::NameBlanked);
    }
}

void SongBuilder::TakeTempo(const MidiEvent& event) {
    const TempoEntry entry = TempoEntryOf(event);
    if (event.data[0] == 0 && event.data[1] == 0 && event.data[2] == 0) {
        result_.report.Add(LoadChange::TempoZeroReplaced);
    }
    if (chunk_ == 0) {
        song_.tempos.push_back(entry);
    }
    AddClockChange(entry.tick, entry.tempo);
}

void SongBuilder::TakeTimeSignature(const MidiEvent& event) {
    if (chunk_ == 0) {
        song_.timeSignatures.push_back(TimeSignatureEntryOf(event));
    }
    AddClockChange(event.tick, 0);
}

void SongBuilder::TakeKeySignature(const MidiEvent& event) {
    const auto index = static_cast<std::size_t>(track_ - song_.tracks.data());
    song_.keySignatures[index].push_back(
        {static_cast<std::int8_t>(event.data[0]), event.data[1], event.tick});
}

// A change starts at its tick: what stands there already counts from it too, so that its time is
// rounded as the finished map rounds it.
void SongBuilder::AddClockChange(std::int32_t tick, std::int32_t tempo) {
    if (chunk_ != 0) {
        result_.tempoMapInFirstTrack = false;
        return;
    }
    if (split_) {
        return;
    }
    const bool timesFit = tick == clock_.LastChange();
    clock_.AddChange(tick, tempo);
    const std::int32_t ms = clock_.MsAt(tick);
    if (timesFit) {
        return; // of many changes at one tick only the first walks back
    }
    for (EventLink event = track_->last; event && event->tick == tick; event = event->prev) {
        event->timeMs = ms;
    }
}

void SongBuilder::EndOfTrack(std::uint32_t tick, std::uint64_t bytesAfter) {
    endTicks_.back() = tick;
    if (bytesAfter > 0) {
        result_.report.Add(LoadChange::BytesAfterEndOfTrack, static_cast<std::int64_t>(bytesAfter));
    }
}

void SongBuilder::AddShortNote(const Track& track, EventLink off) {
    result_.shortNotes.push_back({off, static_cast<std::int32_t>(&track - song_.tracks.data())});
}

void SongBuilder::EndTrack() {
    pairing_.EndTrack();
    result_.report.Add(LoadChange::NoteOnVelocityZero, velocityZero_);
    velocityZero_ = 0;
}

DecodeResult SongBuilder::Finish(std::uint32_t largestTick) {
    if (split_ && chunk_ > 0) {
        MergeChunks();
    }
    // Never so long that the end of the saved file could not be read again.
    song_.songLength = static_cast<std::int32_t>(
        std::clamp(largestTick + kRoomBehindLastEvent, kShortestSong, kMostTick));
    EndTracks();
    CompleteLists();
    result_.drumBanks = drumBanks_;
    result_.balanced = pairing_.AllPaired();
    result_.timesAreSet = !split_ && result_.tempoMapInFirstTrack &&
                          std::max(largestStoredTick_, clock_.LastChange()) <= song_.songLength;
    return std::move(result_);
}

void SongBuilder::MergeChunks() {
    for (Track& track : song_.tracks) {
        SortByTick(track);
    }
    SetNoteOnOffPointers(song_);
    result_.shortNotes = FindShortNotes(song_, options_.minimumNoteLength);
    std::stable_sort(
        result_.sysex.begin(), result_.sysex.end(),
        [](const SysexPlace& a, const SysexPlace& b) { return a.event->tick < b.event->tick; });
}

// Every track ends at the song's length, whether its chunk said where it ends or not.
void SongBuilder::EndTracks() {
    for (const std::int64_t tick : endTicks_) {
        if (tick < 0) {
            result_.report.Add(LoadChange::EndOfTrackAdded);
        } else if (tick != song_.songLength) {
            result_.report.Add(LoadChange::EndOfTrackMoved);
        }
    }
    clock_.BeginTrack();
    const std::int32_t endMs = clock_.MsAt(song_.songLength);
    for (Track& track : song_.tracks) {
        AppendEvent(track, NewMetaEvent(song_.pool, song_.songLength, kMetaEndOfTrack, {}));
        track.last->timeMs = endMs;
        track.cursor = track.first;
    }
}

// One entry at least and a spare one behind, as editors expect them.
void SongBuilder::CompleteLists() {
    if (song_.tempos.empty()) {
        song_.tempos.push_back({.tick = 0});
    }
    song_.tempos.emplace_back();
    song_.tempoCount = static_cast<std::int32_t>(song_.tempos.size());
    song_.timeSignatures.resize(std::max<std::size_t>(song_.timeSignatures.size(), 1) + 1);
    song_.timeSignatureCount = static_cast<std::int32_t>(song_.timeSignatures.size());
}

} // namespace tracksmith::song
