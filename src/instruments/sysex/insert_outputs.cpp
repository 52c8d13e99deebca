#include "instruments/sysex/insert_outputs.h"

#include <algorithm>
#include <vector>

#include "instruments/sysex/gs_ticks.h"
#include "instruments/sysex/insert_message.h"
#include "instruments/sysex/sysex_edit.h"
#include "instruments/sysex/sysex_patterns.h"
#include "instruments/sysex/sysex_templates.h"

namespace tracksmith::instruments {
namespace {

using Message = std::vector<std::uint8_t>;

// Where part and value stand in a message, F0 counted.
struct OutputPlaces {
    SysexBytes pattern;
    std::size_t part;
    std::size_t value;
};

constexpr OutputPlaces kIntegra7{templates::kIntegra7Output, 9, 11};
constexpr OutputPlaces kMotifXs{templates::kMotifXsOutput, 6, 8};
constexpr std::size_t kIntegra7Address = 7;

Message MessageOf(const OutputPlaces& places, std::size_t part, std::uint8_t output) {
    Message message(places.pattern.begin(), places.pattern.end());
    message[places.part] = static_cast<std::uint8_t>(message[places.part] + part);
    message[places.value] = output & 0x7FU;
    return message;
}

Message Integra7Message(std::size_t part, std::uint8_t output) {
    Message message = MessageOf(kIntegra7, part, output);
    message[kIntegra7.value + 1] = RolandChecksum(SysexBytes(message).subspan(kIntegra7Address, 5));
    return message;
}

Message MotifXsMessage(std::size_t part, std::uint8_t output) {
    return MessageOf(kMotifXs, part, output);
}

// Removes settings of the same part that differ from `message`.
void RemoveOthers(song::Song& song, SysexSession& session, std::int32_t tick, SysexBytes message,
                  const OutputPlaces& places) {
    const SysexBytes prefix = DataOf(message.first(places.value));
    VisitEach(song, session, SearchEnd(song, tick), [&](const song::SysexPlace& place) {
        const SysexBytes data = Live(place);
        if (StartsWith(data, prefix) && !std::ranges::equal(data, DataOf(message))) {
            RemoveMessage(session, place);
        }
    });
}

void InsertOutputs(song::Song& song, SysexSession& session, const OutputPlaces& places,
                   Message (*messageOf)(std::size_t part, std::uint8_t output)) {
    std::int32_t tick = session.insertionTick;
    for (std::size_t part = 0; part < kParts; ++part, tick += kTicksApart) {
        const std::uint8_t output = session.options.partOutputs.at(part);
        if (output != 0) {
            const Message message = messageOf(part, output);
            RemoveOthers(song, session, tick, message, places);
            InsertSetUp(song, session, tick, message);
        }
    }
}

} // namespace

void InsertIntegra7OutputsSysex(song::Song& song, SysexSession& session) {
    InsertOutputs(song, session, kIntegra7, Integra7Message);
}

void InsertMotifXSOutputsSysex(song::Song& song, SysexSession& session) {
    InsertOutputs(song, session, kMotifXs, MotifXsMessage);
}

} // namespace tracksmith::instruments
