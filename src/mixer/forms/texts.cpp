#include "mixer/forms/texts.h"

#include <algorithm>
#include <array>

namespace tracksmith::forms::mixer_texts {
namespace {

using mixer::Control;

struct Names {
    Text full;
    Text brief;
};

constexpr std::array<Names, mixer::kControls> kNames{{
    {Text{De{"Lautstärke"}, En{"Volume"}}, Text{Both{"Vol"}}},
    {Text{De{"Panorama"}, En{"Pan"}}, Text{Both{"Pan"}}},
    {Text{De{"Ausdruck"}, En{"Expression"}}, Text{Both{"Exp"}}},
    {Text{De{"Hall"}, En{"Reverb"}}, Text{De{"Hall"}, En{"Rev"}}},
    {Text{Both{"Chorus"}}, Text{Both{"Cho"}}},
    {Text{De{"Klangfarbe (71)"}, En{"Harmonic content (71)"}}, Text{De{"Frb"}, En{"Har"}}},
    {Text{De{"Ausklang (72)"}, En{"Release (72)"}}, Text{De{"Aus"}, En{"Rel"}}},
    {Text{De{"Einschwingen (73)"}, En{"Attack (73)"}}, Text{De{"Ein"}, En{"Att"}}},
    {Text{De{"Helligkeit (74)"}, En{"Brightness (74)"}}, Text{De{"Hell"}, En{"Bri"}}},
    {Text{De{"Variation (94)"}, En{"Variation (94)"}}, Text{Both{"Var"}}},
}};

constexpr Text kLeft{Both{"L"}};
constexpr Text kMiddle{De{"M"}, En{"C"}};
constexpr Text kRight{Both{"R"}};
constexpr int kMiddleValue = 64;

const Names& NamesOf(Control control) {
    return kNames[mixer::IndexOf(control)];
}

} // namespace

QString ControlName(Control control, Language language) {
    return InLanguage(NamesOf(control).full, language);
}

QString ShortName(Control control, Language language) {
    return InLanguage(NamesOf(control).brief, language);
}

QString Semitones(int semitones) {
    return (semitones > 0 ? QStringLiteral("+") : QString()) + QString::number(semitones);
}

QString ValueText(Control control, int value, Language language) {
    const int side = value - kMiddleValue;
    if (control == Control::Pan) {
        return side == 0 ? InLanguage(kMiddle, language)
                         : InLanguage(side < 0 ? kLeft : kRight, language) +
                               QString::number(std::abs(side));
    }
    return mixer::IsBipolar(control) ? Semitones(side) : QString::number(value);
}

std::optional<int> TypedValue(Control control, const QString& text, Language language) {
    const QString typed = text.trimmed().toUpper();
    if (control == Control::Pan && typed == InLanguage(kMiddle, language)) {
        return kMiddleValue;
    }
    const bool left = typed.startsWith(InLanguage(kLeft, language));
    const bool side =
        control == Control::Pan && (left || typed.startsWith(InLanguage(kRight, language)));
    bool isNumber = false;
    const int number = (side ? typed.mid(1) : typed).toInt(&isNumber);
    if (!isNumber) {
        return std::nullopt;
    }
    const int value =
        mixer::IsBipolar(control) ? kMiddleValue + (left && side ? -number : number) : number;
    return std::clamp(value, 0, 127);
}

QString ChangesTimes(Control control, std::size_t changes, Language language) {
    static constexpr Text kTimes{De{"%1 ändert sich %2-mal"}, En{"%1 changes %2 times"}};
    const QString name = ControlName(control, language);
    return InLanguage(kTimes, language)
        .arg(language == Language::German ? name : name.toLower(), QString::number(changes));
}

QString Soloed(std::size_t channels, Language language) {
    static constexpr Text kSoloed{De{"%1 solo"}, En{"%1 soloed"}};
    return InLanguage(kSoloed, language).arg(channels);
}

QString ChannelWords(int channel, const QString& voice, Language language) {
    static constexpr Text kChannel{De{"Kanal %1"}, En{"channel %1"}};
    const QString words = InLanguage(kChannel, language).arg(channel + 1);
    return voice.isEmpty() ? words : words + QStringLiteral(", ") + voice;
}

} // namespace tracksmith::forms::mixer_texts
