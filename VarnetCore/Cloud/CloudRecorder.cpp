#include "VarnetCore/Cloud/CloudRecorder.h"

#include "VarnetCore/Battery/BatteryTracker.h"
#include "VarnetCore/Cloud/CloudExport.h"

#include <iterator>
#include <utility>

namespace varnet {

namespace {

/// Minutes of applications that wait while the disk is full, at most; the oldest go first.
constexpr std::size_t mostWaiting = 10'000;

} // namespace

CloudResult<CloudOutbox*> CloudRecorder::outbox() {
    if (!outbox_) {
        auto opened = CloudOutbox::open(file_, clock_);
        if (!opened) return std::unexpected(opened.error());
        outbox_ = std::move(*opened);
    }
    return outbox_.get();
}

CloudResult<> CloudRecorder::capture(const MonitorSnapshot& snapshot, const FlameArchive& collection,
                                     const std::string& scope) {
    std::vector<CloudItem> minutes = collector_.observe(snapshot);
    if (std::exchange(scope_, scope) != scope) {
        // Another archive: it begins with all there is, and minutes meant for the one before are not its own.
        exported_.reset();
        waiting_.clear();
    }
    waiting_.insert(waiting_.end(), std::make_move_iterator(minutes.begin()),
                    std::make_move_iterator(minutes.end()));
    if (waiting_.size() > mostWaiting)
        waiting_.erase(waiting_.begin(), waiting_.end() - static_cast<std::ptrdiff_t>(mostWaiting));
    const auto queue = outbox();
    if (!queue) return std::unexpected(queue.error());
    if (!waiting_.empty()) {
        if (auto captured = (*queue)->capture(waiting_, scope); !captured) return captured;
        waiting_.clear();
    }
    const Date now = clock_.now();
    const double since = exported_ ? now - *exported_ : exportInterval;
    if (since >= 0 && since < exportInterval) return {};
    // A full copy of the battery's history, which only an export is worth.
    const BatteryArchive battery = snapshot.battery ? snapshot.battery->archive.archive() : BatteryArchive{};
    const auto items = CloudExport::archive(
        collection, battery, exported_ ? std::optional(*exported_ - exportOverlap) : std::nullopt, now);
    if (!items) return std::unexpected(items.error());
    if (auto captured = (*queue)->capture(*items, scope); !captured) return captured;
    exported_ = now;
    return {};
}

CloudResult<CloudBatch> CloudRecorder::batch(const std::string& scope) {
    const auto queue = outbox();
    if (!queue) return std::unexpected(queue.error());
    return (*queue)->batch(scope);
}

CloudResult<> CloudRecorder::ack(const CloudBatch& batch, const std::string& scope) {
    const auto queue = outbox();
    if (!queue) return std::unexpected(queue.error());
    return (*queue)->acknowledge(batch, scope);
}

CloudResult<> CloudRecorder::discard(const std::string& scope) {
    const auto queue = outbox();
    if (!queue) return std::unexpected(queue.error());
    exported_.reset(); // what begins anew begins with all there is
    return (*queue)->discard(scope);
}

} // namespace varnet
