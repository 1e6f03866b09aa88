#include "VarnetApp/Platform/ApplicationCatalog.h"
#include "VarnetApp/Platform/linux/KernelProcessAccess.h"
#include "VarnetApp/Platform/linux/LinuxApplicationCatalog.h"
#include "VarnetApp/Platform/linux/UserManagerEvents.h"

#include <unistd.h>

namespace varnet {

std::unique_ptr<ApplicationCatalog> makeApplicationCatalog(const Clock& clock) {
    return std::make_unique<platform::LinuxApplicationCatalog>(platform::LinuxApplicationCatalog::Parts{
        .clock = clock,
        .access = std::make_unique<platform::KernelProcessAccess>(),
        .events = std::make_unique<platform::UserManagerEvents>(QString()),
        .places = platform::DesktopPlaces::current(),
        .uid = static_cast<std::uint32_t>(::geteuid())});
}

} // namespace varnet
