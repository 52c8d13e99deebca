#pragma once

#include <cstddef>
#include <functional>

#include "base/text.h"

#include "mixer/controls.h"
#include "mixer/mixer.h"

class QMenu;
class QWidget;

namespace tracksmith::forms {

/// What the entries of a control's menu do beside the mixer's own part.
struct StripMenuActions {
    std::function<void()> typeValue;
    std::function<void()> insertAtStart;
    /// The mixer has changed something.
    std::function<void()> changed;
};

/// The menu of a control of a channel (0-15). It deletes itself when it closes. `mixer` must
/// outlive it.
QMenu* NewStripMenu(mixer::Mixer& mixer, std::size_t channel, mixer::Control control,
                    const StripMenuActions& actions, Language language, QWidget* parent);

} // namespace tracksmith::forms
