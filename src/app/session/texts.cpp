#include "app/session/texts.h"

namespace tracksmith::session::texts {

std::string PortHangs(Language language, std::string_view port) {
    const std::string name(port);
    return language == Language::German
               ? "Der MIDI-Ausgang \"" + name +
                     "\" antwortet nicht, deshalb kann der Song gerade nicht geändert werden. "
                     "Bitte prüfen Sie Kabel und Instrument und versuchen Sie es dann noch einmal."
               : "The MIDI output \"" + name +
                     "\" does not answer, so the song cannot be changed just now. Please check "
                     "cable and instrument, then try again.";
}

std::string NoMemoryToTakeBack(Language language, const Text& change) {
    const std::string name(change.In(language));
    return language == Language::German
               ? "Der Speicher reicht nicht aus, um \"" + name +
                     "\" später zurücknehmen zu können. Trotzdem fortfahren?"
               : "There is not enough memory to take back \"" + name +
                     "\" later. Go on all the same?";
}

} // namespace tracksmith::session::texts
