#pragma once

#include <memory>

#include "app/connection_test.h"
#include "app/instrument_asker.h"

namespace tracksmith::forms {

/// What tells the user whether and which instrument is connected; may end before what shows it.
struct ConnectionTools {
    std::shared_ptr<app::InstrumentAsker> asker;
    std::shared_ptr<app::ConnectionTest> test;
};

} // namespace tracksmith::forms
