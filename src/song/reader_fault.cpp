#include "song/reader_fault.h"

#include "song/texts.h"

namespace tracksmith::song {
namespace {

std::string PlaceLines(const ReaderFault& fault, const char* middle = "") {
    return "\nSource pointer: " + std::to_string(fault.position) + middle;
}

std::string SongPositionLine(const ReaderFault& fault) {
    return "\nSong position:  " + std::to_string(fault.tick);
}

std::string TrackHeaderText(const ReaderFault& fault, Language language) {
    return std::string(texts::kTrackHeader.In(language)) + std::to_string(fault.value) +
           std::string(texts::kTrackHeaderAt.In(language)) + std::to_string(fault.position) + "!";
}

// Only the German wordings name the place.
std::string InvalidOffsetText(const ReaderFault& fault, Language language) {
    std::string text(texts::kInvalidOffset.In(language));
    return language == Language::German ? text + PlaceLines(fault) + SongPositionLine(fault) : text;
}

std::string NoRunningStatusText(const ReaderFault& fault, Language language) {
    std::string text(texts::kNoRunningStatus.In(language));
    if (language == Language::German) {
        text += PlaceLines(fault, "\nData byte:        ") + std::to_string(fault.value) +
                SongPositionLine(fault);
    }
    return text;
}

std::string DataTooLargeText(const ReaderFault& fault, Language language) {
    return std::string(texts::kDataTooLarge.In(language)) + std::to_string(fault.position) +
           std::string(texts::kDataTooLargeValue.In(language)) + std::to_string(fault.value) +
           std::string(texts::kDataTooLargeEnd.In(language));
}

std::string RunningStatusTooHighText(const ReaderFault& fault, ReaderPass pass, Language language) {
    return pass == ReaderPass::Build ? std::string(texts::kErrorA.In(language))
                                     : std::string(texts::kRunningStatusTooHigh.In(language)) +
                                           std::to_string(fault.value);
}

const Text& PlainText(FaultKind kind, ReaderPass pass) {
    const bool measure = pass == ReaderPass::Measure;
    switch (kind) {
        case FaultKind::Header1:
            return texts::kHeader1;
        case FaultKind::Header2:
            return texts::kHeader2;
        case FaultKind::CommandF1ToF6:
            return measure ? texts::kCommandF1ToF6 : texts::kErrorB;
        case FaultKind::CommandFE:
            return measure ? texts::kCommandFE : texts::kErrorC;
        case FaultKind::EndOfTrackLength:
            return measure ? texts::kEndOfTrackLength : texts::kErrorD;
        case FaultKind::StatusTooLow:
            return texts::kErrorE;
        case FaultKind::OutOfMemory:
            return texts::kOutOfMemory;
        case FaultKind::TrackHeader:
            return texts::kTrackHeader1;
        default:
            return texts::kMidiFile;
    }
}

} // namespace

std::string FaultText(const ReaderFault& fault, ReaderPass pass, Language language) {
    switch (fault.kind) {
        case FaultKind::TrackHeader:
            return pass == ReaderPass::Measure ? TrackHeaderText(fault, language)
                                               : std::string(texts::kTrackHeader1.In(language));
        case FaultKind::InvalidOffset:
            return InvalidOffsetText(fault, language);
        case FaultKind::NoRunningStatus:
            return NoRunningStatusText(fault, language);
        case FaultKind::RunningStatusTooHigh:
            return RunningStatusTooHighText(fault, pass, language);
        case FaultKind::DataTooLarge:
            return DataTooLargeText(fault, language);
        default:
            return std::string(PlainText(fault.kind, pass).In(language));
    }
}

} // namespace tracksmith::song
