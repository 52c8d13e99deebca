#include "editing/texts.h"

namespace tracksmith::editing::texts {

std::string UndoQuestion(Language language, std::string_view command) {
    const bool german = language == Language::German;
    std::string question(german ? "Soll der Befehl \"" : "Undo the command \"");
    question += command;
    question += german ? "\" rückgängig gemacht werden?" : "\"?";
    return question;
}

std::string CannotTranspose(Language language, std::string_view label) {
    const bool german = language == Language::German;
    std::string text(german ? "Der Midikanal " : "The MIDI channel ");
    text += label;
    text += german ? " kann nicht transponiert werden, da keine Noten vorhanden sind."
                   : " can't be transposed.";
    return text;
}

} // namespace tracksmith::editing::texts
