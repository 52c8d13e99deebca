#include "instruments/output_assignment.h"

namespace tracksmith::instruments {

void OutputAssignment::SetName(std::string_view instrumentName) {
    name = instrumentName;
    if (const Instrument* instrument = FindInstrument(instrumentName)) {
        id = instrument->id;
    }
}

InstrumentId OutputTable::InstrumentOfChannel(std::size_t channel) const {
    const std::size_t output = outputOfChannel.at(channel);
    return outputs.at(output < outputs.size() ? output : 0).id;
}

} // namespace tracksmith::instruments
