#pragma once

#include <QNetworkRequest>
#include <QUrl>

#include <chrono>
#include <optional>
#include <string>

class QNetworkReply;

namespace varnet {

/// Where the project's site is reached, and how it is asked.
struct ReleaseHost {
    std::string name; ///< as addresses in manifests must have it
    /// Where its paths are asked for instead of "https://NAME"; for a service that a test runs.
    std::optional<QUrl> reroute = {};
    /// How long a manifest may take, and how long an archive may stand still.
    std::chrono::milliseconds patience = std::chrono::seconds(30);

    /// Takes bytes as they are: neither redirected, nor compressed on the way, nor with cookies.
    QNetworkRequest request(const QString& path) const;

    /// The HTTP status of an answer; 0: there is none.
    static int statusOf(const QNetworkReply& reply);
};

} // namespace varnet
