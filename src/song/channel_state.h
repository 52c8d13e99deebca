#pragma once

#include <array>
#include <cstdint>

#include "song/event_link.h"
#include "song/midi_event.h"
#include "song/midi_numbers.h"
#include "song/parameter_list.h"

namespace tracksmith::song {

/// What the events before a place have set on one channel, but for the values of parameters, and
/// which of them did. A plain block of memory: copied and kept up to date without allocating.
struct ChannelControls {
    /// The program, and the bank that was selected when it was.
    Setting program;
    Setting programBankMsb;
    Setting programBankLsb;
    /// Controllers 0 to 119; among them the bank select for the next program change and both parts
    /// of parameter numbers. Mode messages and data increments set none.
    std::array<Setting, kControllers> controllers;
    /// Pitch bend, 0 to 16,383.
    Setting bend;
    /// Pressure of the whole channel.
    Setting pressure;
    /// Whether the parameter number set last was a registered one.
    bool registered = true;

    /// Takes the next event of the channel in playing order. Notes, key pressure and removed events
    /// set nothing. Data bytes may be written by another thread meanwhile.
    void Take(ConstEventLink event);
    /// Takes a channel message, `command` without the channel; null for a message of no event.
    void Take(std::uint8_t command, std::uint8_t data1, std::uint8_t data2, ConstEventLink event);

    /// The parameter that data entry goes to; none unless both bytes of its number are known.
    ParameterNumber Selected() const;

private:
    void TakeController(ConstEventLink event, std::uint8_t controller, std::uint8_t value);
    void ResetControllers();
};

/// Everything that the events before a place have set on one channel, and which of them did.
struct ChannelState : ChannelControls {
    ParameterList parameters;

    /// As those of ChannelControls; data entry too. Throws std::bad_alloc where the list of
    /// parameters has no room.
    void Take(ConstEventLink event);
    void Take(std::uint8_t command, std::uint8_t data1, std::uint8_t data2, ConstEventLink event);

    /// A reset of the whole instrument: nothing is set any more.
    void Clear();
};

} // namespace tracksmith::song
