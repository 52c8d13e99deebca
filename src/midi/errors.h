#pragma once

#include <stdexcept>

namespace tracksmith::midi {

/// A failed operation of an output port. The text is for the user; the code of the system stays
/// readable in TMidiOutput::Error.
class EMidiOutputError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// A failed operation of an input port. The text is for the user; the code of the system stays
/// readable in TMidiInput::Error.
class EMidiInputError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

} // namespace tracksmith::midi
