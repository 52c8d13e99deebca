#include "app/preparation_words.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include "app/texts.h"
#include "instruments/catalogue.h"
#include "instruments/sysex/describe_sysex.h"
#include "song/song_position.h"

namespace tracksmith::app {
namespace {

using instruments::PreparationReport;
using instruments::SysexNote;

/// Most groups of equal messages that one line names.
constexpr std::size_t kMostGroups = 5;
/// Most bytes that a row shows.
constexpr std::size_t kShownBytes = 48;

struct MessageGroup {
    SysexNote::What what;
    std::string words;
    std::size_t count = 0;
};

// Equal messages together, in the order in which they first occur.
std::vector<MessageGroup> GroupsOf(const PreparationReport& report, Language language) {
    std::vector<MessageGroup> groups;
    for (const SysexNote& note : report.notes) {
        const std::string words = instruments::DescribeSysex(note.bytes).In(language);
        const auto same = [&](const MessageGroup& group) {
            return group.what == note.what && group.words == words;
        };
        auto group = std::ranges::find_if(groups, same);
        if (group == groups.end()) {
            group = groups.insert(groups.end(), {note.what, words});
        }
        ++group->count;
    }
    return groups;
}

std::string_view SignOf(SysexNote::What what) {
    static constexpr auto kSigns = std::to_array<std::string_view>({"+", "−", "= "});
    return kSigns.at(static_cast<std::size_t>(what));
}

const Text& NameOf(SysexNote::What what) {
    static constexpr auto kNames =
        std::to_array<Text>({texts::kInserted, texts::kRemoved, texts::kFound});
    return kNames.at(static_cast<std::size_t>(what));
}

std::string Hexadecimal(const SysexNote& note) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    const std::size_t shown = std::min(note.bytes.size(), kShownBytes);
    std::string text;
    for (std::size_t i = 0; i < shown; ++i) {
        text += kDigits[note.bytes[i] >> 4];
        text += kDigits[note.bytes[i] & 0x0F];
        text += ' ';
    }
    if (shown < note.size) {
        return text + "…";
    }
    text.pop_back();
    return text;
}

} // namespace

std::string PreparationLine(const PreparationReport& report, Language language) {
    const instruments::Instrument* instrument = instruments::FindInstrument(report.instrument);
    if (!report.prepared || instrument == nullptr) {
        return {};
    }
    const std::vector<MessageGroup> groups = GroupsOf(report, language);
    std::string list;
    for (std::size_t i = 0; i < std::min(groups.size(), kMostGroups); ++i) {
        list += i == 0 ? "" : ", ";
        list.append(SignOf(groups[i].what)).append(std::to_string(groups[i].count));
        list.append(" ").append(groups[i].words);
    }
    if (groups.size() > kMostGroups) {
        list.append(", ").append(texts::AndMore(language, groups.size() - kMostGroups));
    }
    return texts::PreparedFor(language, instrument->name, list);
}

std::vector<PreparationRow> PreparationRows(const PreparationReport& report,
                                            const song::TimeMap& song, Language language) {
    std::vector<PreparationRow> rows;
    for (const SysexNote& note : report.notes) {
        rows.push_back({std::string(NameOf(note.what).In(language)),
                        instruments::DescribeSysex(note.bytes).In(language), Hexadecimal(note),
                        note.track + 1, note.tick, song::SongPositionToMTC(song, note.tick)});
    }
    return rows;
}

} // namespace tracksmith::app
