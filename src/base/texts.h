#pragma once

#include "base/text.h"

/// Texts of what every part of the program can meet.
namespace tracksmith::texts {

// Why the system refused a file access.
inline constexpr Text kDiskFull{De{"Der Datenträger ist voll."}, En{"The disk is full."}};
inline constexpr Text kTooLargeHere{De{"Die Datei wird für diesen Datenträger zu groß."},
                                    En{"The file grows too large for this disk."}};
inline constexpr Text kNoPermission{De{"Dafür fehlt die Berechtigung."},
                                    En{"The permission for that is missing."}};
inline constexpr Text kWriteProtected{De{"Der Datenträger ist schreibgeschützt."},
                                      En{"The disk is write-protected."}};
inline constexpr Text kDoesNotExist{De{"Diese Datei oder diesen Ordner gibt es nicht."},
                                    En{"There is no such file or folder."}};
inline constexpr Text kNoFolder{De{"Ein Teil des Pfades ist kein Ordner."},
                                En{"A part of the path is no folder."}};
inline constexpr Text kIsFolder{De{"Das ist ein Ordner."}, En{"That is a folder."}};
inline constexpr Text kNoRegularFile{De{"Das ist keine gewöhnliche Datei."},
                                     En{"That is no ordinary file."}};
inline constexpr Text kNameTooLong{De{"Der Name ist zu lang."}, En{"The name is too long."}};
inline constexpr Text kDiskFault{De{"Der Datenträger meldet einen Fehler."},
                                 En{"The disk reports an error."}};
inline constexpr Text kInUse{De{"Ein anderes Programm benutzt die Datei."},
                             En{"Another program is using the file."}};
inline constexpr Text kTooManyOpen{De{"Es sind zu viele Dateien offen."},
                                   En{"Too many files are open."}};
inline constexpr Text kNoMemory{De{"Der Speicher reicht nicht."},
                                En{"There is not enough memory."}};
inline constexpr Text kSystemSays{De{"Das System meldet: "}, En{"The system says: "}};

} // namespace tracksmith::texts
