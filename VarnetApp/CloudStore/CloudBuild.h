#pragma once

#include <QString>

#include <string>

/// What the build says of the cloud.
namespace varnet::CloudBuild {

/// "https://host[:port]" of the service; empty: this build knows none.
QString endpoint();
/// Of the program.
std::string version();
/// Name and version of the system that the program runs on.
std::string systemVersion();

} // namespace varnet::CloudBuild
