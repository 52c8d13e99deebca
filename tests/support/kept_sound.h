#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "support/instrument_model_notes.h"

#include "instruments/preparation.h"
#include "instruments/sysex/operation_table.h"

/// Whether a song sounds on the instrument that it was prepared for as it did before.
namespace tracksmith::test {

/// The model of an instrument of the catalogue.
inline InstrumentModel ModelOf(instruments::InstrumentId instrument) {
    switch (instruments::DrumWayOf(instrument)) {
        case instruments::DrumWay::PartGs:
            return InstrumentModel(DrumRule::PartGs);
        case instruments::DrumWay::PartGs00:
            return InstrumentModel(DrumRule::PartGs, 0);
        case instruments::DrumWay::BankXg:
            return InstrumentModel(DrumRule::BankXg);
        case instruments::DrumWay::BankGm2:
            return InstrumentModel(DrumRule::BankGm2);
        default:
            return InstrumentModel(DrumRule::Fixed);
    }
}

/// A note that begins in another state than before.
struct Loss {
    /// As Differences has it, or what else is wrong with the note.
    std::string words;
    PlayedNote note;
};

/// Whether a report says that a note of its channel may sound like that.
inline bool IsSaid(const Loss& loss, const instruments::PreparationReport& report) {
    const instruments::ChannelReport& said = report.channels.at(loss.note.channel);
    const bool voice =
        loss.words.starts_with("drum") || loss.words.find("program") != std::string::npos;
    // A drum part of another family is left by a melody bank of the instrument's own.
    const bool bank = loss.words.starts_with("bank") && said.partKept;
    return (voice && said.lostDrumNotes > 0) || said.lost > 0 || bank;
}

/// The losses that the report does not say. `before` is played by an instrument that knows every
/// family, `after` by the one of the report.
inline std::vector<Loss> UnsaidLosses(const std::vector<PlayedNote>& before,
                                      const std::vector<PlayedNote>& after,
                                      const instruments::PreparationReport& report) {
    std::vector<Loss> losses;
    if (before.size() != after.size()) {
        losses.push_back({"notes are missing", {}});
    }
    for (std::size_t i = 0; i < std::min(before.size(), after.size()); ++i) {
        const bool same = before[i].tick == after[i].tick && before[i].key == after[i].key &&
                          before[i].channel == after[i].channel;
        const Loss loss{same ? Differences(before[i].state, after[i].state) : "another note",
                        before[i]};
        if (!loss.words.empty() && !(same && IsSaid(loss, report))) {
            losses.push_back(loss);
        }
    }
    return losses;
}

} // namespace tracksmith::test
