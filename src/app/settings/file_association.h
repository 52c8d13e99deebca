#pragma once

#include <filesystem>
#include <string>

#include "base/text.h"

#include "app/settings/my_registry.h"

namespace tracksmith::settings {

/// The program's place among those that Windows offers for song files ("Open with"), in the current
/// user's part of the registry. It is only offered there: which program opens the files when they
/// are double-clicked stays what it was until the user chooses it. User-interface thread.
class FileAssociation {
public:
    /// `program` is the path of the program.
    explicit FileAssociation(const std::filesystem::path& program);
    /// Kept elsewhere, for tests; see TMyRegistry.
    FileAssociation(const std::filesystem::path& program, std::filesystem::path location);

    /// Whether files are associated in the registry here; elsewhere packages do that.
    bool Possible() const { return possible_; }

    /// Whether this program, where it is now, is offered.
    bool Offered();

    /// Offers it, with names in `language`, or takes everything back. False when the registry
    /// refuses; what has been written until then is taken back at the next attempt.
    bool Offer(Language language);
    bool TakeBack(); ///< See Offer.

private:
    std::string Command() const;
    void WriteClass(Language language);
    void RemoveEntries();

    std::string program_;
    TMyRegistry registry_;
    bool possible_;
};

} // namespace tracksmith::settings
