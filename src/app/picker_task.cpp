#include "app/picker_task.h"

#include <algorithm>

#include "app/channel_voices.h"
#include "instruments/voices/shared_sets.h"
#include "song/song_position.h"

namespace tracksmith::app {
namespace {

const SongDescription::ChannelLine* LineOf(const SongDescription& song, std::size_t channel) {
    const auto line =
        std::ranges::find(song.channels, channel, &SongDescription::ChannelLine::channel);
    return line == song.channels.end() ? nullptr : &*line;
}

bool PlaysDrums(const session::Workspace& workspace, const instruments::VoiceTables& tables,
                const SongDescription& song, const LookupOptionsOf& options, std::size_t channel) {
    const auto id = workspace.outputs.InstrumentOfChannel(channel);
    const SongDescription::ChannelLine* const line = LineOf(song, channel);
    return line == nullptr ? channel == song::kDrumChannel
                           : FirstVoiceOf(tables, *line, id, options(id)).drums;
}

} // namespace

instruments::StartBanks StartBanksOf(const session::Workspace& workspace,
                                     const instruments::VoiceTables& tables,
                                     const SongDescription& song, const LookupOptionsOf& options) {
    instruments::StartBanks banks{};
    for (std::size_t channel = 0; channel < banks.size(); ++channel) {
        const bool drums = PlaysDrums(workspace, tables, song, options, channel);
        banks[channel] = instruments::NumbersInForce(workspace.outputs.InstrumentOfChannel(channel),
                                                     drums, {}, {}, 0);
    }
    return banks;
}

instruments::PickerTask PickerTaskOf(const session::Workspace& workspace,
                                     const instruments::VoiceTables& tables,
                                     const SongDescription& song, const LookupOptionsOf& options,
                                     std::size_t channel) {
    instruments::PickerTask task;
    task.instrument = workspace.outputs.InstrumentOfChannel(channel);
    task.options = options(task.instrument);
    task.channel = channel;
    task.drums = PlaysDrums(workspace, tables, song, options, channel);
    const auto start = StartBanksOf(workspace, tables, song, options);
    const instruments::SongPatches patches(workspace.song, start);
    const auto changes = patches.Changes(channel);
    task.changes.assign(changes.begin(), changes.end());
    task.inForce = start.at(channel);
    for (const SongDescription::ChannelLine& line : song.channels) {
        const auto id = workspace.outputs.InstrumentOfChannel(line.channel);
        const auto voice = FirstVoiceOf(tables, line, id, options(id));
        if (line.program && id == task.instrument) {
            task.inSong.push_back({line.channel, {voice.drums, voice.numbers}});
        }
    }
    return task;
}

std::vector<std::string> PlacesOf(const instruments::PickerTask& task, const song::TimeMap& song) {
    std::vector<std::string> places;
    std::ranges::transform(task.changes, std::back_inserter(places),
                           [&](const instruments::VoiceChange& change) {
                               return song::SongPositionToMTC(song, change.tick);
                           });
    return places;
}

} // namespace tracksmith::app
