#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/cli/cli_context.h"
#include "instruments/catalogue.h"

namespace tracksmith::cli {

/// Instruments whose name contains every word of `words`, capital or small, in the catalogue's
/// order; all of them for no words. A number alone is an identifier.
std::vector<const instruments::Instrument*> MatchInstruments(std::string_view words);

/// The one instrument that `name` means: that of exactly this name, else the only match, else the
/// only match whose name ends with it. Null, with the reason logged, when there is none or there
/// are several.
const instruments::Instrument* ChooseInstrument(const CliContext& context, const std::string& name);

} // namespace tracksmith::cli
