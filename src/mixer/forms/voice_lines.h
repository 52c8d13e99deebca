#pragma once

#include <utility>

#include <QFontMetricsF>
#include <QString>

namespace tracksmith::forms {

/// A voice's name in two lines of at most `width` logical pixels. It is broken behind a space or a
/// hyphen, or before a capital letter inside of a word ("OrchestraHarp"), never elsewhere; what
/// does not fit ends with an ellipsis.
std::pair<QString, QString> VoiceLines(const QString& name, const QFontMetricsF& metrics,
                                       double width);

} // namespace tracksmith::forms
