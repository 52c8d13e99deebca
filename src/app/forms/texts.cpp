#include "app/forms/texts.h"

#include "app/kept_words.h"
#include "app/preparation_words.h"

namespace tracksmith::forms::texts {
namespace {

/// How many kinds of change the one-line summary names; the others are counted.
constexpr int kNamedChanges = 2;

constexpr Text kMeasure{De{"Takt %1"}, En{"Measure %1"}};
constexpr Text kMeasures{De{"Takte %1–%2"}, En{"Measures %1–%2"}};
constexpr Text kChannelNumber{De{"Kanal %1"}, En{"Channel %1"}};
constexpr Text kOneNote{De{"1 Note"}, En{"1 note"}};
constexpr Text kManyNotes{De{"%1 Noten"}, En{"%1 notes"}};
constexpr Text kOneTrack{De{"1 Spur"}, En{"1 track"}};
constexpr Text kManyTracks{De{"%1 Spuren"}, En{"%1 tracks"}};
constexpr Text kSaveQuestion{De{"Die Änderungen in „%1“ sind noch nicht gespeichert."},
                             En{"The changes in \"%1\" have not been saved yet."}};
constexpr Text kLoadingChanged{De{"Beim Laden geändert: "}, En{"What loading changed: "}};
constexpr Text kMoreKinds{De{" und %1 weitere"}, En{" and %1 more"}};

} // namespace

QString ChannelName(int channel, Language language) {
    return InLanguage(kChannelNumber, language).arg(channel + 1);
}

QString RouteOutputName(int channel, Language language) {
    static constexpr Text kNumbered{De{"Ausgang von Kanal %1"}, En{"Output of channel %1"}};
    return InLanguage(kNumbered, language).arg(channel + 1);
}

QString RouteTargetName(int channel, Language language) {
    static constexpr Text kNumbered{De{"Zielkanal von Kanal %1"}, En{"Target of channel %1"}};
    return InLanguage(kNumbered, language).arg(channel + 1);
}

QString SavedTransposed(int semitones, Language language) {
    static constexpr Text kAll{
        De{"Gespeichert mit allen Noten um %1 Halbtöne verschoben; die Transponierung ist wieder 0."},
        En{"Saved with all notes moved by %1 semitones; the transposition is 0 again."}};
    static constexpr Text kSome{
        De{"Gespeichert mit verschobenen Noten; die Transponierung ist wieder 0."},
        En{"Saved with the notes moved; the transposition is 0 again."}};
    return semitones == 0 ? InLanguage(kSome, language)
                          : InLanguage(kAll, language)
                                .arg((semitones > 0 ? QStringLiteral("+") : QString()) +
                                     QString::number(semitones));
}

QString DropOpens(const QString& fileName, std::size_t more, Language language) {
    static constexpr Text kDrop{De{"Loslassen öffnet „%1“"}, En{"Drop to open \"%1\""}};
    static constexpr Text kDropMore{De{"Loslassen öffnet „%1“, danach %2 weitere mit Strg+Bild ab"},
                                    En{"Drop to open \"%1\", then %2 more by Ctrl+PgDn"}};
    return more == 0 ? InLanguage(kDrop, language).arg(fileName)
                     : InLanguage(kDropMore, language).arg(fileName).arg(more);
}

QString SongOfList(const QString& fileName, std::size_t number, std::size_t count,
                   Language language) {
    static constexpr Text kOfList{De{"%1 (%2 von %3)"}, En{"%1 (%2 of %3)"}};
    return InLanguage(kOfList, language).arg(fileName).arg(number).arg(count);
}

QString MeasureName(std::int64_t first, std::int64_t last, Language language) {
    return first == last ? InLanguage(kMeasure, language).arg(first)
                         : InLanguage(kMeasures, language).arg(first).arg(last);
}

QString NoteCount(std::int64_t notes, Language language) {
    return notes == 1 ? InLanguage(kOneNote, language)
                      : InLanguage(kManyNotes, language).arg(NumberText(notes, language));
}

QString TrackCount(std::int64_t tracks, Language language) {
    return tracks == 1 ? InLanguage(kOneTrack, language)
                       : InLanguage(kManyTracks, language).arg(NumberText(tracks, language));
}

QString SaveChangesQuestion(const QString& fileName, Language language) {
    return InLanguage(kSaveQuestion, language).arg(fileName);
}

namespace {

constexpr Text kNotPrepared{De{"Der Song ist nicht für %1 vorbereitet"},
                            En{"The song is not prepared for %1"}};

QString LoadingSummary(const song::LoadReport& report, Language language) {
    QStringList named;
    for (std::size_t i = 0; i < song::kLoadChangeCount && named.size() < kNamedChanges; ++i) {
        const auto change = static_cast<song::LoadChange>(i);
        if (report[change] != 0) {
            named << InLanguage(song::LoadChangeText(change), language) +
                         QStringLiteral(" (%1)").arg(NumberText(report[change], language));
        }
    }
    if (named.isEmpty()) {
        return {};
    }
    const auto more = static_cast<qsizetype>(report.Kinds()) - named.size();
    return InLanguage(kLoadingChanged, language) + named.join(QStringLiteral("; ")) +
           (more > 0 ? InLanguage(kMoreKinds, language).arg(more) : QString());
}

} // namespace

QString ChangesSummary(const song::LoadReport& report,
                       const instruments::PreparationReport& preparation,
                       const std::string& unprepared, Language language) {
    QStringList parts;
    if (!unprepared.empty()) {
        parts << InLanguage(kNotPrepared, language).arg(ToQString(unprepared));
    }
    if (preparation.Changed()) {
        parts << ToQString(app::PreparationLine(preparation, language));
        for (const std::string& line : app::KeptLines(preparation, language)) {
            parts << ToQString(line);
        }
    }
    if (report.Kinds() > 0) {
        parts << LoadingSummary(report, language);
    }
    return parts.join(QStringLiteral(" · "));
}

QString TakeBackChange(const Text& change, bool taken, Language language) {
    static constexpr Text kBack{De{"„%1“ &zurücknehmen"}, En{"&Take Back %1"}};
    static constexpr Text kAgain{De{"„%1“ &wiederholen"}, En{"&Redo %1"}};
    return InLanguage(taken ? kAgain : kBack, language).arg(InLanguage(change, language));
}

QString ReportWritten(const QString& path, Language language) {
    static constexpr Text kWritten{De{"Der Notenbericht liegt in %1"},
                                   En{"The note report lies in %1"}};
    return InLanguage(kWritten, language).arg(path);
}

QString NoticesWaiting(std::size_t number, Language language) {
    static constexpr Text kWaiting{De{"und %1 weitere"}, En{"and %1 more"}};
    return InLanguage(kWaiting, language).arg(number);
}

QString Loading(const QString& fileName, Language language) {
    static constexpr Text kLoading{De{"„%1“ wird geladen …"}, En{"Loading “%1” …"}};
    return InLanguage(kLoading, language).arg(fileName);
}

QString NotOpened(const QString& fileName, Language language) {
    static constexpr Text kNotOpened{De{"„%1“ wurde nicht geöffnet."}, En{"“%1” was not opened."}};
    return InLanguage(kNotOpened, language).arg(fileName);
}

QString Refused(const QString& message, const QString& fileName, const QString& sentence) {
    return message + QStringLiteral("\n\n") + fileName +
           (sentence.isEmpty() ? QString() : QStringLiteral("\n") + sentence);
}

QString LoadableThatWay(Language language) {
    static constexpr Text kLoadable{
        De{"Manche Programme lassen nach SysEx-Daten Befehle weg. So gelesen lässt sich diese Datei "
           "laden."},
        En{"Some programs leave out commands behind system-exclusive data. Read that way, this file "
           "can be loaded."}};
    return QStringLiteral("\n\n") + InLanguage(kLoadable, language);
}

QString SavedWithTempo(int bpm, Language language) {
    static constexpr Text kSavedWithTempo{
        De{"Gespeichert mit dem geänderten Tempo: %1 BPM sind jetzt 100 %."},
        En{"Saved with the changed tempo: %1 BPM is 100 % from now on."}};
    return InLanguage(kSavedWithTempo, language).arg(bpm);
}

QString ChangedOnDisk(const QString& fileName, Language language) {
    static constexpr Text kChanged{De{"„%1“ wurde von einem anderen Programm geändert."},
                                   En{"“%1” was changed by another program."}};
    return InLanguage(kChanged, language).arg(fileName);
}

QString OverwriteChanged(const QString& fileName, Language language) {
    static constexpr Text kQuestion{
        De{"„%1“ wurde von einem anderen Programm geändert, seit Sie die Datei geöffnet haben. "
           "Sollen diese Änderungen überschrieben werden?"},
        En{"“%1” was changed by another program since you opened it. Overwrite those changes?"}};
    return InLanguage(kQuestion, language).arg(fileName);
}

QString UnknownInstrument(const QString& name, Language language) {
    static constexpr Text kUnknown{
        De{"Das Instrument „%1“ gibt es nicht mehr. Bitte wählen Sie eines; bis dahin bleiben "
           "Songs, wie sie sind."},
        En{"The instrument \"%1\" is no longer known. Please choose one; until then songs stay as "
           "they are."}};
    return InLanguage(kUnknown, language).arg(name);
}

QString PrepareQuestion(const QString& instrument, Language language) {
    static constexpr Text kQuestion{De{"Soll der geöffnete Song für \"%1\" vorbereitet werden?"},
                                    En{"Shall the open song be prepared for \"%1\"?"}};
    return InLanguage(kQuestion, language).arg(instrument);
}

QString VersionLine(const QString& version) {
    return QStringLiteral("Version %1").arg(version);
}

} // namespace tracksmith::forms::texts
