#include "VarnetApp/Updates/RunningCopy.h"

#include <QString>
#include <QSysInfo>

namespace varnet {

namespace {

/// The numbers that a kernel's release begins with: "6.1.0" of "6.1.0-18-amd64".
std::string numbersOf(const std::string& release) {
    const std::size_t end = release.find_first_not_of("0123456789.");
    return release.substr(0, end);
}

} // namespace

RunningCopy RunningCopy::get() {
    return {.version = VARNET_VERSION,
            .build = VARNET_BUILD,
            .releaseHost = VARNET_RELEASE_HOST,
            .systemVersion = numbersOf(QSysInfo::kernelVersion().toStdString())};
}

} // namespace varnet
