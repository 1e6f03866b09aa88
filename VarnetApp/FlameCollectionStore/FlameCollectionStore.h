#pragma once

#ifndef Q_MOC_RUN // which stumbles over the standard library's headers when they come first
#include "VarnetCore/Hall/FlameCollection.h"
#endif

#include <QObject>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace varnet {

class Clock;
class SerialQueue;

/// Holds the collection of badges for the application: loads and saves its file, which is never lost, passes
/// on what happens, and announces a badge for a while when it is earned. Main thread only.
class FlameCollectionStore : public QObject {
    Q_OBJECT
    /// Id of the badge that is announced; empty: none.
    Q_PROPERTY(QString latestBadge READ latestBadge NOTIFY latestBadgeChanged)
    /// A sentence for the user; empty: all is well.
    Q_PROPERTY(QString warning READ warning NOTIFY warningChanged)

public:
    /// All references outlive the store. What is queued on `writer` may outlive it too.
    struct Setup {
        const Clock& clock;
        SerialQueue& mainQueue;
        SerialQueue& writer;                       ///< does the file work; nothing else may wait on it
        std::filesystem::path file;                ///< empty: nothing is read or written, ever
        std::optional<FlameArchive> prepared = {}; ///< to begin with, where there is no file
    };

    /// Seconds for which a badge is announced, and least between two saves that samples ask for.
    static constexpr double announcement = 8;
    static constexpr double saveInterval = 60;

    enum class Saving { later, now };

    explicit FlameCollectionStore(Setup setup);
    ~FlameCollectionStore() override;

    const FlameCollection& collection() const noexcept { return collection_; }
    const FlameArchive& archive() const noexcept { return collection_.archive(); }
    QString latestBadge() const { return latestBadge_; }
    QString warning() const { return warning_; }

    // What happens.
    void observe(const MonitorSnapshot& snapshot);
    void inspect(GroupKind kind);
    /// A plan whose every process was stopped.
    void stopped(const StopPlan& plan, const std::vector<StopResult>& results, bool forgotten);
    void cleaned(std::int64_t folders, std::uint64_t bytes);

    /// Does nothing without a file, or while the one on the disk must not be written over.
    /// @param saving `now` returns when it is written
    void save(Saving saving);
    /// Forgets everything: the one way on from a file that cannot be read.
    void reset();
    /// Takes over another collection, after copying the file beside itself.
    /// @return empty on success, else what went wrong; the collection is then as it was
    std::optional<std::string> restore(FlameArchive archive);

    /// The user has seen it.
    Q_INVOKABLE void dismissBadge() { announce({}); }

signals:
    /// Something of the collection has moved.
    void collectionChanged();
    /// The set of earned badges is another.
    void badgesChanged();
    void latestBadgeChanged();
    void warningChanged();

private:
    void load();
    void didEarn(const FlameCollection::Earned& ids);
    void announce(const QString& badge);
    void setWarning(const QString& warning);
    /// Takes in how a save went, unless a later one has been told of already.
    void saved(std::uint64_t number, bool success);

    // Constant after construction.
    const Clock& clock_;
    SerialQueue& mainQueue_;
    SerialQueue& writer_;
    const std::filesystem::path file_;

    FlameCollection collection_;
    QString latestBadge_;
    QString warning_;
    Date lastSave_ = Date::distantPast();
    bool savingDisabled_ = false;
    std::uint64_t announcements_ = 0; ///< tells the timer of one announcement from that of the next
    std::uint64_t saves_ = 0;
    std::uint64_t lastTold_ = 0;

    /// What posted work looks at before it touches the store.
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

} // namespace varnet
