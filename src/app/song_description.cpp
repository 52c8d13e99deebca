#include "app/song_description.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <span>
#include <string>
#include <string_view>

#include "base/display_text.h"
#include "base/system/file_io.h"

#include "song/channel_state.h"
#include "song/song_position.h"
#include "song/track_walk.h"

namespace tracksmith::app {
namespace {

struct ChannelCount {
    std::int64_t notes = 0;
    bool used = false;
};

using Channels = std::array<ChannelCount, song::kMidiChannels>;

/// Program changes and bank selects of every track.
struct VoiceEvents : song::EveryEvent {
    static bool Wants(const song::MidiEvent& event) {
        return event.Command() == song::kProgramChange ||
               (event.Command() == song::kControlChange &&
                (event.data1 == song::kBankMsb || event.data1 == song::kBankLsb));
    }
};

std::optional<std::uint8_t> ValueOf(const song::Setting& setting) {
    return setting.Known() ? std::optional(static_cast<std::uint8_t>(setting.value)) : std::nullopt;
}

// The bank in force at a channel's first program change belongs to it; later ones do not.
void DescribeVoices(const song::Song& song, std::span<SongDescription::ChannelLine> lines) {
    std::array<song::ChannelControls, song::kMidiChannels> first;
    song::TrackWalk<song::TickOrder, VoiceEvents> walk(song);
    while (const song::MidiEvent* event = walk.Take()) {
        song::ChannelControls& controls = first[event->Channel()];
        if (!controls.program.Known()) {
            controls.Take(song::LinkTo(*event));
        }
    }
    for (SongDescription::ChannelLine& line : lines) {
        const song::ChannelControls& controls = first[line.channel];
        line.program = ValueOf(controls.program);
        line.bankMsb = ValueOf(controls.controllers[song::kBankMsb]);
        line.bankLsb = ValueOf(controls.controllers[song::kBankLsb]);
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
        ChannelCount& channel = channels[event.Channel()];
        channel.used = true;
        channel.notes += event.IsNoteOn() ? 1 : 0;
        line.notes += event.IsNoteOn() ? 1 : 0;
    } else if (event.status == song::kSystemExclusive) {
        CountSysex(event, description);
    } else if (event.IsMeta(song::kMetaLyric)) {
        ++description.lyrics;
    }
}

// Names that programs give by themselves; compared in small letters, without digits and signs.
constexpr auto kNamesWithoutMeaning = std::to_array<std::string_view>(
    {"",          "track",      "spur",     "piste",       "untitled",     "unnamed",
     "unbenannt", "noname",     "sequence", "seq",         "conductor",    "conductortrack",
     "tempo",     "tempotrack", "master",   "mastertrack", "controltrack", "midi",
     "miditrack", "midiout",    "song",     "new",         "newsong",      "default"});

bool SaysSomething(std::string_view name) {
    std::string letters;
    for (const char sign : name) {
        const bool other = static_cast<unsigned char>(sign) >= 0x80;
        if (other || std::isalpha(static_cast<unsigned char>(sign)) != 0) {
            letters += static_cast<char>(other ? sign : sign | 0x20);
        }
    }
    return letters.size() > 1 && name.find('\0') == std::string_view::npos &&
           std::ranges::find(kNamesWithoutMeaning, letters) == kNamesWithoutMeaning.end();
}

// The name of the first track is that of the song; those of the others are parts.
std::string TitleOf(const session::Workspace& workspace) {
    const auto& tracks = workspace.song.tracks;
    const bool named =
        !tracks.empty() && (SaysSomething(tracks.front().name) || workspace.file.source.empty());
    return DisplayText(named ? tracks.front().name
                             : system::PathText(workspace.file.source.stem()));
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
            description.timeSignatures.push_back({song::SongPositionToMTC(song, entry.tick),
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
        if (channels[i].used) {
            description.channels.push_back({.channel = static_cast<std::uint8_t>(i),
                                            .notes = channels[i].notes,
                                            .bankMsb = {},
                                            .bankLsb = {},
                                            .program = {},
                                            .drumPart = workspace.preparation.drumMap.at(i) != 0});
        }
    }
    DescribeVoices(song, description.channels);
    if (song.timeZoneCount > 0) {
        description.lengthPosition = song::SongPositionToMTC(song, song.songLength);
        DescribeTimeMap(song, description);
    }
    return description;
}

} // namespace tracksmith::app
