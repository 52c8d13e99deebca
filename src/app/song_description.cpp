#include "app/song_description.h"

#include <algorithm>
#include <array>

#include "base/display_text.h"
#include "base/system/file_io.h"

#include "song/song_position.h"

namespace tracksmith::app {
namespace {

constexpr std::uint8_t kBankSelectMsb = 0;
constexpr std::uint8_t kBankSelectLsb = 32;

struct ChannelState {
    SongDescription::ChannelLine line;
    bool used = false;
};

using Channels = std::array<ChannelState, 16>;

void TakeFirst(std::optional<std::uint8_t>& value, std::uint8_t found) {
    if (!value) {
        value = found;
    }
}

// The bank in force at a channel's first program change belongs to it; later ones do not.
void CountChannelMessage(const song::MidiEvent& event, Channels& channels) {
    ChannelState& state = channels[event.Channel()];
    state.used = true;
    if (event.IsNoteOn()) {
        ++state.line.notes;
    } else if (event.Command() == song::kProgramChange) {
        TakeFirst(state.line.program, event.data1);
    } else if (event.Command() == song::kControlChange && !state.line.program) {
        if (event.data1 == kBankSelectMsb) {
            state.line.bankMsb = event.data2;
        } else if (event.data1 == kBankSelectLsb) {
            state.line.bankLsb = event.data2;
        }
    }
}

// Removed messages are in the chain still, without length.
void CountSysex(const song::MidiEvent& event, SongDescription& description) {
    if (event.length == 0) {
        return;
    }
    ++description.sysex;
    // The family is told by the first bytes; in the song the F0 is not among them.
    std::array<std::uint8_t, 16> head{song::kSystemExclusive};
    const auto payload = event.Payload();
    const std::size_t known = std::min(payload.size(), head.size() - 1);
    std::copy_n(payload.begin(), known, head.begin() + 1);
    const instruments::SysexFamily family =
        instruments::SysexFamilyOf(instruments::SysexBytes(head).first(known + 1));
    if (family != instruments::SysexFamily::None &&
        std::ranges::find(description.families, family) == description.families.end()) {
        description.families.push_back(family);
    }
}

void CountEvent(const song::MidiEvent& event, SongDescription& description,
                SongDescription::TrackLine& line, Channels& channels) {
    if (event.IsChannelMessage()) {
        CountChannelMessage(event, channels);
        line.notes += event.IsNoteOn() ? 1 : 0;
    } else if (event.status == song::kSystemExclusive) {
        CountSysex(event, description);
    } else if (event.IsMeta(song::kMetaLyric)) {
        ++description.lyrics;
    }
}

std::string TitleOf(const session::Workspace& workspace) {
    for (const song::Track& track : workspace.song.tracks) {
        if (track.name.find_first_not_of(" \t\r\n") != std::string::npos &&
            track.name.find('\0') == std::string::npos) {
            return DisplayText(track.name);
        }
    }
    return DisplayText(system::PathText(workspace.file.source.stem()));
}

void DescribeTracks(const song::Song& song, SongDescription& description, Channels& channels) {
    for (const song::Track& track : song.tracks) {
        SongDescription::TrackLine line{.name = DisplayText(track.name),
                                        .channel = track.channel,
                                        .events = track.eventCount,
                                        .ignored = track.ignored != 0};
        for (song::ConstEventLink event = track.first; event; event = event->next) {
            CountEvent(*event, description, line, channels);
        }
        description.events += line.events;
        description.notes += line.notes;
        description.tracks.push_back(std::move(line));
    }
}

bool InSong(const song::Song& song, std::int32_t tick) {
    return tick >= 0 && tick <= song.songLength;
}

void DescribeTimeMap(const song::Song& song, SongDescription& description) {
    for (const song::TempoEntry& entry : song.tempos) {
        if (InSong(song, entry.tick)) {
            description.tempos.push_back({song::SongPositionToMTC(song, entry.tick),
                                          song::TickToMs(song, entry.tick), entry.tick, entry.bpm,
                                          entry.tempo});
        }
    }
    for (const song::TimeSignatureEntry& entry : song.timeSignatures) {
        if (InSong(song, entry.tick)) {
            description.metres.push_back({song::SongPositionToMTC(song, entry.tick),
                                          song::TickToMs(song, entry.tick), entry.tick,
                                          entry.numerator, entry.denominator});
        }
    }
}

} // namespace

SongDescription DescribeSong(const session::Workspace& workspace) {
    const song::Song& song = workspace.song;
    SongDescription description;
    description.title = TitleOf(workspace);
    description.format = song.format;
    description.fileFormat = song.fileFormat;
    description.division = song.division;
    description.songLength = song.songLength;
    description.lengthMs = song.lengthMs;
    description.lengthText = song.lengthText;
    description.changes = workspace.loadReport;
    Channels channels;
    DescribeTracks(song, description, channels);
    for (const auto& keys : song.keySignatures) {
        description.keySignatures += static_cast<std::int64_t>(keys.size());
    }
    for (std::size_t i = 0; i < channels.size(); ++i) {
        channels[i].line.channel = static_cast<std::uint8_t>(i);
        if (channels[i].used) {
            description.channels.push_back(channels[i].line);
        }
    }
    if (song.timeZoneCount > 0) {
        description.lengthPosition = song::SongPositionToMTC(song, song.songLength);
        DescribeTimeMap(song, description);
    }
    return description;
}

} // namespace tracksmith::app
