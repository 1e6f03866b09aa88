#include "VarnetApp/Updates/linux/FeedUpdates.h"

#include "VarnetApp/Updates/RunningCopy.h"
#include "VarnetApp/Updates/linux/ArchiveDownload.h"
#include "VarnetCore/Base/Clock.h"
#include "VarnetCore/Base/SerialQueue.h"

#include <QSettings>

#include <cmath>
#include <system_error>
#include <utility>

namespace varnet {

namespace {

constexpr const char* automaticKey = "SUEnableAutomaticChecks";
constexpr const char* lastCheckKey = "SULastCheckTime";

/// Empty for what is no date.
std::optional<Date> dateIn(const QVariant& value) {
    bool isNumber = false;
    const double seconds = value.toDouble(&isNumber);
    return isNumber && std::isfinite(seconds) ? std::optional(Date{seconds}) : std::nullopt;
}

} // namespace

std::unique_ptr<UpdateFramework> makeUpdateFramework(const RunningCopy& copy, UpdateNeeds needs) {
    if (copy.releaseHost.empty()) return nullptr;
    return std::make_unique<FeedUpdates>(FeedUpdates::Setup{.host = {copy.releaseHost},
                                                            .build = copy.build,
                                                            .systemVersion = copy.systemVersion,
                                                            .needs = std::move(needs)});
}

std::optional<QString> FeedUpdates::start() {
    if (setup_.host.name.empty()) return "No release host is configured.";
    if (const QSettings* const defaults = setup_.needs.defaults) {
        automatic_ = defaults->value(automaticKey, true).toBool();
        lastCheck_ = dateIn(defaults->value(lastCheckKey));
    }
    started_ = true;
    look();
    return std::nullopt;
}

void FeedUpdates::setAutomaticallyChecksForUpdates(bool automatic) {
    automatic_ = automatic;
    if (setup_.needs.defaults) setup_.needs.defaults->setValue(automaticKey, automatic);
    if (handlers_.stateChanged) handlers_.stateChanged();
}

void FeedUpdates::look() {
    if (!busy_ && UpdateSchedule::isDue(automatic_, lastCheck_, setup_.needs.clock.now())) check();
    setup_.needs.mainQueue.postAfter(lookInterval, [this, alive = std::weak_ptr(alive_)] {
        if (alive.lock()) look();
    });
}

void FeedUpdates::checkForUpdates() {
    if (canCheckForUpdates()) check();
}

void FeedUpdates::check() {
    lastCheck_ = setup_.needs.clock.now();
    if (setup_.needs.defaults) setup_.needs.defaults->setValue(lastCheckKey, lastCheck_->seconds);
    setBusy(true);
    feed_.read(this, [this](const ReleaseFeed::Answer& answer) { judge(answer); });
}

void FeedUpdates::judge(const ReleaseFeed::Answer& answer) {
    if (!answer) return abort();
    setBusy(false);
    if (answer->availability(setup_.build, setup_.systemVersion) == ReleaseAvailability::available) {
        if (found_ != *answer) archive_.clear();
        found_ = *answer;
        if (handlers_.didFindValidUpdate)
            handlers_.didFindValidUpdate(QString::fromStdString(found_->version));
    } else {
        found_.reset();
        if (handlers_.didNotFindUpdate) handlers_.didNotFindUpdate();
    }
}

void FeedUpdates::openUpdate() {
    if (!canCheckForUpdates() || !found_) return;
    setBusy(true);
    std::error_code error;
    if (!archive_.empty() && std::filesystem::exists(archive_, error)) {
        handOver();
    } else {
        download();
    }
}

void FeedUpdates::download() {
    archive_.clear();
    if (handlers_.willDownloadUpdate) handlers_.willDownloadUpdate(QString::fromStdString(found_->version));
    ArchiveDownload::begin(network_, setup_.host, *found_, setup_.needs.folder, this,
                           [this](const ArchiveDownload::Outcome& archive) {
                               if (!archive) return abort();
                               archive_ = *archive;
                               handOver();
                           });
}

void FeedUpdates::handOver() {
    const auto then = [this, alive = std::weak_ptr(alive_)] {
        if (alive.lock()) takeOver();
    };
    if (!handlers_.shouldPostponeRelaunch || !handlers_.shouldPostponeRelaunch(then)) takeOver();
}

void FeedUpdates::takeOver() {
    if (setup_.needs.reveal && !setup_.needs.reveal(archive_.string())) return abort();
    setBusy(false);
    if (handlers_.didExtractUpdate) handlers_.didExtractUpdate();
}

void FeedUpdates::abort() {
    setBusy(false);
    if (handlers_.didAbort) handlers_.didAbort();
}

void FeedUpdates::setBusy(bool busy) {
    if (std::exchange(busy_, busy) != busy && handlers_.stateChanged) handlers_.stateChanged();
}

} // namespace varnet
