#include "instruments/sysex/sysex_track.h"

#include <algorithm>

namespace tracksmith::instruments {
namespace {

constexpr std::int32_t kUsualTrack = 10;

std::int32_t IndexOf(const song::Song& song, std::vector<song::Track>::const_iterator track) {
    return track == song.tracks.end()
               ? -1
               : static_cast<std::int32_t>(std::distance(song.tracks.begin(), track));
}

std::int32_t DrumTrack(const song::Song& song) {
    return IndexOf(song, std::ranges::find_if(song.tracks, [](const song::Track& track) {
                       return track.ignored == 0 && track.channel == song::kDrumChannel;
                   }));
}

std::int32_t FirstOpenTrack(const song::Song& song) {
    return IndexOf(song, std::ranges::find(song.tracks, 0, &song::Track::ignored));
}

std::int32_t WantedTrack(const song::Song& song, const SysexSession& session) {
    const SysexOptions& options = session.options;
    if (song.tracks.size() < 2) {
        return 0;
    }
    if (options.gmBeforeGs) {
        const std::int32_t drums = DrumTrack(song);
        return drums >= 0 ? drums : options.defaultTrack;
    }
    if (options.fixedTrack) {
        return session.callingTrack != -1 ? session.callingTrack : options.defaultTrack;
    }
    return kUsualTrack;
}

} // namespace

bool IsIgnored(const song::Song& song, std::int32_t track) {
    return song.tracks[static_cast<std::size_t>(track)].ignored != 0;
}

std::int32_t ChooseSysexTrack(const song::Song& song, const SysexSession& session) {
    if (song.tracks.empty()) {
        return -1;
    }
    const std::int32_t wanted = WantedTrack(song, session);
    const bool exists = wanted >= 0 && static_cast<std::size_t>(wanted) < song.tracks.size();
    const std::int32_t track = exists ? wanted : 0;
    return IsIgnored(song, track) ? FirstOpenTrack(song) : track;
}

} // namespace tracksmith::instruments
