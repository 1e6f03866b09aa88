#pragma once

// clang-format off: moc cannot read a file whose first header is what dates begin with.
#include <functional>
#include <optional>
// clang-format on

#include "VarnetCore/Base/Date.h"

#include <QString>

#include <filesystem>
#include <memory>
#include <string>

class QSettings;

namespace varnet {

class Clock;
class SerialQueue;
struct RunningCopy;

/// What finds, fetches and hands over new versions on a platform. Main thread only; nothing waits for the
/// network.
class UpdateFramework {
public:
    struct Handlers {
        std::function<void(const QString& version)> didFindValidUpdate = {};
        std::function<void()> didNotFindUpdate = {};
        std::function<void(const QString& version)> willDownloadUpdate = {};
        std::function<void()> didExtractUpdate = {}; ///< it is here and is what was announced
        std::function<void()> didAbort = {};
        /// Asked before a found version takes over. True: it waits until it is called for.
        std::function<bool(std::function<void()> takeOver)> shouldPostponeRelaunch = {};
        /// One of the four values below is another.
        std::function<void()> stateChanged = {};
    };

    virtual ~UpdateFramework() = default;

    virtual void listen(Handlers handlers) = 0;
    /// Begins to look for versions by itself, when it may.
    /// @return empty on success, else the reason
    virtual std::optional<QString> start() = 0;

    virtual bool canCheckForUpdates() const = 0;
    virtual bool sessionInProgress() const = 0;
    virtual bool automaticallyChecksForUpdates() const = 0;
    virtual void setAutomaticallyChecksForUpdates(bool automatic) = 0;
    virtual std::optional<Date> lastUpdateCheckDate() const = 0;

    /// The user asks for a look.
    virtual void checkForUpdates() = 0;
    /// The user wants the version that was found.
    virtual void openUpdate() = 0;
};

/// What updates need of the program; all of it outlives them.
struct UpdateNeeds {
    const Clock& clock;
    SerialQueue& mainQueue;
    QSettings* defaults = nullptr; ///< null: choices and dates are not kept
    std::filesystem::path folder;  ///< that archives are fetched into; nobody else's
    /// Shows a file to the user; false: it could not.
    std::function<bool(const std::string& path)> reveal = {};
};

/// The platform's own; null for a copy that no releases are announced for.
std::unique_ptr<UpdateFramework> makeUpdateFramework(const RunningCopy& copy, UpdateNeeds needs);

} // namespace varnet
