#include "editing/forms/texts.h"

#include "base/forms/qt_text.h"

#include "song/song_position.h"

namespace tracksmith::forms::range_texts {
namespace {

/// A wording for one and a wording for any other number, for which "%1" stands.
struct Counted {
    Text one;
    Text many;
};

QString Count(const Counted& text, std::int64_t number, Language language) {
    return InLanguage(number == 1 ? text.one : text.many, language)
        .arg(NumberText(number, language));
}

QString Clock(std::int64_t ms) {
    return ToQString(song::ClockText(ms));
}

} // namespace

QString MeasureField(const QString& caption, Language language) {
    static constexpr Text kText{De{"%1, Takt"}, En{"%1, measure"}};
    return InLanguage(kText, language).arg(caption.section(u' ', 0, 0));
}

QString BeatField(const QString& caption, Language language) {
    static constexpr Text kText{De{"%1, Schlag"}, En{"%1, beat"}};
    return InLanguage(kText, language).arg(caption.section(u' ', 0, 0));
}

QString PlayheadButton(const QString& caption, Language language) {
    static constexpr Text kText{De{"%1: Stelle der Musik"}, En{"%1: place of the music"}};
    return InLanguage(kText, language).arg(caption.section(u' ', 0, 0));
}

QString OtherChannel(std::int64_t named, std::int64_t changed, Language language) {
    static constexpr Text kText{
        De{"Bei diesem Eintrag (%1) werden die Noten von Kanal %2 transponiert. Trotzdem?"},
        En{"With this entry (%1) the notes of channel %2 are transposed. Go on?"}};
    return InLanguage(kText, language).arg(named).arg(changed);
}

QString Measures(std::int64_t measures, Language language) {
    static constexpr Counted kText{{De{"%1 Takt"}, En{"%1 measure"}},
                                   {De{"%1 Takte"}, En{"%1 measures"}}};
    return Count(kText, measures, language);
}

QString LengthText(std::int64_t measures, std::int64_t ms, Language language) {
    return Measures(measures, language) + QStringLiteral(" · ") + Clock(ms);
}

QString MeasuresCopied(std::int64_t measures, Language language) {
    static constexpr Text kText{De{"%1 kopiert"}, En{"%1 copied"}};
    return InLanguage(kText, language).arg(measures);
}

QString MeasuresNew(std::int64_t measures, Language language) {
    static constexpr Text kText{De{"%1 neu"}, En{"%1 new"}};
    return InLanguage(kText, language).arg(measures);
}

QString Shorter(std::int64_t ms, Language language) {
    static constexpr Text kText{De{"%1 kürzer"}, En{"%1 shorter"}};
    return InLanguage(kText, language).arg(Clock(ms));
}

QString WasMeasure(std::int64_t measure, Language language) {
    static constexpr Text kText{De{"war %1"}, En{"was %1"}};
    return InLanguage(kText, language).arg(measure, 3, 10, QLatin1Char('0'));
}

QString IsMeasureAgain(std::int64_t measure, Language language) {
    static constexpr Text kText{De{"ist noch einmal %1"}, En{"is %1 again"}};
    return InLanguage(kText, language).arg(measure, 3, 10, QLatin1Char('0'));
}

QString DeleteMeasures(std::int64_t measures, Language language) {
    static constexpr Counted kText{{De{"%1 Takt lösc&hen"}, En{"Delete %1 &Measure"}},
                                   {De{"%1 Takte lösc&hen"}, En{"Delete %1 &Measures"}}};
    return Count(kText, measures, language);
}

QString CopyMeasures(std::int64_t measures, Language language) {
    static constexpr Counted kText{{De{"%1 Takt ko&pieren"}, En{"Copy %1 &Measure"}},
                                   {De{"%1 Takte ko&pieren"}, En{"Copy %1 &Measures"}}};
    return Count(kText, measures, language);
}

QString TransposeBy(const QString& semitones, Language language) {
    static constexpr Text kText{De{"Um %1 transpon&ieren"}, En{"T&ranspose by %1"}};
    return InLanguage(kText, language).arg(semitones);
}

QString TransposeChannelBy(std::int64_t channel, const QString& semitones, Language language) {
    static constexpr Text kText{De{"Kanal %1 um %2 transpon&ieren"},
                                En{"T&ranspose Channel %1 by %2"}};
    return InLanguage(kText, language).arg(channel).arg(semitones);
}

QString NotesGo(std::int64_t notes, Language language) {
    static constexpr Counted kText{{De{"%1 Note fällt weg"}, En{"%1 note goes"}},
                                   {De{"%1 Noten fallen weg"}, En{"%1 notes go"}}};
    return Count(kText, notes, language);
}

QString NotesCome(std::int64_t notes, std::int64_t ms, Language language) {
    static constexpr Counted kText{{De{"%1 Note kommt hinzu, der Song wird %2 länger"},
                                    En{"%1 note comes, the song grows by %2"}},
                                   {De{"%1 Noten kommen hinzu, der Song wird %2 länger"},
                                    En{"%1 notes come, the song grows by %2"}}};
    return Count(kText, notes, language).arg(Clock(ms));
}

QString NotesEnd(std::int64_t notes, Language language) {
    static constexpr Counted kText{{De{"%1 Note endet dort"}, En{"%1 note ends there"}},
                                   {De{"%1 Noten enden dort"}, En{"%1 notes end there"}}};
    return Count(kText, notes, language);
}

QString NotesBegin(std::int64_t notes, Language language) {
    static constexpr Counted kText{{De{"%1 Note beginnt dort neu"}, En{"%1 note starts again"}},
                                   {De{"%1 Noten beginnen dort neu"}, En{"%1 notes start again"}}};
    return Count(kText, notes, language);
}

QString SettingsCarried(std::int64_t settings, Language language) {
    static constexpr Counted kText{
        {De{"%1 Einstellung wird mitgenommen"}, En{"%1 setting carried over"}},
        {De{"%1 Einstellungen werden mitgenommen"}, En{"%1 settings carried over"}}};
    return Count(kText, settings, language);
}

QString MessagesGo(std::int64_t messages, Language language) {
    static constexpr Counted kText{
        {De{"%1 Nachricht an das Instrument fällt weg"}, En{"%1 message to the instrument goes"}},
        {De{"%1 Nachrichten an das Instrument fallen weg"},
         En{"%1 messages to the instrument go"}}};
    return Count(kText, messages, language);
}

QString MessagesCome(std::int64_t messages, Language language) {
    static constexpr Counted kText{{De{"%1 Nachricht an das Instrument wird mitkopiert"},
                                    En{"%1 message to the instrument is copied too"}},
                                   {De{"%1 Nachrichten an das Instrument werden mitkopiert"},
                                    En{"%1 messages to the instrument are copied too"}}};
    return Count(kText, messages, language);
}

QString NotesMove(std::int64_t notes, std::int64_t channels, Language language) {
    static constexpr Counted kText{{De{"%1 Note"}, En{"%1 note"}},
                                   {De{"%1 Noten"}, En{"%1 notes"}}};
    static constexpr Counted kPlaces{{De{"%2 auf %1 Kanal"}, En{"%2 on %1 channel"}},
                                     {De{"%2 auf %1 Kanälen"}, En{"%2 on %1 channels"}}};
    return Count(kPlaces, channels, language).arg(Count(kText, notes, language));
}

QString NotesFolded(std::int64_t notes, Language language) {
    static constexpr Counted kText{
        {De{"%1 Note muss oktaviert werden"}, En{"%1 note has to be folded by octaves"}},
        {De{"%1 Noten müssen oktaviert werden"}, En{"%1 notes have to be folded by octaves"}}};
    return Count(kText, notes, language);
}

QString NotesStay(std::int64_t notes, Language language) {
    static constexpr Counted kText{{De{"%1 Note bleibt"}, En{"%1 note stays"}},
                                   {De{"%1 Noten bleiben"}, En{"%1 notes stay"}}};
    return Count(kText, notes, language);
}

} // namespace tracksmith::forms::range_texts
