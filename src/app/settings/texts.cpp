#include "app/settings/texts.h"

namespace tracksmith::settings::texts {
namespace {

constexpr Text kDamaged{
    De{"Die Einstellungen sind beschädigt, deshalb gelten die Vorgaben. Die Datei wird unter einem "
       "Namen mit \".broken\" aufgehoben, sobald etwas gespeichert wird."},
    En{"The settings are damaged, so the defaults hold. The file is kept under a name with "
       "\".broken\" as soon as something is stored."}};
constexpr Text kUnreadable{De{"Die Einstellungen lassen sich nicht lesen, deshalb gelten die "
                              "Vorgaben."},
                           En{"The settings cannot be read, so the defaults hold."}};
constexpr Text kUnwritable{De{"Die Einstellungen lassen sich nicht speichern; was geändert wird, "
                              "gilt nur bis zum Ende des Programms."},
                           En{"The settings cannot be stored; what is changed lasts until the "
                              "program ends."}};
constexpr Text kFile{De{"Datei: "}, En{"File: "}};

const Text& Words(TroubleKind kind) {
    switch (kind) {
        case TroubleKind::Damaged:
            return kDamaged;
        case TroubleKind::Unreadable:
            return kUnreadable;
        default:
            return kUnwritable;
    }
}

} // namespace

std::string Trouble(Language language, TroubleKind kind, std::string_view file,
                    std::string_view reason) {
    std::string text(Words(kind).In(language));
    if (!reason.empty()) {
        text.append(" ").append(reason);
    }
    if (!file.empty()) {
        text.append("\n").append(kFile.In(language)).append(file);
    }
    return text;
}

} // namespace tracksmith::settings::texts
