#include "VarnetCore/Monitoring/ProcessIdentity.h"

#include <fmt/compile.h>

namespace varnet {

std::string ProcessIdentity::id() const {
    return fmt::format(FMT_COMPILE("{}:{}:{}"), boot, pid, start);
}

} // namespace varnet
