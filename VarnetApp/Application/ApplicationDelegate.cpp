#include "VarnetApp/Application/ApplicationDelegate.h"

#include "VarnetApp/AppStore/MainQueue.h"
#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Application/CollectionWatch.h"
#include "VarnetApp/Application/LaunchPresentation.h"
#include "VarnetApp/Application/MenuBarLabel.h"
#include "VarnetApp/Application/UnixSignals.h"
#include "VarnetApp/Application/Windows.h"
#include "VarnetApp/CloudStore/CloudBuild.h"
#include "VarnetApp/CloudStore/CloudService.h"
#include "VarnetApp/CloudStore/CloudStore.h"
#include "VarnetApp/Components/Mascot/MascotPainter.h"
#include "VarnetApp/Components/Theme.h"
#include "VarnetApp/Engine/AppData.h"
#include "VarnetApp/FlameCollectionStore/CollectionFile.h"
#include "VarnetApp/FlameCollectionStore/FlameCollectionStore.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/Platform/Appearance.h"
#include "VarnetApp/Platform/ApplicationCatalog.h"
#include "VarnetApp/Platform/ApplicationQuitting.h"
#include "VarnetApp/Platform/BatteryPower.h"
#include "VarnetApp/Platform/DesktopTrash.h"
#include "VarnetApp/Platform/FileOpening.h"
#include "VarnetApp/Platform/Keychain.h"
#include "VarnetApp/Platform/LoginItem.h"
#include "VarnetApp/Platform/Notifications.h"
#include "VarnetApp/Platform/SingleInstance.h"
#include "VarnetApp/Platform/SleepWatch.h"
#include "VarnetApp/Platform/TrayItem.h"
#include "VarnetApp/StorageStore/BackgroundQueue.h"
#include "VarnetApp/StorageStore/DiskStorageStore.h"
#include "VarnetApp/Updates/AppUpdater.h"
#include "VarnetApp/Updates/RunningCopy.h"
#include "VarnetCore/Base/SerialQueue.h"
#include "VarnetCore/Battery/BatteryTracker.h"
#include "VarnetCore/Cloud/CloudExport.h"
#include "VarnetCore/Cloud/CloudRecorder.h"
#include "probes/SystemProbes.h"

#include <QDir>
#include <QGuiApplication>
#include <QPalette>
#include <QPixmap>
#include <QPixmapCache>
#include <QQuickWindow>
#include <QSettings>
#include <QTimer>

#include <array>
#include <atomic>
#include <cstdio>
#include <optional>
#include <string>

namespace varnet {

namespace {

/// How long a tray may take to appear, or to come back, before the window stands in for it.
constexpr std::chrono::seconds trayPatience{5};

/// What launchers may ask for beside the window; named so in the desktop entry, too.
constexpr const char* settingsAction = "settings";
constexpr const char* overviewAction = "overview";

/// The running program: everything that lives from launch to quit, and how it hangs together.
class Application {
public:
    explicit Application(const ApplicationDelegate::Start& start) : start_(start) {}

    ~Application() { willTerminate(); }

