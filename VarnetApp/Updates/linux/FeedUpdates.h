#pragma once

#include "VarnetApp/Updates/ReleaseFeed.h"
#include "VarnetApp/Updates/UpdateFramework.h"

#include <QNetworkAccessManager>
#include <QObject>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace varnet {

/// Updates where no framework brings them: reads the feed on schedule, fetches an archive into a private
/// folder, checks its digest and shows it in the file manager. Nothing that was fetched is ever run.
class FeedUpdates final : public QObject, public UpdateFramework {
    Q_OBJECT

public:
    struct Setup {
        ReleaseHost host;
        std::int64_t build = 0;    ///< of the program that runs
        std::string systemVersion; ///< of the system it runs on
        UpdateNeeds needs;
    };

    explicit FeedUpdates(Setup setup) : setup_(std::move(setup)) {}

    void listen(Handlers handlers) override { handlers_ = std::move(handlers); }
    std::optional<QString> start() override;
    bool canCheckForUpdates() const override { return started_ && !busy_; }
    bool sessionInProgress() const override { return busy_; }
    bool automaticallyChecksForUpdates() const override { return automatic_; }
    void setAutomaticallyChecksForUpdates(bool automatic) override;
    std::optional<Date> lastUpdateCheckDate() const override { return lastCheck_; }
    void checkForUpdates() override;
    void openUpdate() override;

private:
    /// Seconds between two looks at whether a check is due.
    static constexpr double lookInterval = 3600;

    void look();
    void check();
    void judge(const ReleaseFeed::Answer& answer);
    void download();
    void handOver();
    void takeOver();
    void abort();
    void setBusy(bool busy);

    const Setup setup_;
    QNetworkAccessManager network_;
    ReleaseFeed feed_{network_, setup_.host};
    Handlers handlers_;
    bool started_ = false;
    bool busy_ = false;
    bool automatic_ = true;
    std::optional<Date> lastCheck_;
    std::optional<AppRelease> found_;
    std::filesystem::path archive_; ///< of what was found; empty: not fetched yet

    /// What posted work looks at before it touches this.
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

} // namespace varnet
