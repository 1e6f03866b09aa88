#include "VarnetApp/FlameCollectionStore/FlameCollectionStore.h"

#include "VarnetApp/FlameCollectionStore/CollectionFile.h"
#include "VarnetCore/Base/Clock.h"
#include "VarnetCore/Base/SerialQueue.h"
#include "VarnetCore/Base/SmallFile.h"

#include <future>
#include <utility>

namespace varnet {

namespace {

const QString unreadable = QStringLiteral(
    "Couldn’t read your collection. The saved file is preserved. Reset the collection in Settings to start "
    "again.");
const QString unsaved =
    QStringLiteral("Couldn’t save your collection. Check available disk space and folder access.");

/// Runs the work behind all that was queued before it, and waits for its answer.
template <typename Work>
auto inTurn(SerialQueue& queue, Work work) {
    // Shared: whoever sets it may still be leaving when the answer is there.
    auto answer = std::make_shared<std::promise<decltype(work())>>();
    auto answered = answer->get_future();
    queue.post([&work, answer] { answer->set_value(work()); });
    return answered.get();
}

} // namespace

FlameCollectionStore::FlameCollectionStore(Setup setup)
    : clock_(setup.clock), mainQueue_(setup.mainQueue), writer_(setup.writer), file_(std::move(setup.file)),
      collection_(setup.prepared ? std::move(*setup.prepared) : FlameArchive::beginning(clock_.now())) {
    load();
}

FlameCollectionStore::~FlameCollectionStore() = default;

void FlameCollectionStore::load() {
    if (file_.empty() || !mayExist(file_)) return;
    if (auto archive = CollectionFile::read(file_)) {
        collection_ = FlameCollection(std::move(*archive));
        return;
    }
    savingDisabled_ = true;
    warning_ = unreadable;
}

// What happens.

void FlameCollectionStore::observe(const MonitorSnapshot& snapshot) {
    didEarn(collection_.observe(snapshot));
    if (clock_.now() - lastSave_ >= saveInterval) save(Saving::later);
    emit collectionChanged();
}

void FlameCollectionStore::inspect(GroupKind kind) {
    didEarn(collection_.inspect(kind, clock_.now()));
    save(Saving::later);
    emit collectionChanged();
}

void FlameCollectionStore::stopped(const StopPlan& plan, const std::vector<StopResult>& results,
                                   bool forgotten) {
    didEarn(collection_.stoppedService(plan.root, results, forgotten, clock_.now()));
    save(Saving::later);
    emit collectionChanged();
}

void FlameCollectionStore::cleaned(std::int64_t folders, std::uint64_t bytes) {
    didEarn(collection_.cleaned(folders, bytes, clock_.now()));
    save(Saving::later);
    emit collectionChanged();
}

// Announcing.

void FlameCollectionStore::didEarn(const FlameCollection::Earned& ids) {
    if (ids.empty()) return;
    const std::string_view first = ids.front();
    announce(QString::fromUtf8(first.data(), static_cast<qsizetype>(first.size())));
    mainQueue_.postAfter(announcement, [this, alive = std::weak_ptr(alive_), announced = announcements_] {
        if (!alive.expired() && announced == announcements_) announce({});
    });
    emit badgesChanged();
}

void FlameCollectionStore::announce(const QString& badge) {
    ++announcements_;
    if (badge == latestBadge_) return;
    latestBadge_ = badge;
    emit latestBadgeChanged();
}

void FlameCollectionStore::setWarning(const QString& warning) {
    if (warning == warning_) return;
    warning_ = warning;
    emit warningChanged();
}

// The file.

void FlameCollectionStore::save(Saving saving) {
    if (file_.empty() || savingDisabled_) return;
    lastSave_ = clock_.now();
    const std::uint64_t number = ++saves_;
    auto write = [file = file_, archive = archive()] { return !CollectionFile::write(file, archive); };
    if (saving == Saving::now) {
        saved(number, inTurn(writer_, std::move(write)));
        return;
    }
    writer_.post(
        [this, alive = std::weak_ptr(alive_), &mainQueue = mainQueue_, number, write = std::move(write)] {
            const bool success = write();
            mainQueue.post([this, alive, number, success] {
                if (!alive.expired()) saved(number, success);
            });
        });
}

void FlameCollectionStore::saved(std::uint64_t number, bool success) {
    if (number < lastTold_) return;
    lastTold_ = number;
    if (!success) {
        setWarning(unsaved);
    } else if (warning_ == unsaved) {
        setWarning({});
    }
}

void FlameCollectionStore::reset() {
    collection_ = FlameCollection(FlameArchive::beginning(clock_.now()));
    setWarning({});
    announce({});
    savingDisabled_ = false;
    save(Saving::now);
    emit badgesChanged();
    emit collectionChanged();
}

std::optional<std::string> FlameCollectionStore::restore(FlameArchive archive) {
    if (!file_.empty()) {
        auto failure = inTurn(writer_, [&] { return CollectionFile::replace(file_, archive); });
        if (failure) return failure;
    }
    collection_ = FlameCollection(std::move(archive));
    lastSave_ = clock_.now();
    lastTold_ = ++saves_; // what earlier saves have to tell is of no interest any more
    setWarning({});
    savingDisabled_ = false;
    emit badgesChanged();
    emit collectionChanged();
    return std::nullopt;
}

} // namespace varnet
