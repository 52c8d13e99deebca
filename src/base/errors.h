#pragma once

#include <stdexcept>

namespace tracksmith {

/// A fault of the song core: a file that cannot be decoded, coded, read or written. The text has
/// already been shown to the user through MessageHost when this is thrown.
class EMidiError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

} // namespace tracksmith
