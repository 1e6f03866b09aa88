#pragma once

#include "VarnetApp/AppStore/GroupFilter.h"
#include "VarnetApp/AppStore/Page.h"
#include "VarnetApp/AppStore/ServiceFilter.h"
#include "VarnetApp/AppStore/StopOperations.h"
#include "VarnetApp/AppStore/StoreSettings.h"
#include "VarnetApp/Engine/MonitorEngine.h"
#include "VarnetCore/Findings/RestartDetection.h"
#include "VarnetCore/Flame/RoastEngine.h"

#include <QObject>
#include <QString>
#include <QUrl>

#include <cstddef>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace varnet {

class AppLocalization;
class ApplicationCatalog;
class BatteryReader;
class SamplingLoop;

namespace platform {
class ApplicationQuitting;
class LoginItem;
class Notifications;
} // namespace platform

/// What other subsystems do at their places in the loop. An empty function: nobody is there.
struct StoreCollaborators {
    /// Badges and records; sees every snapshot.
    std::function<void(const MonitorSnapshot&)> observeCollection = {};
    /// Cloud backup; sees every live snapshot, after the collection.
    std::function<void(const std::shared_ptr<const MonitorSnapshot>&)> observeCloud = {};
    /// The flame in the Dock and in the tray.
    std::function<void(const MonitorSnapshot&)> updateFlame = {};
    /// The machine's thermal state, 0 (nominal) to 3 (critical).
    std::function<int()> thermalState = {};
    /// Whether somebody can see live data: some window is visible, not minimised and exposed.
    std::function<bool()> visibleUI = {};
    /// Kind of a group that the user looks into.
    std::function<void(GroupKind)> inspected = {};
    /// A plan whose every process is gone: which, how each ended, and whether a finding called it forgotten.
    std::function<void(const StopPlan&, const std::vector<StopResult>&, bool forgotten)> stopped = {};
    /// Number of badges earned.
    std::function<std::size_t()> unlockedBadges = {};
    /// Forgets all badges, records and summaries.
    std::function<void()> resetCollection = {};
    /// Why the battery history is not kept; empty: it is.
    std::function<std::optional<std::string>()> batteryWarning = {};
    /// Begins to look for new versions.
    std::function<void()> startUpdates = {};
};

/// The one observable object that everything on screen reads. Owns the engine and the sampling loop, decides
/// what is published to the views and when, raises notifications and holds the settings. Main thread only;
/// views change the system through its operations alone.
class VarnetStore : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString page READ pageName WRITE setPageName NOTIFY pageChanged)
    Q_PROPERTY(QString search READ search WRITE setSearch NOTIFY filterChanged)
    Q_PROPERTY(int searchFocusRequest READ searchFocusRequest NOTIFY searchFocusRequestChanged)
    Q_PROPERTY(QString sort READ sortName WRITE setSortName NOTIFY filterChanged)
    Q_PROPERTY(QString agentFilter READ agentFilter WRITE setAgentFilter NOTIFY filterChanged)
    Q_PROPERTY(bool showRoast READ showRoast WRITE setShowRoast NOTIFY showRoastChanged)
    Q_PROPERTY(QString actionMessage READ actionMessage WRITE setActionMessage NOTIFY actionMessageChanged)
    /// The action's outcome is what the user asked for, seen to be so.
    Q_PROPERTY(bool actionSucceeded READ actionSucceeded NOTIFY actionMessageChanged)
    Q_PROPERTY(
        QString settingsMessage READ settingsMessage WRITE setSettingsMessage NOTIFY settingsMessageChanged)
    Q_PROPERTY(bool hasOnboarded READ hasOnboarded NOTIFY settingsChanged)
    Q_PROPERTY(QString appearance READ appearance WRITE setAppearance NOTIFY settingsChanged)
    Q_PROPERTY(bool showMenuCPU READ showMenuCPU WRITE setShowMenuCPU NOTIFY settingsChanged)
    Q_PROPERTY(bool notifications READ notifications NOTIFY settingsChanged)
    Q_PROPERTY(bool canResetCollection READ canResetCollection CONSTANT)
    Q_PROPERTY(bool launchAtLogin READ launchAtLogin NOTIFY loginChanged)
    Q_PROPERTY(bool loginNeedsApproval READ loginNeedsApproval NOTIFY loginChanged)
    Q_PROPERTY(QString loginError READ loginError NOTIFY loginChanged)

