#pragma once

#include "VarnetApp/Updates/ReleaseHost.h"
#include "VarnetCore/Updates/AppRelease.h"

#include <QString>

#include <expected>
#include <functional>
#include <utility>

class QNetworkAccessManager;
class QObject;

namespace varnet {

/// Reads the manifest of the newest release, and tells what came of it on the main thread. Redirects are
/// refused, a longer answer is cut off, and a server that dawdles is left.
class ReleaseFeed {
public:
    /// The release, or why there is none: for people, in the middle of a sentence.
    using Answer = std::expected<AppRelease, QString>;

    /// @param network outlives what is asked
    ReleaseFeed(QNetworkAccessManager& network, ReleaseHost host)
        : network_(network), host_(std::move(host)) {}

    /// @param receiver without it nobody is told
    void read(const QObject* receiver, std::function<void(Answer)> then);

private:
    QNetworkAccessManager& network_;
    const ReleaseHost host_;
};

} // namespace varnet
