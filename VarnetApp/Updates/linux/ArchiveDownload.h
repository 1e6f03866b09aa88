#pragma once

#include "VarnetApp/Updates/ReleaseHost.h"
#include "VarnetCore/Updates/AppRelease.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>

class QNetworkAccessManager;
class QObject;

/// Fetches the archive of a release. What was fetched is never run.
namespace varnet::ArchiveDownload {

/// An archive of more bytes is refused.
constexpr std::int64_t mostBytes = 1'000'000'000;

/// Where the archive is; empty: it could not be had, or is not what was announced.
using Outcome = std::optional<std::filesystem::path>;

/// Writes into a folder for its user alone; what earlier downloads left there goes. Only a whole archive with
/// the announced digest gets its name; of any other nothing stays.
/// @param release one that was judged
/// @param receiver without it nobody is told
void begin(QNetworkAccessManager& network, const ReleaseHost& host, const AppRelease& release,
           const std::filesystem::path& folder, const QObject* receiver, std::function<void(Outcome)> then);

} // namespace varnet::ArchiveDownload
