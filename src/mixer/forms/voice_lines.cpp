#include "mixer/forms/voice_lines.h"

namespace tracksmith::forms {
namespace {

bool MayBreakBefore(const QString& name, qsizetype at) {
    const QChar before = name[at - 1];
    return before.isSpace() || before == u'-' || (before.isLower() && name[at].isUpper());
}

} // namespace

std::pair<QString, QString> VoiceLines(const QString& name, const QFontMetricsF& metrics,
                                       double width) {
    // The last place to break that leaves a first line that fits, else the first place at all.
    qsizetype broken = name.size();
    if (metrics.horizontalAdvance(name) > width) {
        for (qsizetype at = name.size() - 1; at > 0; --at) {
            if (MayBreakBefore(name, at)) {
                broken = at;
                if (metrics.horizontalAdvance(name.left(at).trimmed()) <= width) {
                    break;
                }
            }
        }
    }
    const auto fitting = [&](const QString& line) {
        return metrics.elidedText(line.trimmed(), Qt::ElideRight, width);
    };
    return {fitting(name.left(broken)), fitting(name.mid(broken))};
}

} // namespace tracksmith::forms