    void launch(platform::SingleInstance& instance) {
        willFinishLaunching(instance);
        didFinishLaunching();
    }

private:
    void willFinishLaunching(platform::SingleInstance& instance) {
        store_.openMain = [this] { presentation_.requestOpen(); };
        store_.openSettings = [this] { windows_.openSettings(); };
        instance.listen({.activated =
                             [this](const std::string& token) {
                                 windows_.setActivationToken(QString::fromStdString(token));
                                 presentation_.requestOpen();
                             },
                         .asked =
                             [this](const std::string& action, const std::string& token) {
                                 windows_.setActivationToken(QString::fromStdString(token));
                                 perform(action);
                             }});
        notifications_->listen({.activated = [this](const std::string&, const std::string& token) {
            windows_.setActivationToken(QString::fromStdString(token));
            presentation_.requestOpen();
        }});
        sleepWatch_->listen({.changed = [this](bool) { store_.resetAfterSleep(); }});
        appearance_->listen({.changed = [this] { applyAppearance(); }});
        QObject::connect(&store_, &VarnetStore::appearanceChanged, &windows_, [this] { applyAppearance(); });
        QObject::connect(qGuiApp, &QGuiApplication::applicationStateChanged, &windows_,
                         [this](Qt::ApplicationState state) {
                             // The user may have changed the login item in the desktop's settings.
                             if (state == Qt::ApplicationActive) store_.refreshLoginStatus();
                         });
        flame_.setApplicationIcon = [this](const QImage& image) {
            windows_.setIcon(image.isNull() ? ownIcon() : QIcon(QPixmap::fromImage(image)));
        };
        windows_.setIcon(ownIcon());
        // Nothing takes over while folders are being moved.
        updater_.installationIsSafe = [this] { return !storage_.cleaning(); };
        QObject::connect(&updater_, &AppUpdater::changed, &label_, [this] {
            label_.setUpdateAvailable(updater_.availableVersion().has_value());
            label_.setCanCheckForUpdates(updater_.canCheckForUpdates());
        });
    }

    void didFinishLaunching() {
        cloud_.start();
        flame_.setPresence(flame_.keepInDock() ? DockFlame::Presence::regular
                                               : DockFlame::Presence::accessory);
        label_.show();
        presentation_.registeredWindowAction([this] { windows_.openMain(); });
        store_.start();
        presentation_.finishedLaunching(start_.login ? std::optional(LaunchEvent::login()) : std::nullopt,
                                        store_.hasOnboarded(), start_.showWindow);
        if (start_.showSettings) windows_.openSettings();
        trayTimer_.setSingleShot(true);
        QObject::connect(&trayTimer_, &QTimer::timeout, &windows_, [this] { standInForTray(); });
        trayTimer_.start(trayPatience);
    }

    /// An action that is not known, of an older or newer desktop entry, is a request for the window.
    void perform(const std::string& action) {
        if (action == settingsAction) {
            windows_.openSettings();
        } else if (action == overviewAction) {
            store_.navigate(overviewAction);
        } else {
            presentation_.requestOpen();
        }
    }

    void willTerminate() {
        wholeDisk_.discard();
        collection_.save(FlameCollectionStore::Saving::now);
        defaults_.sync();
    }

    /// Without a tray the main window is the program.
    void standInForTray() {
        windows_.setStaysReachable(trayItem_->hosted());
        if (!trayItem_->hosted() && !windows_.mainIsOpen()) presentation_.requestOpen();
    }

    void trayHosted(bool hosted) {
        if (hosted) {
            trayTimer_.stop();
            windows_.setStaysReachable(true);
        } else {
            trayTimer_.start(trayPatience);
        }
    }

    void applyAppearance() {
        const QString choice = store_.appearance();
        bool dark = choice == QLatin1String("Dark");
        if (choice == QLatin1String("System")) {
            const bool darkPalette = qGuiApp->palette().color(QPalette::Window).lightness() < 128;
            dark = appearance_->prefersDark().value_or(darkPalette);
        }
        Theme::shared().setDark(dark);
        Theme::shared().setReducedMotion(appearance_->reducedMotion().value_or(false));
    }

    /// What the sensors last said. Reading them may wait for firmware, which windows must not: they are asked
    /// anew where the rest is measured.
    int thermalState() {
        engineQueue_.post([this] { thermal_ = probes_.thermalState(); });
        return thermal_;
    }

    static QIcon ownIcon() {
        QIcon icon;
        for (const int size : std::array{16, 32, 48, 128, 256})
            icon.addPixmap(QPixmap::fromImage(mascotImage(FlameExpression::smug, size, MascotStyle::tile)));
        return icon;
    }

    const ApplicationDelegate::Start start_;

    QSettings defaults_{QSettings::IniFormat, QSettings::UserScope, "Varnet", "Varnet"};
    SystemClock clock_;
    SystemProbes probes_;
    AppLocalization localization_{&defaults_};