public:
    /// All references and pointers outlive the store, save that the engine's queue must have ended before it.
    struct Setup {
        Probes& probes;
        const Clock& clock;
        SerialQueue& engineQueue;
        SerialQueue& mainQueue;
        AppLocalization& localization;
        ApplicationCatalog* catalog = nullptr;             ///< null: no applications are known
        platform::Notifications* notifications = nullptr;  ///< null: none can be delivered
        platform::LoginItem* loginItem = nullptr;          ///< null: there is no such thing
        platform::ApplicationQuitting* quitting = nullptr; ///< null: no application can be quit
        BatteryReader* battery = nullptr;                  ///< engine's queue only; null: cannot be read
        QSettings* defaults = nullptr;                     ///< null: choices are not kept
        std::filesystem::path storage;                     ///< empty: the data root
        /// Whose processes may be stopped; empty: those of whoever runs the program.
        std::optional<std::uint32_t> user = {};
        std::shared_ptr<const MonitorSnapshot> preview; ///< prepared data instead of the live machine
        StoreCollaborators collaborators;
    };

    explicit VarnetStore(Setup setup);
    ~VarnetStore() override;

    /// Begins to measure, once. Does nothing with prepared data.
    void start();
    /// For the operating system's sleep and its end: no counter or minute spans it.
    void resetAfterSleep();

    // What is published. Lags behind the newest sample while nothing is visible.
    const MonitorSnapshot& snapshot() const noexcept { return *snapshot_; }
    std::shared_ptr<const MonitorSnapshot> sharedSnapshot() const noexcept { return snapshot_; }
    const MonitorSnapshot& latestSnapshot() const noexcept { return *latestSnapshot_; }
    const Roast& roast() const noexcept { return roast_; }
    /// Percent of the whole machine beside the tray icon; measured also while nothing is visible.
    std::optional<double> menuCPU() const noexcept { return menuCPU_; }
    std::size_t menuFindingCount() const noexcept { return menuFindingCount_; }
    bool isPreview() const noexcept { return isPreview_; }
    /// Trouble with keeping history; empty: none.
    const std::optional<std::string>& historyWarning() const noexcept { return historyWarning_; }
    /// Findings that the user set aside, and since when; the user's actions, newest first.
    const std::map<std::string, Date>& ignored() const noexcept { return ignored_; }
    const std::vector<HistoryRecord>& actions() const noexcept { return actions_; }

    // Navigation.
    Page page() const noexcept { return page_; }
    QString pageName() const;
    void setPage(Page page);
    void setPageName(const QString& name);
    /// Opens a page afresh: nothing selected, nothing sought, every agent.
    Q_INVOKABLE void navigate(const QString& pageName);
    /// Puts the cursor into a search field, on the page of all sources when there is none here.
    Q_INVOKABLE void requestSearch();
    const std::optional<std::string>& selectedGroup() const noexcept { return selectedGroup_; }
    const std::optional<std::string>& selectedService() const noexcept { return selectedService_; }
    void select(std::optional<std::string> group, std::optional<std::string> service);
    QString search() const { return filter_.search; }
    void setSearch(const QString& text);
    int searchFocusRequest() const noexcept { return searchFocusRequest_; }
    SortOrder sort() const noexcept { return filter_.sort; }
    QString sortName() const;
    void setSortName(const QString& name);
    QString agentFilter() const { return filter_.agent; }
    void setAgentFilter(const QString& agent);
    /// Pointers into the published snapshot.
    std::vector<const ApplicationGroup*> filteredGroups() const;
    /// Those of the page, whoever started them and whatever is sought; in the snapshot's order.
    std::vector<const ApplicationGroup*> groupsOfPage() const;
    std::vector<const Service*> filteredServices() const;
    std::optional<std::size_t> itemCount(Page page) const;

    // Stopping.
    StopOperations& stopping() noexcept { return stopping_; }
    const StopOperations& stopping() const noexcept { return stopping_; }
    /// Services that were stopped lately, each seen to be gone.
    const std::vector<StoppedService>& stoppedServices() const noexcept { return stoppedServices_; }

    // Looking into things.
    void inspect(const ApplicationGroup& group);
    void inspect(const Finding& finding);
    void ignore(const Finding& finding);
    Q_INVOKABLE void unignore(const QString& id);

    // What becomes visible asks for the newest sample.
    Q_INVOKABLE void publishLatest();
    Q_INVOKABLE void presentRoast();
    bool showRoast() const noexcept { return showRoast_; }
    void setShowRoast(bool shown);
    const std::optional<Roast>& frozenRoast() const noexcept { return frozenRoast_; }
    /// What was published when the roast was frozen; null: no roast is.
    const std::shared_ptr<const MonitorSnapshot>& roastSnapshot() const noexcept { return roastSnapshot_; }

    // Settings.
    bool hasOnboarded() const { return settings_.hasOnboarded(); }
    /// Prepared data counts as onboarded unless the welcome itself is to be shown.
    void setPreviewOnboarded(bool onboarded);
    /// The next prepared pass. Does nothing on a live machine.
    void setPreview(std::shared_ptr<const MonitorSnapshot> snapshot);
    /// What prepared data has of the past.
    void setPreviewHistory(std::map<std::string, Date> ignored, std::vector<HistoryRecord> actions);
    Q_INVOKABLE void finishOnboarding(bool launchAtLogin);
    QString appearance() const { return settings_.appearance(); }
    void setAppearance(const QString& appearance);
    bool showMenuCPU() const { return settings_.showMenuCPU(); }
    void setShowMenuCPU(bool shown);
    bool notifications() const { return settings_.notifications(); }
    Q_INVOKABLE void setNotifications(bool enabled);
    bool launchAtLogin() const noexcept { return launchAtLogin_; }
    bool loginNeedsApproval() const noexcept { return loginNeedsApproval_; }
    QString loginError() const { return loginError_; }
    Q_INVOKABLE void setLogin(bool enabled);
    Q_INVOKABLE void openLoginSettings();
    void refreshLoginStatus();
    Q_INVOKABLE void clearHistory();
    /// Whether there is a collection of badges to reset.
    bool canResetCollection() const { return collaborators_.resetCollection != nullptr; }
    Q_INVOKABLE void resetCollection();
    /// Lets a project's folder be read from now on and after the next start.
    Q_INVOKABLE void grantProjectAccess(const QUrl& folder);
    const QStringList& folderAccess() const noexcept { return folderAccess_; }
    StoreSettings& settings() noexcept { return settings_; }

    QString actionMessage() const { return actionMessage_; }
    void setActionMessage(const QString& message);
    bool actionSucceeded() const;
    QString settingsMessage() const { return settingsMessage_; }
    void setSettingsMessage(const QString& message);

    bool visibleUI() const;

    /// Asks the window layer for the settings.
    Q_INVOKABLE void showSettings();

    // Supplied and reported by the window layer.
    std::function<void()> openMain;
    std::function<void()> openSettings;
    bool mainVisible = false;
    bool panelVisible = false;
    bool settingsVisible = false;

