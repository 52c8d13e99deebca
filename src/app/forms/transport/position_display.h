#pragma once

#include "base/forms/panel.h"
#include "base/text.h"

namespace tracksmith::forms {

class ValueBox;

/// The big display of a place in the song.
class PositionDisplay : public Panel {
    Q_OBJECT

public:
    /// A place in the song as texts.
    struct Place {
        QString position;
        QString clock;
        QString timeSignature;
        QString notes;
    };

    explicit PositionDisplay(QWidget* parent = nullptr);

    /// Shows a place.
    void ShowPlace(const Place& place);

    /// Keeps room for the widest texts of a song whose last place is `end`.
    void Reserve(const Place& end);

    void Retranslate(Language language);

private:
    ValueBox* position_;
    ValueBox* clock_;
    ValueBox* timeSignature_;
    ValueBox* notes_;
};

} // namespace tracksmith::forms
