#pragma once

#include <pugixml.hpp>
#include <string_view>

#include "instruments/importers/row_collector.h"

namespace tracksmith::instruments {

/// Gathers the voices of one device of a MIDNAM document (a child of its root; others than devices
/// and device modes give nothing) and finishes the tables of its models. `text` is the document as
/// it was parsed, for the lines of the errors. Throws VoiceFileError.
void CollectMidnamDevice(pugi::xml_node device, std::string_view text, RowCollector& rows);

} // namespace tracksmith::instruments
