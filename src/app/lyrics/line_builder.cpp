#include "app/lyrics/line_builder.h"

#include <algorithm>
#include <string>
#include <utility>

namespace tracksmith::lyrics {
namespace {

constexpr std::string_view kSpaces = " \t";
constexpr std::string_view kLineMarks = "\r\n/\\";
/// A line of more characters is broken.
constexpr std::ptrdiff_t kLongLine = 60;
/// Quarter notes of silence that end a line where nothing else does.
constexpr std::int32_t kLongPause = 4;

bool IsSpace(char sign) {
    return kSpaces.find(sign) != std::string_view::npos;
}

bool SaysWordEnd(const RawText& raw) {
    return IsSpace(raw.bytes.front()) || IsSpace(raw.bytes.back());
}

bool HasMark(const RawText& raw) {
    return kLineMarks.find(raw.bytes.front()) != std::string_view::npos ||
           kLineMarks.find(raw.bytes.back()) != std::string_view::npos;
}

bool HasWords(const RawText& raw) {
    return raw.bytes.find(' ') != std::string_view::npos;
}

std::ptrdiff_t CharactersOf(std::string_view utf8) {
    return std::ranges::count_if(
        utf8, [](char sign) { return (static_cast<unsigned char>(sign) & 0xC0U) != 0x80U; });
}

// Without the tags for programs in front, "{@Latin}" or "{#Title=...}".
std::string_view WithoutTags(std::string_view bytes) {
    while (bytes.starts_with("{@") || bytes.starts_with("{#")) {
        const std::size_t end = bytes.find('}');
        bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
    }
    return bytes;
}

} // namespace

LineBuilder::LineBuilder(const LyricSource& source, TextEncoding encoding, std::int32_t division)
    : source_(source),
      encoding_(encoding),
      division_(std::max(division, 1)),
      spaceless_(std::ranges::none_of(source.texts, SaysWordEnd)),
      hasMarks_(std::ranges::any_of(source.texts, HasMark)),
      wholeLines_(spaceless_ && !hasMarks_ &&
                  2 * std::ranges::count_if(source.texts, HasWords) > std::ssize(source.texts)) {}

std::vector<Line> LineBuilder::Build(std::vector<Chord>& chords) {
    for (const RawText& raw : source_.texts) {
        Take(raw, chords);
    }
    EndLine();
    FindShowTicks();
    return std::move(lines_);
}

void LineBuilder::Take(const RawText& raw, std::vector<Chord>& chords) {
    std::string_view bytes = source_.karaoke ? raw.bytes : WithoutTags(raw.bytes);
    if (!source_.karaoke && bytes.starts_with('%')) {
        bytes.remove_prefix(1);
        chords.push_back({raw.tick, DisplayText(bytes.substr(0, bytes.find_first_of(" \r\n")))});
        return;
    }
    if (!hasMarks_ && !line_.syllables.empty() &&
        std::int64_t{raw.tick} - line_.syllables.back().tick >=
            std::int64_t{kLongPause} * division_) {
        EndLine();
    }
    const bool isPage = bytes.starts_with('\\') && !bytes.starts_with("\\%");
    if (isPage || bytes.starts_with('/')) {
        EndLine();
        bytes.remove_prefix(1);
    }
    for (;;) {
        const std::size_t end = bytes.find_first_of("\r\n");
        Add(raw.tick, bytes.substr(0, end));
        if (end == std::string_view::npos) {
            return;
        }
        EndLine();
        bytes.remove_prefix(end + 1);
    }
}

void LineBuilder::Add(std::int32_t tick, std::string_view bytes) {
    const bool ends = bytes.size() > 1 && (bytes.back() == '/' || bytes.back() == '\\');
    if (ends) {
        bytes.remove_suffix(1);
    }
    if (bytes.starts_with("\\%")) {
        bytes.remove_prefix(1);
    }
    if (line_.text.empty()) {
        const std::size_t first = bytes.find_first_not_of(kSpaces);
        bytes.remove_prefix(std::min(first, bytes.size()));
    }
    std::string text = DisplayText(bytes, encoding_);
    if (spaceless_ && text.size() > 1 && text.back() == '-') {
        text.pop_back();
    } else if (spaceless_ && !text.empty()) {
        text += ' ';
    }
    const bool wordBegins = !line_.text.empty() && (line_.text.back() == ' ' || text[0] == ' ');
    if (wordBegins && CharactersOf(line_.text) + CharactersOf(text) > kLongLine) {
        EndLine();
        text.erase(0, text.find_first_not_of(' '));
    }
    if (!text.empty()) {
        line_.text += text;
        line_.syllables.push_back({tick, static_cast<std::uint32_t>(line_.text.size())});
    }
    if (ends || wholeLines_) {
        EndLine();
    }
}

void LineBuilder::EndLine() {
    if (line_.text.find_first_not_of(' ') != std::string::npos) {
        lines_.push_back(std::move(line_));
    }
    line_ = {};
}

// A beat before its first syllable, but not before the line in front has sounded for a while.
void LineBuilder::FindShowTicks() {
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        const std::int64_t start = lines_[i].syllables.front().tick;
        const std::int64_t last = i == 0 ? 0 : lines_[i - 1].syllables.back().tick;
        lines_[i].showTick =
            static_cast<std::int32_t>(std::max((last + start + 1) / 2, start - division_));
    }
}

} // namespace tracksmith::lyrics
