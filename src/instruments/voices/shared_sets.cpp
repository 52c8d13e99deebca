#include "instruments/voices/shared_sets.h"

#include <string_view>

#include "instruments/capabilities.h"

namespace tracksmith::instruments {
namespace {

std::string_view NameOf(InstrumentId instrument) {
    const Instrument* entry = FindInstrument(instrument);
    return entry == nullptr ? std::string_view() : entry->name;
}

} // namespace

bool HasXgSet(InstrumentId instrument) {
    const Instrument* entry = FindInstrument(instrument);
    return entry != nullptr && entry->xg;
}

bool HasGm2Set(InstrumentId instrument) {
    const std::string_view name = NameOf(instrument);
    return name == "Roland SC-8850" || name == "Roland SC-D70" ||
           HasCapability(name, Capability::YamahaDsps);
}

bool HasTe200Option(InstrumentId instrument) {
    return HasCapability(NameOf(instrument), Capability::LimexTe200);
}

} // namespace tracksmith::instruments
