#pragma once

#include "VarnetCore/Cloud/CloudAppCollector.h"
#include "VarnetCore/Cloud/CloudOutbox.h"
#include "VarnetCore/Hall/FlameArchive.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace varnet {

/// Turns what is seen into items and keeps the queue of them. For one serial queue off the main thread.
class CloudRecorder {
public:
    /// Seconds from one export of the whole history to the next, and how far each reaches back before the
    /// last.
    static constexpr double exportInterval = 30;
    static constexpr double exportOverlap = 60;

    /// @param file of the queue, opened when it is first needed
    /// @param clock outlives the recorder
    CloudRecorder(std::filesystem::path file, const Clock& clock) : file_(std::move(file)), clock_(clock) {}

    /// Queues what the snapshot, its battery's history and the collection have of news. What fails is tried
    /// again the next time.
    CloudResult<> capture(const MonitorSnapshot& snapshot, const FlameArchive& collection,
                          const std::string& scope);
    CloudResult<CloudBatch> batch(const std::string& scope);
    CloudResult<> ack(const CloudBatch& batch, const std::string& scope);
    CloudResult<> discard(const std::string& scope);

private:
    CloudResult<CloudOutbox*> outbox();

    const std::filesystem::path file_;
    const Clock& clock_;
    CloudAppCollector collector_;
    std::unique_ptr<CloudOutbox> outbox_;
    std::string scope_;              ///< of the last capture; what follows is about it alone
    std::vector<CloudItem> waiting_; ///< minutes that could not be queued yet
    std::optional<Date> exported_;
};

} // namespace varnet
