#pragma once

#include <memory>

namespace tracksmith::midi {

/// Keeps an object until the process ends: what a driver did not give back must not be freed, since
/// the driver may still write to it.
void Abandon(std::shared_ptr<void> object);

} // namespace tracksmith::midi
