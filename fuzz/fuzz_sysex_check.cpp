#include "fuzz_song.h"

#include "instruments/sysex/check_sysexs.h"
#include "instruments/sysex/describe_sysex.h"
#include "instruments/sysex/sysex_family.h"
#include "song/midi_file_writer.h"

// Any file, prepared for any instrument: the song stays sound, its notes, texts and times stay as
// they were, a second run changes nothing, and once saved, loading and preparing give the same file
// again.

using namespace tracksmith;
using namespace tracksmith::fuzz;

namespace {

constexpr std::size_t kOptionBytes = 3;

instruments::SysexOptions OptionsOf(std::uint8_t bits, std::uint8_t more) {
    instruments::SysexOptions options;
    options.gmBeforeGs = (bits & 1) != 0;
    options.fixedTrack = (bits & 2) != 0;
    options.korgPartEqualizer = (bits & 4) != 0;
    options.yamahaDsps = (bits & 8) != 0;
    options.yamahaMasterEq = (bits & 16) != 0;
    options.yamahaVocalHarmony = (bits & 32) != 0;
    options.motifDsps = (bits & 64) != 0;
    options.motifMasterEq = (bits & 128) != 0;
    options.motifWithoutGmReset = (more & 1) != 0;
    options.defaultTrack = (more >> 1) - 3;
    options.partOutputs.fill(more);
    return options;
}

// Whether preparing may move or change the event.
bool IsSetUp(const song::MidiEvent& event) {
    const bool note = event.Command() == song::kNoteOn || event.Command() == song::kNoteOff;
    return event.status == song::kSystemExclusive || (event.IsChannelMessage() && !note);
}

// Everything of the song; without set-up and settings when `others` is set.
std::string Contents(const song::Song& song, bool others) {
    std::string text;
    for (const song::Track& track : song.tracks) {
        text += others ? std::string("|") : '|' + std::to_string(track.eventCount);
        for (song::ConstEventLink event = track.first; event; event = event->next) {
            if (others && IsSetUp(*event)) {
                continue;
            }
            text += ' ' + std::to_string(event->tick) + ':' + std::to_string(event->status) + ',' +
                    std::to_string(event->length) + ',' + std::to_string(event->data1) + ',' +
                    std::to_string(event->data2) + ',' + std::to_string(event->timeMs);
            text += event->data.Text();
        }
    }
    return text;
}

void Prepare(song::Song& song, instruments::InstrumentId id,
             const instruments::SysexOptions& options) {
    RecordingMessageHost host;
    instruments::SysexSession session(options, host);
    instruments::CheckSysexs(song, id, session);
    RequireSound(song);
    const std::string once = Contents(song, false);
    instruments::CheckSysexs(song, id, session);
    Require(Contents(song, false) == once, "the second run changes the song");
    Require(session.report.inserted == 0 && session.report.removed == 0,
            "the second run reports changes");
    instruments::SysexSession fresh(options, host);
    instruments::CheckSysexs(song, id, fresh);
    Require(Contents(song, false) == once, "the index was out of step");
    Require(host.messages.empty(), "message without an error");
}

void Describe(std::span<const std::uint8_t> bytes) {
    const instruments::SysexDescription words = instruments::DescribeSysex(bytes);
    Require(!words.german.empty() && !words.english.empty(), "no words for a message");
    instruments::FamilyName(instruments::SysexFamilyOf(bytes));
}

std::vector<std::uint8_t> Saved(const song::Song& song) {
    RecordingMessageHost host;
    return song::EncodeFormat1(song, {}, host);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static song::Song song; // loads follow each other in one song, as in the program
    if (size <= kOptionBytes) {
        return 0;
    }
    Describe({data, size});
    const InputOptions input(data[0]);
    const auto id = static_cast<instruments::InstrumentId>(data[1] % 120);
    const instruments::SysexOptions options =
        OptionsOf(data[2], static_cast<std::uint8_t>(data[0] ^ data[1]));
    song::DecodeResult result;
    const std::span<const std::uint8_t> file(data + kOptionBytes, size - kOptionBytes);
    if (!Decode(song, file, input, result)) {
        return 0;
    }
    const std::string others = Contents(song, true);
    Prepare(song, id, options);
    Require(Contents(song, true) == others, "a note or a text has changed");
    // Dropping removed messages and blanked names may shorten the song or end its need to be split,
    // so the file must be steady from the third generation on.
    std::vector<std::uint8_t> saved;
    for (int generation = 0; generation < 4; ++generation) {
        const std::vector<std::uint8_t> bytes = Saved(song);
        Require(generation < 3 || bytes == saved, "saving again changes the file");
        saved = bytes;
        Require(Decode(song, saved, input, result), "saved file cannot be loaded");
        Prepare(song, id, options);
    }
    song::ClearSong(song);
    return 0;
}
