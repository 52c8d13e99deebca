#pragma once

#include <cstdint>
#include <span>

#include "song/event_chain.h"
#include "song/event_walker.h"
#include "song/midi_file_reader.h"
#include "song/note_pairing.h"
#include "song/short_record.h"
#include "song/streaming_clock.h"

namespace tracksmith::song {

/// Sink of the event walker that builds a song: one record per kept event, clock times included.
/// Throws ReaderFault for what only building can find, std::bad_alloc when memory ends.
class SongBuilder {
public:
    SongBuilder(Song& song, const FileHeader& header, const DecodeOptions& options);

    void BeginTrack(std::uint32_t track);

    // Inlined by force: it is the larger half of loading.
    [[gnu::always_inline]] void Short(std::uint8_t status, std::uint8_t data1, std::uint8_t data2,
                                      std::uint32_t tick, std::uint64_t offset) {
        if (data1 > 127) [[unlikely]] {
            throw ReaderFault{FaultKind::DataTooLarge, offset, tick, data1};
        }
        if (data2 > 127) [[unlikely]] {
            result_.report.Add(LoadChange::DataByteTooLarge);
        }
        // Without a branch: whether a note ends by velocity 0 cannot be predicted.
        const std::uint32_t ends = static_cast<std::uint32_t>(data2 == 0) &
                                   static_cast<std::uint32_t>((status >> 4) == (kNoteOn >> 4));
        velocityZero_ += ends;
        status = static_cast<std::uint8_t>(status ^ (ends << 4));
        data2 = static_cast<std::uint8_t>(data2 | ((0U - ends) & kReleaseVelocity));
        if (data1 == kBankMsb) [[unlikely]] {
            drumBanks_ |= IsDrumBank(status, data1, data2);
        }
        Track& track = split_ ? song_.tracks[(status & 0x0FU) + 1U] : *track_;
        if (track.channel == 0xFF) [[unlikely]] {
            track.channel = static_cast<std::uint8_t>(status & 0x0F);
        }
        const EventLink event = song_.pool.NewEvent();
        const NotePairing::Ended ended = pairing_.Meet(status, data1, event, tick);
        WriteShortRecord(event, {status, data1, data2}, {track.last.Unit(), ended.noteOn.Unit()},
                         static_cast<std::int32_t>(tick), MsAt(tick));
        Link(track, event);
        if (ended.noteOn && static_cast<std::int32_t>(tick) - ended.tick <
                                options_.minimumNoteLength) [[unlikely]] {
            AddShortNote(track, event);
        }
    }

    void Sysex(std::span<const std::uint8_t> bytes, std::uint32_t tick);
    void Escape() { result_.report.Add(LoadChange::EscapeDropped); }
    void System() { result_.report.Add(LoadChange::SystemDropped); }
    void Meta(std::uint8_t type, std::span<const std::uint8_t> bytes, std::uint32_t tick);
    void EndOfTrack(std::uint32_t tick, std::uint64_t bytesAfter);
    void EndTrack();

    /// Completes the song after the walk; `largestTick` is the walker's.
    DecodeResult Finish(std::uint32_t largestTick);

private:
    // What a note-off that was a note-on of velocity 0 carries.
    static constexpr std::uint8_t kReleaseVelocity = 17;

    std::int32_t MsAt(std::uint32_t tick) {
        return split_ ? 0 : clock_.MsAt(static_cast<std::int32_t>(tick));
    }

    void Append(Track& track, const MidiEvent& values) {
        const EventLink event = song_.pool.NewEvent();
        *event = values;
        Link(track, event);
    }
    static void Link(Track& track, EventLink event) {
        track.last->next = event;
        track.last = event;
        ++track.eventCount;
    }
    void AppendLong(Track& track, std::uint8_t status, std::uint8_t type,
                    std::span<const std::uint8_t> bytes, std::uint32_t tick);

    void AddShortNote(const Track& track, EventLink off);
    Track& AddTrack();
    bool DropMeta(std::uint8_t type, std::size_t size);
    void TakeName(std::span<const std::uint8_t> bytes);
    void TakeTempo(const MidiEvent& event);
    void TakeTimeSignature(const MidiEvent& event);
    void TakeKeySignature(const MidiEvent& event);
    void AddClockChange(std::int32_t tick, std::int32_t tempo);
    void MergeChunks();
    void CompleteLists();
    void EndTracks();

    Song& song_;
    const DecodeOptions& options_;
    bool split_;
    std::uint32_t chunk_ = 0;
    Track* track_ = nullptr; // where meta events and, without splitting, all events go
    StreamingClock clock_;
    NotePairing pairing_;
    std::int64_t velocityZero_ = 0;
    bool drumBanks_ = false;
    std::int32_t largestStoredTick_ = 0;
    std::vector<std::int64_t> endTicks_; // -1 where a chunk had no End of Track
    DecodeResult result_;
};

} // namespace tracksmith::song
