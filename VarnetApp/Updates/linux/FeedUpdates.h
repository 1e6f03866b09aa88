#pragma once

#include "VarnetApp/Updates/UpdateFramework.h"
#include "VarnetCore/Base/Clock.h"
#include "VarnetCore/Base/SerialQueue.h"
#include "VarnetCore/Updates/AppRelease.h"

#include <QNetworkAccessManager>
#include <QObject>
#include <QUrl>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

class QNetworkReply;
class QSettings;

namespace varnet {

/// Where the project's site is reached.
struct ReleaseHost {
    std::string name; ///< as addresses in manifests must have it
    /// Where its paths are asked for instead of "https://NAME"; for a service that a test runs.
    std::optional<QUrl> reroute = {};

    QUrl url(const QString& path) const;
};

/// Reads the manifest of the newest release, and tells what came of it on the main thread. Redirects are
/// refused, longer answers are cut off unread, and a server that dawdles is left.
class ReleaseFeed {
public:
    enum class Trouble { none, network, redirect, tooLarge, invalid };
    struct Answer {
        std::optional<AppRelease> release; ///< empty when there is trouble
        Trouble trouble = Trouble::none;
        QString reason; ///< of the trouble, for a log
    };

    static constexpr int timeout = 30'000; ///< milliseconds

    /// @param network outlives what is asked
    ReleaseFeed(QNetworkAccessManager& network, ReleaseHost host)
        : network_(network), host_(std::move(host)) {}

    /// @param receiver ends the question with itself
    void read(QObject* receiver, std::function<void(Answer)> then);

private:
    QNetworkAccessManager& network_;
    const ReleaseHost host_;
};

/// Updates where no framework brings them: reads the feed on schedule, fetches an archive into a private
/// folder, checks its digest and shows it in the file manager. Nothing that was fetched is ever run.
class FeedUpdates final : public QObject, public UpdateFramework {
    Q_OBJECT

public:
    struct Setup {
        ReleaseHost host;
        std::int64_t build = 0;    ///< of the program that runs
        std::string systemVersion; ///< of the system it runs on
        const Clock& clock;
        SerialQueue& mainQueue;
        QSettings* defaults = nullptr; ///< null: choices and dates are not kept
        std::filesystem::path folder;  ///< that archives are fetched into
        std::function<void(const std::string& path)> reveal = {};
    };

    /// An archive of more bytes is refused.
    static constexpr std::int64_t mostBytes = 1'000'000'000;

    explicit FeedUpdates(Setup setup);
    ~FeedUpdates() override;

    void listen(Handlers handlers) override { handlers_ = std::move(handlers); }
    std::optional<QString> start() override;
    bool canCheckForUpdates() const override { return started_ && !busy_; }
    bool sessionInProgress() const override { return busy_; }
    bool automaticallyChecksForUpdates() const override;
    void setAutomaticallyChecksForUpdates(bool automatic) override;
    std::optional<Date> lastUpdateCheckDate() const override;
    void checkForUpdates() override;

    QNetworkAccessManager& network() noexcept { return network_; }

private:
    /// Seconds between two looks at whether a check is due.
    static constexpr double lookInterval = 3600;

    void look();
    void check(bool asked);
    void judge(const ReleaseFeed::Answer& answer, bool asked);
    void download();
    void setBusy(bool busy);
    void abort();

    const Setup setup_;
    QNetworkAccessManager network_;
    ReleaseFeed feed_{network_, setup_.host};
    Handlers handlers_;
    bool started_ = false;
    bool busy_ = false;
    std::optional<AppRelease> found_;

    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

} // namespace varnet