    // Engine's queue only, once it runs: the sensors remember between readings.
    std::unique_ptr<BatteryReader> battery_ = platform::makeBatteryReader();
    std::atomic<int> thermal_ = 0;

    std::unique_ptr<ApplicationCatalog> catalog_ = makeApplicationCatalog(clock_);
    std::unique_ptr<platform::ApplicationQuitting> quitting_ = platform::makeApplicationQuitting(*catalog_);
    std::unique_ptr<platform::Notifications> notifications_ = platform::makeNotifications();
    std::unique_ptr<platform::LoginItem> loginItem_ = platform::makeLoginItem();
    std::unique_ptr<platform::Appearance> appearance_ = platform::makeAppearance();
    std::unique_ptr<platform::SleepWatch> sleepWatch_ = platform::makeSleepWatch();
    std::unique_ptr<platform::FileOpening> fileOpening_ = platform::makeFileOpening();
    std::unique_ptr<platform::TrayItem> trayItem_ = platform::makeTrayItem();

    MainQueue mainQueue_;
    ThreadQueue collectionWriter_;
    FlameCollectionStore collection_{{.clock = clock_,
                                      .mainQueue = mainQueue_,
                                      .writer = collectionWriter_,
                                      .file = AppData::root() / CollectionFile::name}};
    VarnetStore store_{
        {.probes = probes_,
         .clock = clock_,
         .engineQueue = engineQueue_,
         .mainQueue = mainQueue_,
         .localization = localization_,
         .catalog = catalog_.get(),
         .notifications = notifications_.get(),
         .loginItem = loginItem_.get(),
         .quitting = quitting_.get(),
         .battery = battery_.get(),
         .defaults = &defaults_,
         .storage = {},
         .preview = nullptr,
         .collaborators = withCollection(
             collection_,
             {
                 .observeCloud =
                     [this](const std::shared_ptr<const MonitorSnapshot>& snapshot) {
                         cloud_.observe(snapshot, collection_.archive());
                     },
                 .updateFlame = [this](const MonitorSnapshot& snapshot) { flame_.update(snapshot); },
                 .thermalState = [this] { return thermalState(); },
                 .visibleUI = [this] { return windows_.anyVisible(); },
                 .batteryWarning = [this]() -> std::optional<std::string> {
                     const auto& battery = store_.latestSnapshot().battery;
                     return battery ? battery->warning : std::nullopt;
                 },
                 .startUpdates = [this] { updater_.start(); },
             })}};
    // Without a service none of it is ever used, and then it costs nothing.
    BackgroundQueue cloudQueue_;
    std::unique_ptr<platform::Keychain> keychain_ = platform::makeKeychain();
    CloudService cloudService_{{.endpoint = CloudBuild::endpoint(),
                                .clock = clock_,
                                .version = CloudBuild::version(),
                                .systemVersion = CloudBuild::systemVersion()}};
    CloudStore cloud_{
        {.clock = clock_,
         .mainQueue = mainQueue_,
         .recorderQueue = cloudQueue_,
         .service = cloudService_,
         .keychain = *keychain_,
         .keyFile = AppData::root() / "cloud" / "installation.json",
         .recorder = std::make_shared<CloudRecorder>(AppData::root() / "cloud" / "outbox.sqlite", clock_),
         .restoreCollection = [this](FlameArchive archive) {
             return collection_.restore(CloudExport::merged(std::move(archive), collection_.archive()));
         }}};
    // Each with a thread behind it once it is used. They end after the stores that post to them.
    BackgroundQueue storageJobs_;
    BackgroundQueue diskScans_;
    BackgroundQueue diskQuestions_;
    SystemProbes storageProbes_; ///< the engine's own are the engine's queue's
    std::unique_ptr<Trash> trash_ = platform::makeTrash();
    WholeDiskStore wholeDisk_{{.probes = storageProbes_,
                               .clock = clock_,
                               .mainQueue = mainQueue_,
                               .scans = diskScans_,
                               .questions = diskQuestions_,
                               .files = fileOpening_.get()}};
    DiskStorageStore storage_{{.probes = storageProbes_,
                               .clock = clock_,
                               .mainQueue = mainQueue_,
                               .jobs = storageJobs_,
                               .home = QDir::homePath().toStdString(),
                               .defaults = &defaults_,
                               .files = fileOpening_.get(),
                               .trash = trash_.get(),
                               .didClean =
                                   [this](std::size_t folders, std::uint64_t bytes) {
                                       collection_.cleaned(static_cast<std::int64_t>(folders), bytes);
                                   }},
                              wholeDisk_};
    DockFlame flame_{store_.settings()};
    const RunningCopy copy_ = RunningCopy::get();
    std::unique_ptr<UpdateFramework> updates_ = makeUpdateFramework(
        copy_, {.clock = clock_,
                .mainQueue = mainQueue_,
                .defaults = &defaults_,
                .folder = AppData::root() / "updates",
                .reveal = [this](const std::string& archive) { return fileOpening_->revealFile(archive); }});
    AppUpdater updater_{{.version = QString::fromStdString(copy_.version),
                         .build = QString::number(copy_.build),
                         .defaults = &defaults_,
                         .mainQueue = &mainQueue_,
                         .framework = updates_.get()}};
    ViewContext context_{store_,
                         localization_,
                         clock_,
                         &flame_,
                         {.quit = [] { QCoreApplication::exit(); },
                          .closePanel = [this] { windows_.closePanel(); },
                          .openCloud = [this] { windows_.openCloud(); },
                          .openFeedback = [this] { windows_.openFeedback(); }},
                         fileOpening_.get(),
                         &collection_,
                         &storage_,
                         &updater_,
                         &cloud_};
    Windows windows_{context_, flame_, &defaults_};
    LaunchPresentation presentation_;
    MenuBarLabel label_{
        *trayItem_,
        store_,
        flame_,
        localization_,
        {.openPanel = [this](std::optional<QPoint> at) { windows_.togglePanel(at); },
         .openMain = [this] { store_.navigate("overview"); },
         .openSettings = [this] { windows_.openSettings(); },
         .checkForUpdates =
             [this] {
                 // Where the answer is seen.
                 windows_.openSettings();
                 updater_.checkForUpdates();
             },
         .sendFeedback = [this] { windows_.openFeedback(); },
         .quit = [] { QCoreApplication::exit(); },
         .activationToken =
             [this](const std::string& token) { windows_.setActivationToken(QString::fromStdString(token)); },
         .hostedChanged = [this](bool hosted) { trayHosted(hosted); }}};
    QTimer trayTimer_;

    /// Last, so that the engine's thread ends while everything it works on is still there.
    ThreadQueue engineQueue_;
};

} // namespace

int ApplicationDelegate::run(int& argc, char** argv, const Start& start) {
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QGuiApplication::setApplicationName("Varnet");
    QGuiApplication::setApplicationDisplayName("Varnet");
    QGuiApplication::setDesktopFileName("com.varnet.Varnet");
    const QGuiApplication application(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    // Icons alone pass through it: each of the flame's is 1 MB, and is given to the desktop once.
    QPixmapCache::setCacheLimit(0);

    const std::unique_ptr<platform::SingleInstance> instance = platform::makeSingleInstance();
    if (instance->claim() == platform::SingleInstance::Claim::second) {
        const bool answered =
            start.showSettings ? instance->requestAction(settingsAction) : instance->requestOpen();
        if (answered) return 0;
        std::fputs("varnet: it runs already, but does not answer.\n", stderr);
        return 1;
    }
    // Not quit(): that asks the windows first, and the main one would rather be minimised.
    const UnixSignals endings([] { QCoreApplication::exit(); });
    Application running(start);
    running.launch(*instance);
    return QGuiApplication::exec();
}

} // namespace varnet
