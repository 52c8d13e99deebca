#include "app/refusal_words.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

#include "base/display_text.h"
#include "base/memory_budget.h"
#include "base/system/file_io.h"
#include "base/system_reason.h"

#include "app/file_signature.h"
#include "app/refusal_texts.h"
#include "app/song_file.h"
#include "song/event_walker.h"
#include "song/examine_file.h"

namespace tracksmith::app {
namespace {

using song::FaultKind;
using Bytes = std::span<const std::uint8_t>;

constexpr auto kKindNames = std::to_array<std::string_view>(
    {"none", "unreadable", "tooLarge", "empty", "tooShort", "otherType", "bytesBefore",
     "damagedHeader", "noTracks", "tracksMissing", "noTrackHere", "cutOff", "damagedTrack",
     "notEnoughMemory"});

// Makes the sentence in both languages of a function that takes the language first.
template <typename Words, typename... Values>
RefusalAdvice Advice(RefusalKind kind, Words words, const Values&... values) {
    RefusalAdvice advice;
    advice.kind = kind;
    advice.german = words(Language::German, values...);
    advice.english = words(Language::English, values...);
    return advice;
}

RefusalAdvice Plain(RefusalKind kind, const Text& text) {
    return Advice(kind, [&](Language language) { return std::string(text.In(language)); });
}

// Where in `start` a song begins behind other bytes.
std::optional<std::size_t> SongInside(Bytes start) {
    for (std::size_t at = 1; at + song::kHeaderBytes <= start.size(); ++at) {
        if (song::BeginsLikeSong(start.subspan(at))) {
            return at;
        }
    }
    return std::nullopt;
}

// What a file is that does not begin like a song.
RefusalAdvice AdviseOnOtherType(Bytes start) {
    if (const Text* type = OtherFileType(start)) {
        return Advice(RefusalKind::OtherType, texts::IsOtherType, *type);
    }
    if (const std::optional<std::size_t> at = SongInside(start)) {
        RefusalAdvice advice = Advice(RefusalKind::BytesBefore, texts::BytesBefore, *at);
        advice.position = *at;
        return advice;
    }
    return Plain(RefusalKind::OtherType, texts::kNoSong);
}

const Text& WhatIsDamaged(FaultKind kind) {
    switch (kind) {
        case FaultKind::NoRunningStatus:
        case FaultKind::RunningStatusTooHigh:
            return texts::kValueWithoutCommand;
        case FaultKind::DataTooLarge:
            return texts::kValueOver127;
        case FaultKind::EndOfTrackLength:
            return texts::kLongEndOfTrack;
        case FaultKind::InvalidOffset:
            return texts::kWrongLength;
        default:
            return texts::kUnknownCommand;
    }
}

RefusalAdvice AdviseOnFault(const song::FileFindings& findings) {
    const song::ReaderFault& fault = *findings.fault;
    const std::uint32_t track = findings.track + 1;
    switch (fault.kind) {
        case FaultKind::Header1:
        case FaultKind::Header2:
            return Plain(RefusalKind::DamagedHeader, texts::kDamagedHeader);
        case FaultKind::NoTracks:
            return Plain(RefusalKind::NoTracks, texts::kNoTracks);
        case FaultKind::TrackHeader:
            return findings.endsTooEarly ? Advice(RefusalKind::TracksMissing, texts::TracksMissing,
                                                  findings.trackCount, findings.track)
                                         : Advice(RefusalKind::NoTrackHere, texts::NoTrackHere,
                                                  track, fault.position);
        default:
            return findings.endsTooEarly ? Advice(RefusalKind::CutOff, texts::CutOff, track)
                                         : Advice(RefusalKind::DamagedTrack, texts::DamagedTrack,
                                                  track, fault.position, WhatIsDamaged(fault.kind));
    }
}

bool LiesInTrack(RefusalKind kind) {
    return kind == RefusalKind::NoTrackHere || kind == RefusalKind::CutOff ||
           kind == RefusalKind::DamagedTrack || kind == RefusalKind::TracksMissing;
}

RefusalAdvice AdviseOnSong(Bytes bytes, std::uint64_t budget, bool keepStatus) {
    const song::FileFindings findings = song::ExamineMidiData(bytes, keepStatus);
    if (!findings.fault) {
        return findings.memory > budget ? Advice(RefusalKind::NotEnoughMemory,
                                                 texts::NotEnoughMemory, findings.memory, budget)
                                        : RefusalAdvice();
    }
    RefusalAdvice advice = AdviseOnFault(findings);
    advice.track = LiesInTrack(advice.kind) ? findings.track + 1 : 0;
    advice.position = findings.fault->position;
    if (!keepStatus) {
        const song::FileFindings kept = song::ExamineMidiData(bytes, true);
        advice.loadableWithRunningStatusAcrossSysex = !kept.fault && kept.memory <= budget;
    }
    return advice;
}

} // namespace

std::string_view RefusalKindName(RefusalKind kind) {
    return kKindNames[static_cast<std::size_t>(kind)];
}

RefusalAdvice AdviseOnRefusedFile(Bytes bytes, const song::DecodeOptions& options,
                                  bool runningStatusAcrossSysex) {
    if (bytes.empty()) {
        return Plain(RefusalKind::Empty, texts::kEmptyFile);
    }
    if (bytes.size() < song::kSmallestFile) {
        return Advice(RefusalKind::TooShort, texts::HasOnlyBytes, bytes.size());
    }
    if (!song::BeginsLikeSong(bytes)) {
        return AdviseOnOtherType(bytes.first(std::min(bytes.size(), kFileStartBytes)));
    }
    const std::uint64_t budget =
        options.memoryBudget != 0 ? options.memoryBudget : SongMemoryBudget();
    return AdviseOnSong(bytes, budget, runningStatusAcrossSysex);
}

RefusalAdvice AdviseOnRefusedFile(const std::filesystem::path& file,
                                  const song::DecodeOptions& options,
                                  bool runningStatusAcrossSysex) {
    const system::FileStart start = system::ReadFileStart(file, kFileStartBytes);
    RefusalAdvice advice;
    if (start.error) {
        advice = Advice(RefusalKind::Unreadable,
                        [&](Language language) { return SystemReason(start.error, language); });
    } else if (start.size > system::kMostFileBytes && song::BeginsLikeSong(start.bytes)) {
        advice = Plain(RefusalKind::TooLarge, texts::kTooLargeFile);
    } else {
        const std::optional<std::vector<std::uint8_t>> bytes = ReadSongFile(file);
        advice = AdviseOnRefusedFile(bytes ? Bytes(*bytes) : Bytes(start.bytes), options,
                                     runningStatusAcrossSysex);
    }
    advice.fileName = DisplayPath(system::PathText(file.filename()));
    return advice;
}

} // namespace tracksmith::app
