#include "app/cli/info_json.h"

#include <nlohmann/json.hpp>
#include <utility>

#include "base/display_text.h"

#include "app/cli/reading_options.h"
#include "app/kept_words.h"
#include "instruments/catalogue.h"
#include "song/song_position.h"

namespace tracksmith::cli {
namespace {

// Keeps the fields in the order in which they are written here.
using Json = nlohmann::ordered_json;

constexpr int kInfoSchema = 1;

// Texts of a song need not be valid UTF-8.
std::string Line(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string HexText(const std::string& bytes) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        text += {kDigits[value >> 4U], kDigits[value & 15U]};
    }
    return text;
}

// The fields that every line begins with.
Json Start(const std::string& file, bool ok) {
    Json json{{"schema", kInfoSchema}};
    if (IsUtf8(file)) {
        json["file"] = file;
    } else {
        json["file"] = DisplayPath(file);
        json["fileBytes"] = HexText(file);
    }
    json["ok"] = ok;
    return json;
}

Json OrNull(const std::optional<std::uint8_t>& value) {
    return value ? Json(int{*value}) : Json();
}

Json TracksJson(const app::SongDescription& song) {
    Json tracks = Json::array();
    for (const auto& track : song.tracks) {
        tracks.push_back(
            {{"name", track.name},
             {"channel", track.channel < song::kMidiChannels ? Json(track.channel + 1) : Json()},
             {"events", track.events},
             {"notes", track.notes}});
    }
    return tracks;
}

Json VoiceJson(const instruments::NamedVoice& voice) {
    return voice.name.empty() ? Json() : Json(voice.name);
}

// How sure the name is: by the instrument's own numbers, by another bank's, or not at all.
Json MatchJson(const instruments::NamedVoice& voice) {
    if (voice.name.empty()) {
        return {};
    }
    switch (voice.match) {
        case instruments::VoiceMatch::Exact:
            return "exact";
        case instruments::VoiceMatch::Similar:
            return "similar";
        default:
            return "unknown";
    }
}

Json ChannelsJson(const app::SongDescription& song,
                  std::span<const instruments::NamedVoice> voices) {
    Json channels = Json::array();
    for (const auto& line : song.channels) {
        const instruments::NamedVoice& voice = voices[channels.size()];
        channels.push_back({{"channel", line.channel + 1},
                            {"notes", line.notes},
                            {"bankMsb", OrNull(line.bankMsb)},
                            {"bankLsb", OrNull(line.bankLsb)},
                            {"program", OrNull(line.program)},
                            {"voice", VoiceJson(voice)},
                            {"voiceMatch", MatchJson(voice)}});
    }
    return channels;
}

Json FamiliesJson(const app::SongDescription& song) {
    Json families = Json::array();
    for (const instruments::SysexFamily family : song.families) {
        families.push_back(instruments::FamilyName(family).english);
    }
    return families;
}

Json ChangesJson(const song::LoadReport& report) {
    Json changes = Json::object();
    for (std::size_t i = 0; i < song::kLoadChangeCount; ++i) {
        const auto change = static_cast<song::LoadChange>(i);
        if (report[change] != 0) {
            changes[song::LoadChangeName(change)] = report[change];
        }
    }
    return changes;
}

Json KeptJson(const instruments::PreparationReport& preparation) {
    const app::KeptSums sums = app::SumsOf(preparation);
    Json kept = Json::object();
    for (std::size_t i = 0; i < sums.size(); ++i) {
        kept[std::string(app::KeptName(static_cast<app::KeptKind>(i)))] = {
            {"count", sums.at(i).count}, {"channels", sums.at(i).channels}};
    }
    return kept;
}

} // namespace

std::string InfoJson(const std::string& file, const app::SongDescription& song,
                     std::span<const instruments::NamedVoice> voices) {
    Json json = Start(file, true);
    json.update({{"error", nullptr},
                 {"format", int{song.format}},
                 {"fileFormat", int{song.fileFormat}},
                 {"division", song.division},
                 {"trackCount", song.tracks.size()},
                 {"events", song.events},
                 {"notes", song.notes},
                 {"tempos", song.tempos.size()},
                 {"timeSignatures", song.timeSignatures.size()},
                 {"keySignatures", song.keySignatures},
                 {"sysex", song.sysex},
                 {"families", FamiliesJson(song)},
                 {"lyrics", song.lyrics},
                 {"songLength", song.songLength},
                 {"lengthMs", song.lengthMs},
                 {"lengthText", song.lengthText},
                 {"tracks", TracksJson(song)},
                 {"channels", ChannelsJson(song, voices)},
                 {"changes", ChangesJson(song.changes)}});
    return Line(json);
}

std::string ConversionJson(const std::string& file, const std::string& target,
                           const instruments::PreparationReport& preparation) {
    Json json = Start(file, true);
    json["target"] = DisplayPath(target);
    const instruments::Instrument* instrument = instruments::FindInstrument(preparation.instrument);
    if (preparation.prepared && instrument != nullptr) {
        json["preparation"] = {{"instrument", instrument->name},
                               {"inserted", preparation.inserted},
                               {"removed", preparation.removed},
                               {"found", preparation.found},
                               {"kept", KeptJson(preparation)}};
    } else {
        json["preparation"] = nullptr;
    }
    return Line(json);
}

std::string CheckJson(const std::string& file, const song::Song& song,
                      const health::HealthReport& report, const std::string& instrument,
                      Language language) {
    Json findings = Json::array();
    for (const health::Finding& finding : report.findings) {
        const bool placed = !finding.ticks.empty();
        const bool all = finding.channel == health::kAllChannels;
        findings.push_back(
            {{"rule", health::RuleName(finding.rule)},
             {"severity", health::SeverityName(finding.severity)},
             {"channel", all ? Json() : Json(finding.channel + 1)},
             {"count", finding.count},
             {"tick", placed ? Json(finding.ticks.front()) : Json()},
             {"position",
              placed ? Json(song::SongPositionToMTC(song, finding.ticks.front())) : Json()},
             {"ticks", finding.ticks},
             {"text", health::Title(finding, instrument, language)},
             {"repairable", finding.repairable}});
    }
    Json json = Start(file, true);
    json["error"] = nullptr;
    json["findings"] = std::move(findings);
    return Line(json);
}

std::string InfoFailureJson(const InputFailure& failure, Language language) {
    const app::RefusalAdvice& advice = failure.advice;
    Json json = Start(failure.name, false);
    json["error"] = failure.message;
    if (advice.kind != app::RefusalKind::None) {
        json["fault"] = app::RefusalKindName(advice.kind);
        json["advice"] = advice.In(language);
    }
    if (advice.track > 0) {
        json["track"] = advice.track;
        json["position"] = advice.position;
    }
    if (advice.loadableWithRunningStatusAcrossSysex) {
        json["loadableWith"] = kRunningStatusAcrossSysexSwitch;
    }
    return Line(json);
}

} // namespace tracksmith::cli
