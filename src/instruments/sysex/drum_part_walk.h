#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "instruments/sysex/part_voices.h"
#include "instruments/sysex/play_walk.h"
#include "instruments/sysex/set_up_marks.h"
#include "instruments/sysex/sysex_session.h"

namespace tracksmith::instruments {

/// Plays the whole song to two models at once, one of the instrument that it was made for, with the
/// messages that the operations took out, and one of the instrument that it is prepared for. Where
/// a note would be drums on one and melody on the other, what is missing is put in. One thread.
class DrumPartWalk {
public:
    /// Throws std::bad_alloc.
    DrumPartWalk(song::Song& song, SysexSession& session, DrumWay way);

    /// Raises EMidiError when memory ends.
    void Run();

private:
    // What gave a channel of the song its voice.
    struct VoicePlace {
        song::EventLink event;
        std::int32_t track = 0;
        song::EventLink bank; // the first bank select in front of the program change
        std::int32_t bankTrack = 0;
        bool program = false; // a program change, not a message
    };
    struct Channel {
        VoicePlace voice;
        song::EventLink bank; // since the last program change, or the last note behind that
        std::int32_t bankTrack = 0;
        bool noteSinceBank = false;
        std::uint8_t bankLsb = 0;
        bool played = false;
    };

    void MeetEvent(song::EventLink event, PlayPlace place);
    void MeetController(song::EventLink event, std::int32_t track);
    void MeetMessage(song::EventLink event, std::int32_t track);
    void MeetReset(ResetKind kind, bool removed);
    void MeetNote(std::size_t channel, PlayPlace place);
    bool Mend(std::size_t channel, PlayPlace note);
    void SelectBank(std::size_t channel);
    song::EventLink PutShort(const VoicePlace& voice, song::EventLink behind, int status,
                             std::uint8_t data1, std::uint8_t data2);
    bool MakePart(std::size_t channel, PlayPlace note);
    bool ChangePartLater(std::size_t channel, SysexBytes message);
    std::int32_t PartTick(std::size_t channel) const;
    song::Track& Track(std::int32_t track);

    song::Song& song_;
    SysexSession& session_;
    DrumWay way_;
    SetUpMarks marks_;
    PlayWalk walk_;
    PartVoices source_{std::nullopt};
    PartVoices target_;
    std::array<Channel, song::kMidiChannels> channels_;
    bool resetPassed_ = false; // that of InsertGSSysex
};

} // namespace tracksmith::instruments
