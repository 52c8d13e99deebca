#include "app/settings/my_registry.h"

#include <utility>

namespace tracksmith::settings {
namespace {

std::string WithoutOuterBackslashes(std::string_view path) {
    const std::size_t first = path.find_first_not_of('\\');
    if (first == std::string_view::npos) {
        return {};
    }
    const std::size_t last = path.find_last_not_of('\\');
    return std::string(path.substr(first, last - first + 1));
}

} // namespace

TMyRegistry::TMyRegistry() : TMyRegistry(UserLocation()) {}

TMyRegistry::TMyRegistry(std::filesystem::path location) : location_(std::move(location)) {}

bool TMyRegistry::OpenKey(std::string_view path) {
    CloseKey();
    if (rootKey_ != RootKey::CurrentUser) {
        throw RegistryError("no root key selected");
    }
    damaged_ = false;
    opened_ = Open(WithoutOuterBackslashes(path), writeFlag_);
    openedForWriting_ = writeFlag_;
    return opened_ != nullptr;
}

void TMyRegistry::CloseKey() {
    opened_.reset();
    openedForWriting_ = false;
}

const TMyRegistry::OpenedKey& TMyRegistry::Opened() const {
    if (opened_ == nullptr) {
        throw RegistryError("no key is open");
    }
    return *opened_;
}

TMyRegistry::OpenedKey& TMyRegistry::OpenedForWriting() {
    if (opened_ == nullptr || !openedForWriting_) {
        throw RegistryError("no key is open for writing");
    }
    return *opened_;
}

} // namespace tracksmith::settings
