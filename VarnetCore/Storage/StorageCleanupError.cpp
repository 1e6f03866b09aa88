#include "VarnetCore/Storage/StorageCleanupError.h"

namespace varnet {

std::string_view errorDescription(StorageCleanupError error) noexcept {
    switch (error) {
    case StorageCleanupError::changed:
        return "The folder changed since the scan. Rescan before cleaning.";
    case StorageCleanupError::unsupported:
        return "Only reviewed dependency and build-cache folders can be moved.";
    case StorageCleanupError::tracked:
        return "Git protection could not be verified. Nothing was moved.";
    case StorageCleanupError::busy:
        return "A process is using this project. Stop its tasks, then try again.";
    case StorageCleanupError::incomplete:
        return "The folder could not be fully checked. Nothing was moved.";
    case StorageCleanupError::permission:
        break;
    }
    return "This folder is not owned by the current user. Nothing was moved.";
}

} // namespace varnet
