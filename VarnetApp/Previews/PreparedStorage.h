#pragma once

#include "VarnetCore/Storage/StorageScan.h"

#include <memory>
#include <string_view>

/// A developer's folders after a year of agents, made up: what pictures of the storage page show.
namespace varnet::PreparedStorage {

using Scan = std::shared_ptr<const StorageScan>;

/// Everything measured but for one folder that was read while it changed.
Scan measured();
/// The same without that one.
Scan complete();
/// A third of the way through.
Scan halfway();
/// A scan that the user has stopped, with a folder that may not be read.
Scan stopped();
/// A scan that has found nothing.
Scan nothing();
/// Names and numbers that are too long for their places.
Scan lengthy();

/// One of the projects in `measured`.
StorageProject project(std::string_view branch);
/// The same without anything to review.
StorageProject bare();

} // namespace varnet::PreparedStorage
