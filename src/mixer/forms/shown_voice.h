#pragma once

#include <QString>

namespace tracksmith::forms {

/// The name of what a channel plays as it is shown.
struct ShownVoice {
    /// Empty when the song names no voice.
    QString name;
    /// The name stands at another bank only: "≈" is shown before it.
    bool similar = false;
    /// Why it is only similar, one sentence; empty otherwise.
    QString why;

    /// Bank select MSB and LSB and the program counted from 1, as far as the song has them:
    /// "0·112·5".
    QString numbers{};

    /// The name with its mark.
    QString Marked() const { return similar ? QStringLiteral("≈ ") + name : name; }
};

} // namespace tracksmith::forms
