#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "base/text.h"

#include "instruments/catalogue.h"
#include "instruments/sysex/sysex_session.h"
#include "song/song.h"

namespace tracksmith::instruments {

/// A system-exclusive operation under its name.
struct SysexOperation {
    std::string_view name;
    void (*run)(song::Song& song, SysexSession& session) = nullptr;
};

/// When a step is taken: the option that decides it, in words too.
struct StepCondition {
    bool (*holds)(const SysexOptions& options) = nullptr;
    Text words;
};

/// One step of preparing a song.
struct OperationStep {
    SysexOperation operation;
    /// Null for always.
    const StepCondition* when = nullptr;
    /// Which instruments of the group take the step; null for all.
    bool (*suits)(const Instrument& instrument) = nullptr;
};

/// How an instrument is told that a channel other than 10 plays drums.
enum class DrumWay : std::uint8_t {
    None,     ///< not at all, as far as is known
    PartGs,   ///< GS "use for rhythm part", device 10
    PartGs00, ///< the same, device 00
    BankXg,   ///< bank select MSB 127
    BankGm2,  ///< bank select MSB 120
};

/// Whether the way is a message for each part.
constexpr bool IsGs(DrumWay way) {
    return way == DrumWay::PartGs || way == DrumWay::PartGs00;
}

/// The way of the instrument's group. Any thread.
DrumWay DrumWayOf(InstrumentId id);

/// The steps of the instrument's group in their order, those that other instruments of the group
/// take included; empty for an instrument that nothing is done for and for an unknown code. Any
/// thread.
std::span<const OperationStep> StepsOf(InstrumentId id);

/// The operations that the instrument takes, in order, each with its condition (null for always):
/// for documents that list them.
std::vector<OperationStep> OperationsOf(InstrumentId id);

} // namespace tracksmith::instruments
