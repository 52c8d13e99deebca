#include "fuzz_song.h"
#include "support/kept_sound.h"

#include "instruments/sysex/check_sysexs.h"

// Any file, prepared for any instrument: every note begins in the state in which it began before,
// as far as the report does not say otherwise.

using namespace tracksmith;
using namespace tracksmith::fuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static song::Song song;
    constexpr std::size_t kOptionBytes = 2;
    if (size <= kOptionBytes) {
        return 0;
    }
    song::DecodeResult result;
    if (!Decode(song, {data + kOptionBytes, size - kOptionBytes}, InputOptions(data[0]), result)) {
        return 0;
    }
    const auto before = test::PlayedNotes(song, test::InstrumentModel(test::DrumRule::ByReset));
    const auto id = static_cast<instruments::InstrumentId>(data[1] % instruments::kInstrumentCount);
    RecordingMessageHost host;
    instruments::SysexSession session({}, host);
    instruments::CheckSysexs(song, id, session);
    const auto after = test::PlayedNotes(song, test::ModelOf(id));
    for (const test::Loss& loss : test::UnsaidLosses(before, after, session.report)) {
        Require(false, "instrument " + std::to_string(id) + " tick " +
                           std::to_string(loss.note.tick) + " channel " +
                           std::to_string(loss.note.channel + 1) + ": " + loss.words);
    }
    song::ClearSong(song);
    return 0;
}
