#pragma once

#include <QIcon>
#include <QPalette>

namespace tracksmith::forms {

/// The signs on the transport's buttons. Painted, because fonts lack some of them.
enum class TransportSign { ToStart, Back, Play, Stop, Forward, Loop, Panic };

/// A sign in the colours of `palette`, for any scale.
QIcon TransportIcon(TransportSign sign, const QPalette& palette);

} // namespace tracksmith::forms
