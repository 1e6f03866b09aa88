#include "VarnetApp/AppStore/VarnetStore.h"

#include "VarnetApp/AppStore/ItemCount.h"
#include "VarnetApp/AppStore/SamplingLoop.h"
#include "VarnetApp/Engine/AppData.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/Platform/Notifications.h"
#include "VarnetCore/Flame/RoastLibrary.h"

#include <algorithm>
#include <utility>

namespace varnet {

namespace {

const std::shared_ptr<const MonitorSnapshot>& emptySnapshot() {
    static const auto empty = std::make_shared<const MonitorSnapshot>();
    return empty;
}

/// The folder of the engine's files.
std::filesystem::path storageRoot(const VarnetStore::Setup& setup) {
    if (!setup.storage.empty()) return setup.storage;
    if (!setup.preview) return AppData::root();
    std::error_code ignored;
    return std::filesystem::temp_directory_path(ignored) / "VarnetPreview";
}

/// Decks whose order is the same in every picture.
RoastEngine::Choices preparedDecks() {
    RoastEngine::Choices choices;
    for (const auto& [bank, lines] : RoastLibrary::banks())
        choices["deck-v2:" + bank + ":seed"] = 20;
    return choices;
}

QString named(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace

VarnetStore::VarnetStore(Setup setup)
    : clock_(setup.clock), engineQueue_(setup.engineQueue), mainQueue_(setup.mainQueue),
      localization_(setup.localization), catalog_(setup.catalog), notificationService_(setup.notifications),
      loginItem_(setup.loginItem), collaborators_(std::move(setup.collaborators)),
      isPreview_(setup.preview != nullptr),
      engine_(std::make_unique<MonitorEngine>(
          MonitorEngine::Setup{setup.probes, setup.clock, storageRoot(setup), {}, setup.battery})),
      settings_(isPreview_ ? nullptr : setup.defaults), snapshot_(emptySnapshot()),
      latestSnapshot_(emptySnapshot()),
      stopping_(*this, setup.user.value_or(setup.probes.userID()), setup.quitting) {
    filter_.locale = localization_.locale();
    connect(&localization_, &AppLocalization::languageChanged, this, [this] {
        filter_.locale = localization_.locale();
        emit filterChanged();
    });
    notificationDates_ = settings_.notificationDates();
    if (!isPreview_) {
        settings_.removeLeftovers();
        return;
    }
    latestSnapshot_ = setup.preview;
    snapshot_ = std::move(setup.preview);
    settings_.setHasOnboarded(true);
    roastEngine_.setChoices(preparedDecks());
    updateRoast();
}

VarnetStore::~VarnetStore() = default;

void VarnetStore::start() {
    if (loop_ || isPreview_) return;
    emit appearanceChanged();
    if (collaborators_.startUpdates) collaborators_.startUpdates();
    openFolderAccess();
    refreshLoginStatus();
    // Nothing runs on the engine's queue yet.
    savedChoices_ = engine_->archive().roastChoices;
    roastEngine_.setChoices(savedChoices_);
    loop_ = std::make_unique<SamplingLoop>(*this);
    loop_->start();
}

void VarnetStore::resetAfterSleep() {
    runOnEngine([](MonitorEngine& engine) { engine.resetAfterSleep(); });
}

void VarnetStore::runOnEngine(std::function<void(MonitorEngine&)> work, std::function<void()> then) {
    engineQueue_.post([this, alive = std::weak_ptr(alive_), engine = engine_.get(), work = std::move(work),
                       then = std::move(then)]() mutable {
        work(*engine);
        if (!then) return;
        mainQueue_.post([alive = std::move(alive), then = std::move(then)] {
            if (alive.lock()) then();
        });
    });
}

// The loop's steps.

void VarnetStore::accept(std::shared_ptr<const MonitorSnapshot> snapshot) {
    latestSnapshot_ = std::move(snapshot);
    const MonitorSnapshot& latest = *latestSnapshot_;
    if (collaborators_.observeCollection) collaborators_.observeCollection(latest);
    if (collaborators_.observeCloud && !isPreview_) collaborators_.observeCloud(latestSnapshot_);
    if (collaborators_.updateFlame) collaborators_.updateFlame(latest);
    Roast roast = roastEngine_.make(latest, visibleUI() ? Rotation::allowed : Rotation::held);
    saveChoices();

    const std::optional<double> cpu = latest.error ? std::nullopt : latest.systemCPU;
    const bool menuMoved = cpu != menuCPU_ || latest.findings.size() != menuFindingCount_;
    menuCPU_ = cpu;
    menuFindingCount_ = latest.findings.size();
    if (menuMoved) emit menuChanged();

    if (!visibleUI()) return;
    if (latest.date == snapshot_->date && latest.error == snapshot_->error) return;
    publish(latestSnapshot_);
    show(std::move(roast));
}

/// A deck that has moved on is kept, so that no line comes back after a restart.
void VarnetStore::saveChoices() {
    if (roastEngine_.choices() == savedChoices_) return;
    savedChoices_ = roastEngine_.choices();
    runOnEngine([choices = savedChoices_](MonitorEngine& engine) { engine.setRoastChoices(choices); });
}

void VarnetStore::show(Roast roast) {
    if (roast == roast_) return;
    roast_ = std::move(roast);
    emit roastChanged();
}

void VarnetStore::publish(std::shared_ptr<const MonitorSnapshot> snapshot) {
    snapshot_ = std::move(snapshot);
    emit snapshotChanged();
}

void VarnetStore::detectRestarts() {
    std::vector<Finding> findings = snapshot_->findings;
    RestartDetection::update(stoppedServices_, snapshot_->services, ignored_, clock_.now(), findings);
    replaceFindings(std::move(findings));
}

void VarnetStore::mirrorArchive(std::map<std::string, Date> ignored, std::vector<HistoryRecord> actions,
                                std::optional<std::string> persistenceError) {
    std::optional<std::string> warning = std::move(persistenceError);
    if (!warning && collaborators_.batteryWarning) warning = collaborators_.batteryWarning();
    if (ignored == ignored_ && actions == actions_ && warning == historyWarning_) return;
    ignored_ = std::move(ignored);
    actions_ = std::move(actions);
    historyWarning_ = std::move(warning);
    emit historyChanged();
}

void VarnetStore::notifyIfNeeded(const MonitorSnapshot& snapshot) {
    const std::vector<Notice> notices = NotificationRules::due(snapshot, clock_.now(), notificationDates_);
    if (notices.empty()) return;
    settings_.setNotificationDates(notificationDates_);
    if (!notificationService_) return;
    for (const Notice& notice : notices) {
        notificationService_->deliver(notice.key,
                                      localization_.text(QString::fromStdString(notice.title)).toStdString(),
                                      localization_.text(QString::fromStdString(notice.body)).toStdString());
    }
}

void VarnetStore::replaceFindings(std::vector<Finding> findings) {
    if (findings == snapshot_->findings) return;
    auto changed = std::make_shared<MonitorSnapshot>(*snapshot_);
    changed->findings = std::move(findings);
    publish(std::move(changed));
}

// Publishing.

bool VarnetStore::visibleUI() const {
    return collaborators_.visibleUI && collaborators_.visibleUI();
}

void VarnetStore::publishLatest() {
    if (latestSnapshot_->processes.empty() && !latestSnapshot_->error) return;
    if (snapshot_ != latestSnapshot_) publish(latestSnapshot_);
    updateRoast();
}

void VarnetStore::showSettings() {
    if (openSettings) openSettings();
}

void VarnetStore::updateRoast() {
    const bool readable = visibleUI() || isPreview_;
    show(roastEngine_.make(*snapshot_, readable ? Rotation::allowed : Rotation::held));
}

void VarnetStore::presentRoast() {
    frozenRoast_ = roast_;
    roastSnapshot_ = snapshot_;
    setShowRoast(true);
}

void VarnetStore::setShowRoast(bool shown) {
    if (shown == showRoast_) return;
    showRoast_ = shown;
    emit showRoastChanged();
}

// Navigation.

QString VarnetStore::pageName() const {
    return named(entryOf(page_).name);
}

void VarnetStore::setPage(Page page) {
    if (page == page_) return;
    page_ = page;
    filter_.page = page;
    emit pageChanged();
    emit filterChanged();
}

void VarnetStore::setPageName(const QString& name) {
    if (const auto page = pageNamed(name.toStdString())) setPage(*page);
}

void VarnetStore::clearFilter() {
    select(std::nullopt, std::nullopt);
    filter_.search.clear();
    filter_.agent = QLatin1String(GroupFilter::allAgents);
    emit filterChanged();
}

void VarnetStore::navigate(const QString& pageName) {
    const auto page = pageNamed(pageName.toStdString());
    if (!page) return;
    setPage(*page);
    clearFilter();
    if (openMain) openMain();
}

void VarnetStore::requestSearch() {
    if (page_ == Page::overview) {
        setPage(Page::sources);
        clearFilter();
    }
    ++searchFocusRequest_;
    emit searchFocusRequestChanged();
    if (openMain) openMain();
}

void VarnetStore::select(std::optional<std::string> group, std::optional<std::string> service) {
    if (group == selectedGroup_ && service == selectedService_) return;
    selectedGroup_ = std::move(group);
    selectedService_ = std::move(service);
    emit selectionChanged();
}

void VarnetStore::setSearch(const QString& text) {
    if (text == filter_.search) return;
    filter_.search = text;
    emit filterChanged();
}

QString VarnetStore::sortName() const {
    return named(sortOrderNames[static_cast<std::size_t>(filter_.sort)]);
}

void VarnetStore::setSortName(const QString& name) {
    const auto sort = sortOrderNamed(name.toStdString());
    if (!sort || *sort == filter_.sort) return;
    filter_.sort = *sort;
    emit filterChanged();
}

void VarnetStore::setAgentFilter(const QString& agent) {
    if (agent == filter_.agent) return;
    filter_.agent = agent;
    emit filterChanged();
}

std::vector<const ApplicationGroup*> VarnetStore::filteredGroups() const {
    return filter_.apply(snapshot_->groups);
}

std::vector<const ApplicationGroup*> VarnetStore::groupsOfPage() const {
    GroupFilter everything;
    everything.page = page_;
    return everything.apply(snapshot_->groups);
}

std::vector<const Service*> VarnetStore::filteredServices() const {
    return ServiceFilter{filter_.search, filter_.sort, filter_.locale}.apply(snapshot_->services);
}

std::optional<std::size_t> VarnetStore::itemCount(Page page) const {
    const std::size_t unlocked = collaborators_.unlockedBadges ? collaborators_.unlockedBadges() : 0;
    return varnet::itemCount(page, *snapshot_, unlocked);
}

// Looking into things.

void VarnetStore::inspect(const ApplicationGroup& group) {
    if (!isPreview_ && collaborators_.inspected) collaborators_.inspected(group.kind);
    const bool isProject = group.kind == GroupKind::project;
    select(group.id, std::nullopt);
    if (page_ != Page::sources) setPage(isProject ? Page::projects : Page::apps);
    if (openMain) openMain();
}

void VarnetStore::inspect(const Finding& finding) {
    const auto isTarget = [&](const Service& service) {
        return std::ranges::find(finding.targets, service.root->id) != finding.targets.end();
    };
    const auto found = std::ranges::find_if(snapshot_->services, isTarget);
    const bool hasService = found != snapshot_->services.end();
    select(finding.groupID, hasService ? std::optional(found->id()) : std::nullopt);
    setPage(hasService ? Page::servers : Page::apps);
    if (openMain) openMain();
}

void VarnetStore::ignore(const Finding& finding) {
    const std::string id = finding.id;
    std::vector<Finding> findings = snapshot_->findings;
    std::erase_if(findings, [&](const Finding& one) { return one.id == id; });
    replaceFindings(std::move(findings));
    runOnEngine([id](MonitorEngine& engine) { engine.ignore(id); });
    readBackIgnored();
}

void VarnetStore::unignore(const QString& id) {
    runOnEngine([id = id.toStdString()](MonitorEngine& engine) { engine.unignore(id); });
    readBackIgnored();
}

void VarnetStore::readBackIgnored() {
    const auto ignored = std::make_shared<std::map<std::string, Date>>();
    runOnEngine([ignored](MonitorEngine& engine) { *ignored = engine.archive().ignored; },
                [this, ignored] {
                    if (*ignored == ignored_) return;
                    ignored_ = std::move(*ignored);
                    emit historyChanged();
                });
}

void VarnetStore::clearHistory() {
    const auto warning = std::make_shared<std::optional<std::string>>();
    runOnEngine(
        [warning](MonitorEngine& engine) {
            engine.clearHistory();
            *warning = engine.persistenceError();
        },
        [this, warning] {
            ignored_.clear();
            actions_.clear();
            roastEngine_.setChoices({});
            savedChoices_.clear();
            emit historyChanged();
            setSettingsMessage(*warning ? QString::fromStdString(**warning)
                                        : "Local history cleared. Live monitoring continues.");
        });
}

// Messages.

void VarnetStore::setActionMessage(const QString& message) {
    if (message == actionMessage_) return;
    actionMessage_ = message;
    emit actionMessageChanged();
}

bool VarnetStore::actionSucceeded() const {
    // Said only of what is confirmed to be gone; every other report is a request, a warning or a refusal.
    return actionMessage_.endsWith(" has left the building.");
}

void VarnetStore::setSettingsMessage(const QString& message) {
    if (message == settingsMessage_) return;
    settingsMessage_ = message;
    emit settingsMessageChanged();
}

} // namespace varnet
