#include "song/midi_file_reader.h"

#include <new>

#include "base/memory_budget.h"

#include "song/event_walker.h"
#include "song/measure_sink.h"
#include "song/song_builder.h"

namespace tracksmith::song {
namespace {

[[noreturn]] void Raise(const ReaderFault& fault, ReaderPass pass, MessageHost& host) {
    RaiseMidiError(host, FaultText(fault, pass, host.CurrentLanguage()));
}

MeasureSink Measure(std::span<const std::uint8_t> file, const FileHeader& header, bool keepStatus) {
    MeasureSink sink;
    EventWalker walker(file, keepStatus, sink);
    walker.Walk(header.trackCount);
    sink.result.songLength = static_cast<std::int32_t>(walker.LargestTick());
    return sink;
}

// Small files fit into the budget whatever they hold: an event takes two bytes of the file at
// least. Only for the others the exact need is measured before anything is built.
void CheckMemory(std::span<const std::uint8_t> file, const FileHeader& header, bool keepStatus,
                 std::uint64_t budget) {
    constexpr std::uint64_t kMostPerFileByte = sizeof(MidiEvent) / 2;
    if (file.size() * kMostPerFileByte <= budget) {
        return;
    }
    const ScanResult need = Measure(file, header, keepStatus).result;
    if (need.events * sizeof(MidiEvent) + need.payloadBytes > budget) {
        throw ReaderFault{FaultKind::OutOfMemory, 0, 0, 0};
    }
}

DecodeResult Build(Song& song, std::span<const std::uint8_t> file, const FileHeader& header,
                   const DecodeOptions& options) {
    SongBuilder builder(song, header, options);
    EventWalker walker(file, song.runningStatusAcrossSysex != 0, builder);
    const std::uint64_t end = walker.Walk(header.trackCount);
    DecodeResult result = builder.Finish(walker.LargestTick());
    if (end < file.size()) {
        result.report.Add(LoadChange::BytesAfterLastTrack,
                          static_cast<std::int64_t>(file.size() - end));
    }
    if (header.trackCount == 1 && file[9] != 0) {
        result.report.Add(LoadChange::FormatChanged);
    }
    return result;
}

// A fault that measuring meets anywhere in the file goes before one that building met.
[[noreturn]] void RaiseFirst(const ReaderFault& fault, std::span<const std::uint8_t> file,
                             const FileHeader& header, bool keepStatus, MessageHost& host) {
    try {
        Measure(file, header, keepStatus);
    } catch (const ReaderFault& measured) {
        Raise(measured, ReaderPass::Measure, host);
    }
    Raise(fault, ReaderPass::Build, host);
}

FileHeader ReadHeaderOrRaise(std::span<const std::uint8_t> file, MessageHost& host) {
    try {
        return ReadFileHeader(file);
    } catch (const ReaderFault& fault) {
        Raise(fault, ReaderPass::Measure, host);
    }
}

} // namespace

DecodeResult DecodeMidiData(Song& song, std::span<const std::uint8_t> file,
                            const DecodeOptions& options, MessageHost& host) {
    const FileHeader header = ReadHeaderOrRaise(file, host);
    const bool keepStatus = song.runningStatusAcrossSysex != 0;
    const std::uint64_t budget =
        options.memoryBudget != 0 ? options.memoryBudget : SongMemoryBudget();
    try {
        CheckMemory(file, header, keepStatus, budget);
        return Build(song, file, header, options);
    } catch (const ReaderFault& fault) {
        RaiseFirst(fault, file, header, keepStatus, host);
    } catch (const std::bad_alloc&) {
        RaiseFirst({FaultKind::OutOfMemory, 0, 0, 0}, file, header, keepStatus, host);
    }
}

ScanResult ScanMidiData(std::span<const std::uint8_t> file, MessageHost& host) {
    const FileHeader header = ReadHeaderOrRaise(file, host);
    try {
        const MeasureSink sink = Measure(file, header, false);
        if (sink.dataFault) {
            Raise(sink.fault, ReaderPass::Build, host);
        }
        return sink.result;
    } catch (const ReaderFault& fault) {
        Raise(fault, ReaderPass::Measure, host);
    }
}

} // namespace tracksmith::song
