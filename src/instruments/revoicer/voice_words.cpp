#include "instruments/revoicer/voice_words.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>
#include <utility>

namespace tracksmith::instruments {
namespace {

using WrittenOut = std::pair<std::string_view, std::string_view>;

// Sorted by the abbreviation.
constexpr auto kAbbreviations = std::to_array<WrittenOut>({
    {"aahs", "aah"},
    {"ac", "acoustic"},
    {"accord", "accordion"},
    {"accordian", "accordion"},
    {"accrdion", "accordion"},
    {"aco", "acoustic"},
    {"acou", "acoustic"},
    {"analogue", "analog"},
    {"bagpipes", "bagpipe"},
    {"bari", "baritone"},
    {"basses", "bass"},
    {"bells", "bell"},
    {"brs", "brass"},
    {"brushes", "brush"},
    {"bs", "bass"},
    {"cathedral", "church"},
    {"cb", "contrabass"},
    {"cello", "cello"},
    {"chim", "chime"},
    {"choirs", "choir"},
    {"chr", "choir"},
    {"chrch", "church"},
    {"clar", "clarinet"},
    {"classic", "classical"},
    {"clav", "clavi"},
    {"clavinet", "clavi"},
    {"cln", "clean"},
    {"dist", "distortion"},
    {"distorted", "distortion"},
    {"drum", "drums"},
    {"ds", "distortion"},
    {"e", "electric"},
    {"el", "electric"},
    {"elec", "electric"},
    {"electro", "electronic"},
    {"ep", "electric piano"},
    {"fdl", "fiddle"},
    {"fing", "finger"},
    {"fingered", "finger"},
    {"fl", "flute"},
    {"flutes", "flute"},
    {"fretls", "fretless"},
    {"fx", "effect"},
    {"git", "guitar"},
    {"glocken", "glockenspiel"},
    {"gt", "guitar"},
    {"gtr", "guitar"},
    {"guit", "guitar"},
    {"guitars", "guitar"},
    {"harmnca", "harmonica"},
    {"harpsi", "harpsichord"},
    {"hawaiian", "hawaiian"},
    {"honky", "honkytonk"},
    {"honkytonk", "honkytonk"},
    {"horns", "horn"},
    {"hrn", "horn"},
    {"hrp", "harmonica"},
    {"jz", "jazz"},
    {"ld", "lead"},
    {"mandoline", "mandolin"},
    {"mar", "marimba"},
    {"musette", "musette"},
    {"mut", "muted"},
    {"mute", "muted"},
    {"mutet", "muted"},
    {"nyl", "nylon"},
    {"od", "overdriven"},
    {"oohs", "ooh"},
    {"orch", "orchestra"},
    {"orchestral", "orchestra"},
    {"org", "organ"},
    {"overdrive", "overdriven"},
    {"ovrdrv", "overdriven"},
    {"pd", "pad"},
    {"perc", "percussion"},
    {"percussive", "percussion"},
    {"pf", "piano"},
    {"picked", "pick"},
    {"pizz", "pizzicato"},
    {"pno", "piano"},
    {"pp", "pan"},
    {"rhodes", "electric piano"},
    {"saw", "sawtooth"},
    {"saws", "sawtooth"},
    {"sax", "saxophone"},
    {"saxes", "saxophone"},
    {"sect", "section"},
    {"sfx", "effect"},
    {"sop", "soprano"},
    {"spanish", "spanish"},
    {"sq", "square"},
    {"sqr", "square"},
    {"std", "standard"},
    {"stl", "steel"},
    {"str", "strings"},
    {"strgs", "strings"},
    {"string", "strings"},
    {"strn", "strings"},
    {"strs", "strings"},
    {"sx", "saxophone"},
    {"sy", "synth"},
    {"syn", "synth"},
    {"synthesizer", "synth"},
    {"tb", "trombone"},
    {"tbn", "trombone"},
    {"tbns", "trombone"},
    {"timp", "timpani"},
    {"tp", "trumpet"},
    {"tpt", "trumpet"},
    {"tr", "analog"},
    {"trem", "tremolo"},
    {"trp", "trumpet"},
    {"trumpets", "trumpet"},
    {"vc", "cello"},
    {"vib", "vibraphone"},
    {"vibes", "vibraphone"},
    {"violins", "violin"},
    {"vla", "viola"},
    {"vln", "violin"},
    {"vlns", "violin"},
    {"vn", "violin"},
    {"voices", "voice"},
    {"vox", "voice"},
    {"winds", "woodwind"},
    {"wurli", "electric piano"},
    {"xylo", "xylophone"},
});

static_assert(std::ranges::is_sorted(kAbbreviations, {}, &WrittenOut::first));

bool IsLetter(char c) {
    return std::isalpha(static_cast<unsigned char>(c)) != 0 || static_cast<unsigned char>(c) > 127;
}

bool IsUpper(char c) {
    return std::isupper(static_cast<unsigned char>(c)) != 0;
}

// A word begins at a letter behind something else, at a large letter behind a small one, and at the
// last of several large letters before a small one.
bool Begins(std::string_view text, std::size_t i) {
    if (i == 0 || !IsLetter(text[i - 1])) {
        return true;
    }
    const bool smallFollows = i + 1 < text.size() && IsLetter(text[i + 1]) && !IsUpper(text[i + 1]);
    return IsUpper(text[i]) && (!IsUpper(text[i - 1]) || smallFollows);
}

void Append(std::vector<std::string>& words, const std::string& word) {
    const auto found =
        std::ranges::lower_bound(kAbbreviations, std::string_view(word), {}, &WrittenOut::first);
    std::string_view rest = word;
    if (found != kAbbreviations.end() && found->first == word) {
        rest = found->second;
    }
    while (!rest.empty()) {
        const std::string_view part = rest.substr(0, rest.find(' '));
        words.emplace_back(part);
        rest.remove_prefix(std::min(part.size() + 1, rest.size()));
    }
}

} // namespace

std::vector<std::string> VoiceWords(std::string_view name) {
    std::vector<std::string> words;
    std::string word;
    for (std::size_t i = 0; i < name.size(); ++i) {
        const bool isLetter = IsLetter(name[i]);
        if (!word.empty() && (!isLetter || Begins(name, i))) {
            Append(words, word);
            word.clear();
        }
        if (isLetter) {
            word += static_cast<char>(std::tolower(static_cast<unsigned char>(name[i])));
        }
    }
    if (!word.empty()) {
        Append(words, word);
    }
    return words;
}

} // namespace tracksmith::instruments
