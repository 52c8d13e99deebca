#include "song/examine_file.h"

#include "song/event_walker.h"
#include "song/measure_sink.h"

namespace tracksmith::song {
namespace {

// Name and length of a chunk, in bytes.
constexpr std::uint64_t kChunkHeader = 8;

// Where the chunk of a track ends by the lengths that the chunks declare.
std::uint64_t DeclaredEnd(std::span<const std::uint8_t> file, std::uint32_t track) {
    std::uint64_t end = kHeaderBytes;
    for (std::uint32_t i = 0; i <= track && end + kChunkHeader <= file.size(); ++i) {
        std::uint64_t length = 0;
        for (std::uint64_t at = end + 4; at < end + kChunkHeader; ++at) {
            length = (length << 8) | file[at];
        }
        end += kChunkHeader + length;
    }
    return end;
}

bool EndsTooEarly(std::span<const std::uint8_t> file, const ReaderFault& fault,
                  std::uint32_t track) {
    if (fault.kind == FaultKind::TrackHeader) {
        return fault.position + kChunkHeader > file.size();
    }
    if (fault.kind == FaultKind::InvalidOffset && fault.position >= file.size()) {
        return true;
    }
    // A length that reaches behind the end of a chunk which itself does.
    return fault.kind == FaultKind::InvalidOffset && DeclaredEnd(file, track) > file.size();
}

} // namespace

FileFindings ExamineMidiData(std::span<const std::uint8_t> file, bool runningStatusAcrossSysex) {
    FileFindings findings;
    MeasureSink sink;
    try {
        const FileHeader header = ReadFileHeader(file);
        findings.trackCount = header.trackCount;
        EventWalker(file, runningStatusAcrossSysex, sink).Walk(header.trackCount);
        if (!sink.dataFault) {
            findings.memory = sink.result.events * sizeof(MidiEvent) + sink.result.payloadBytes;
            return findings;
        }
        findings.fault = sink.fault;
        findings.track = sink.faultTrack;
    } catch (const ReaderFault& fault) {
        findings.fault = fault;
        findings.track = fault.kind == FaultKind::TrackHeader ? fault.value : sink.track;
    }
    findings.endsTooEarly = EndsTooEarly(file, *findings.fault, findings.track);
    return findings;
}

} // namespace tracksmith::song
