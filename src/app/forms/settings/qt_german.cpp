#include "app/forms/settings/qt_german.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "base/forms/qt_text.h"
#include "base/text.h"
#include <QLibraryInfo>

namespace tracksmith::forms {
namespace {

// Qt asks for the English wording.
constexpr auto kTexts = std::to_array<Text>({
    // File dialogs
    {De{"Suchen in:"}, En{"Look in:"}},
    {De{"Zurück"}, En{"Back"}},
    {De{"Einen Ordner zurück"}, En{"Go back"}},
    {De{"Vor"}, En{"Forward"}},
    {De{"Einen Ordner vor"}, En{"Go forward"}},
    {De{"Übergeordneter Ordner"}, En{"Parent Directory"}},
    {De{"Zum übergeordneten Ordner"}, En{"Go to the parent directory"}},
    {De{"Neuer Ordner"}, En{"Create New Folder"}},
    {De{"Einen neuen Ordner anlegen"}, En{"Create a New Folder"}},
    {De{"Liste"}, En{"List View"}},
    {De{"Als Liste zeigen"}, En{"Change to list view mode"}},
    {De{"Einzelheiten"}, En{"Detail View"}},
    {De{"Mit Einzelheiten zeigen"}, En{"Change to detail view mode"}},
    {De{"Orte"}, En{"Sidebar"}},
    {De{"Liste der Orte und Lesezeichen"}, En{"List of places and bookmarks"}},
    {De{"Dateien"}, En{"Files"}},
    {De{"Dateien vom Typ:"}, En{"Files of type:"}},
    {De{"Datei&name:"}, En{"File &name:"}},
    {De{"Ordner:"}, En{"Directory:"}},
    {De{"Alle Dateien (*)"}, En{"All Files (*)"}},
    {De{"Ö&ffnen"}, En{"&Open"}},
    {De{"&Speichern"}, En{"&Save"}},
    {De{"&Wählen"}, En{"&Choose"}},
    {De{"&Umbenennen"}, En{"&Rename"}},
    {De{"&Löschen"}, En{"&Delete"}},
    {De{"&Versteckte Dateien zeigen"}, En{"Show &hidden files"}},
    {De{"&Neuer Ordner"}, En{"&New Folder"}},
    {De{"Neuer Ordner"}, En{"New Folder"}},
    {De{"Zeigen: "}, En{"Show "}},
    {De{"Zuletzt benutzt"}, En{"Recent Places"}},
    {De{"Entfernen"}, En{"Remove"}},
    {De{"%1\nDie Datei wurde nicht gefunden.\nBitte prüfen Sie den Namen."},
     En{"%1\nFile not found.\nPlease verify the correct file name was given."}},
    {De{"%1\nDer Ordner wurde nicht gefunden.\nBitte prüfen Sie den Namen."},
     En{"%1\nDirectory not found.\nPlease verify the correct directory name was given."}},
    {De{"Soll „%1“ wirklich gelöscht werden?"}, En{"Are you sure you want to delete '%1'?"}},
    {De{"„%1“ ist schreibgeschützt.\nTrotzdem löschen?"},
     En{"'%1' is write protected.\nDo you want to delete it anyway?"}},
    {De{"Der Ordner konnte nicht gelöscht werden."}, En{"Could not delete directory."}},
    {De{"Computer"}, En{"Computer"}},
    {De{"Laufwerk"}, En{"Drive"}},
    {De{"Ordner"}, En{"Folder"}},
    {De{"Ordner"}, En{"File Folder"}},
    {De{"Datei"}, En{"File"}},
    {De{"%1-Datei"}, En{"%1 File"}},
    {De{"Name"}, En{"Name"}},
    {De{"Größe"}, En{"Size"}},
    {De{"Typ"}, En{"Type"}},
    {De{"Geändert am"}, En{"Date Modified"}},
    // Buttons
    {De{"OK"}, En{"OK"}},
    {De{"&Ja"}, En{"&Yes"}},
    {De{"&Nein"}, En{"&No"}},
    {De{"Abbrechen"}, En{"Cancel"}},
    {De{"Öffnen"}, En{"Open"}},
    {De{"Speichern"}, En{"Save"}},
    {De{"Schließen"}, En{"Close"}},
    // Text and number fields
    {De{"&Rückgängig"}, En{"&Undo"}},
    {De{"&Wiederherstellen"}, En{"&Redo"}},
    {De{"&Ausschneiden"}, En{"Cu&t"}},
    {De{"&Kopieren"}, En{"&Copy"}},
    {De{"&Einfügen"}, En{"&Paste"}},
    {De{"Löschen"}, En{"Delete"}},
    {De{"Alles auswählen"}, En{"Select All"}},
    {De{"A&lles auswählen"}, En{"&Select All"}},
    {De{"&Größer"}, En{"&Step up"}},
    {De{"&Kleiner"}, En{"Step &down"}},
    // Keys
    {De{"Strg"}, En{"Ctrl"}},
    {De{"Umschalt"}, En{"Shift"}},
    {De{"Leertaste"}, En{"Space"}},
    {De{"Pos1"}, En{"Home"}},
    {De{"Ende"}, En{"End"}},
    {De{"Bild auf"}, En{"PgUp"}},
    {De{"Bild ab"}, En{"PgDown"}},
    {De{"Einfg"}, En{"Ins"}},
    {De{"Entf"}, En{"Del"}},
    {De{"Rücktaste"}, En{"Backspace"}},
    {De{"Eingabe"}, En{"Return"}},
    {De{"Links"}, En{"Left"}},
    {De{"Rechts"}, En{"Right"}},
    {De{"Hoch"}, En{"Up"}},
    {De{"Runter"}, En{"Down"}},
});

} // namespace

QtGerman::QtGerman() {
    // Absent on many machines; then Qt's other texts stay English.
    [[maybe_unused]] const bool installed =
        load(QStringLiteral("qtbase_de"), QLibraryInfo::path(QLibraryInfo::TranslationsPath));
}

QString QtGerman::translate(const char* context, const char* sourceText, const char* disambiguation,
                            int n) const {
    const auto own = std::ranges::find(kTexts, std::string_view(sourceText), &Text::english);
    return own != kTexts.end() ? ToQString(own->german)
                               : QTranslator::translate(context, sourceText, disambiguation, n);
}

} // namespace tracksmith::forms