signals:
    void snapshotChanged();
    void roastChanged();
    void menuChanged();
    void pageChanged();
    void selectionChanged();
    void filterChanged();
    void searchFocusRequestChanged();
    void showRoastChanged();
    void actionMessageChanged();
    void settingsMessageChanged();
    void historyChanged();
    void settingsChanged();
    void loginChanged();
    /// The appearance is to be applied.
    void appearanceChanged();

private:
    friend class SamplingLoop;
    friend class StopOperations;

    // The loop's steps on the main thread.
    void accept(std::shared_ptr<const MonitorSnapshot> snapshot);
    void mirrorArchive(std::map<std::string, Date> ignored, std::vector<HistoryRecord> actions,
                       std::optional<std::string> persistenceError);
    void detectRestarts();
    void notifyIfNeeded(const MonitorSnapshot& snapshot);

    void publish(std::shared_ptr<const MonitorSnapshot> snapshot);
    void show(Roast roast);
    void saveChoices();
    void updateRoast();
    void replaceFindings(std::vector<Finding> findings);
    void openFolderAccess();
    void readBackIgnored();
    void clearFilter();
    void runOnEngine(std::function<void(MonitorEngine&)> work, std::function<void()> then = {});

    // Constant after construction.
    const Clock& clock_;
    SerialQueue& engineQueue_;
    SerialQueue& mainQueue_;
    AppLocalization& localization_;
    ApplicationCatalog* const catalog_;
    platform::Notifications* const notificationService_;
    platform::LoginItem* const loginItem_;
    const StoreCollaborators collaborators_;
    const bool isPreview_;

    // Engine queue only, once the loop runs.
    std::unique_ptr<MonitorEngine> engine_;

    // Main thread.
    StoreSettings settings_;
    std::shared_ptr<const MonitorSnapshot> snapshot_;
    std::shared_ptr<const MonitorSnapshot> latestSnapshot_;
    RoastEngine roastEngine_;
    RoastEngine::Choices savedChoices_; ///< as the archive holds them
    Roast roast_ = Roast::start();
    std::optional<Roast> frozenRoast_;
    std::shared_ptr<const MonitorSnapshot> roastSnapshot_;
    bool showRoast_ = false;
    Page page_ = Page::overview;
    std::optional<std::string> selectedGroup_;
    std::optional<std::string> selectedService_;
    GroupFilter filter_;
    int searchFocusRequest_ = 0;
    QString actionMessage_;
    QString settingsMessage_;
    std::optional<std::string> historyWarning_;
    std::map<std::string, Date> ignored_;
    std::vector<HistoryRecord> actions_;
    std::optional<double> menuCPU_;
    std::size_t menuFindingCount_ = 0;
    NotificationDates notificationDates_;
    std::vector<StoppedService> stoppedServices_;
    QStringList folderAccess_;
    bool launchAtLogin_ = false;
    bool loginNeedsApproval_ = false;
    QString loginError_;
    std::unique_ptr<SamplingLoop> loop_;
    StopOperations stopping_;

    /// What posted work looks at before it touches the store.
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

} // namespace varnet
