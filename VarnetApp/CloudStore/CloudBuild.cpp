#include "VarnetApp/CloudStore/CloudBuild.h"

#include <QSysInfo>

namespace varnet {

QString CloudBuild::endpoint() {
    return QStringLiteral(VARNET_CLOUD_ENDPOINT);
}

std::string CloudBuild::version() {
    return VARNET_VERSION;
}

std::string CloudBuild::systemVersion() {
    return QSysInfo::prettyProductName().toStdString();
}

} // namespace varnet
