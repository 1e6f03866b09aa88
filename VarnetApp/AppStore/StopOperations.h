#pragma once

#include "VarnetApp/Platform/ApplicationQuitting.h"
#include "VarnetCore/Findings/StopPlan.h"
#include "VarnetCore/Monitoring/ApplicationGroup.h"
#include "VarnetCore/Monitoring/ProcessSample.h"
#include "VarnetCore/Monitoring/Service.h"

#include <QObject>
#include <QString>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace varnet {

class VarnetStore;

/// A question that must be answered before an application is quit.
struct QuitRequest {
    ApplicationDescriptor application;
    StopForce force = StopForce::polite; ///< forced: there is no polite answer to choose
    QString message;
    QString text;
    QString quitTitle;       ///< of the button that does what was asked for
    QString forceQuitTitle;  ///< of the button that goes further; empty: there is none
    ProcessIdentity sampled; ///< what the user saw, and whose it was
    std::uint32_t uid = 0;

    friend bool operator==(const QuitRequest&, const QuitRequest&) = default;
};

/// The question before an application is quit.
/// @param process its main process as the user saw it
QuitRequest quitQuestion(const ApplicationDescriptor& application, const ProcessSample& process,
                         StopForce force);

enum class QuitAnswer {
    cancel,
    quit,      ///< what was asked for
    forceQuit, ///< the button that goes further
};

/// The store's half of stopping: reviews, carries out what the user confirmed, and tells what came of it.
/// Nothing here escalates by itself. Main thread only; owned by the store.
class StopOperations final : public QObject {
    Q_OBJECT

public:
    /// Seconds between two looks at applications that were asked to quit, and how long they are waited for.
    static constexpr double pause = 0.3;
    static constexpr double quitPatience = 10;

    /// A service that a batch stops with everything it started.
    struct BatchService {
        StopPlan plan;
        Service service;
        bool forgotten = false; ///< a finding calls it so
    };

    /// @param store owns this
    /// @param applications outlives this; null: no application can be quit
    StopOperations(VarnetStore& store, std::uint32_t uid, platform::ApplicationQuitting* applications);
    ~StopOperations() override;

    // One service or process.
    const std::optional<StopPlan>& stopPlan() const noexcept { return stopPlan_; }
    const std::optional<std::vector<StopResult>>& stopResults() const noexcept { return stopResults_; }
    bool isStopping() const noexcept { return isStopping_; }
    bool stopIsService() const noexcept { return stopIsService_; }
    bool stopWasForgotten() const noexcept { return stopWasForgotten_; }
    void prepareStop(const Service& service);
    void prepareStop(const ProcessSample& process);
    /// What a group's own stop button asks for: the question about its application, the review of its one
    /// process, or that of its project's servers.
    void reviewStop(const ApplicationGroup& group);
    void executeStop(StopForce force);
    /// The user has read the sheet. Not while it waits for exits.
    void closeStop();

    // A selection.
    const std::optional<BatchStopPlan>& batchStopPlan() const noexcept { return batchStopPlan_; }
    const std::optional<std::vector<StopResult>>& batchStopResults() const noexcept {
        return batchStopResults_;
    }
    bool isBatchStopping() const noexcept { return isBatchStopping_; }
    const std::vector<BatchService>& batchServices() const noexcept { return batchServices_; }
    void prepareBatchStop(std::span<const BatchStopRequest> requests);
    void executeBatchStop(StopForce force);
    /// Credits the services of the batch that are gone with everything they had started.
    void creditBatchServices(std::span<const StopResult> results);
    void closeBatchStop();

    // An application.
    /// Asks the user; what comes of it is told as the store's action message.
    void quit(const ApplicationDescriptor& application, StopForce force);
    const std::optional<QuitRequest>& quitRequest() const noexcept { return quitRequest_; }
    void answerQuit(QuitAnswer answer);

    // What may be stopped.
    /// What ticking a group or service asks for; empty: it cannot be ticked.
    std::vector<BatchStopRequest> batchRequests(const ApplicationGroup& group) const;
    std::vector<BatchStopRequest> batchRequests(const Service& service) const;
    std::map<std::string, std::vector<BatchStopRequest>>
    batchCandidates(std::span<const ApplicationGroup> groups) const;
    /// A finding calls it forgotten.
    bool isForgotten(const Service& service) const;
    /// Null when the user does not see it any more.
    const Service* publishedService(const std::string& id) const;
    bool canStop(const ProcessSample& process) const;
    std::uint32_t uid() const noexcept { return uid_; }
    std::int32_t selfPID() const noexcept { return selfPID_; }
    /// Why it is not offered, for the user.
    std::string stopUnavailableReason(const ProcessSample& process) const;
    std::string stopUnavailableReason(const ApplicationGroup& group) const;

    /// One moment of either sheet or of the question, for pictures of prepared data: nothing comes of it.
    struct Moment {
        std::optional<StopPlan> stopPlan = {};
        std::optional<std::vector<StopResult>> stopResults = {};
        bool isStopping = false;
        std::optional<BatchStopPlan> batchStopPlan = {};
        std::optional<std::vector<StopResult>> batchStopResults = {};
        bool isBatchStopping = false;
        std::optional<QuitRequest> quitRequest = {};
    };
    /// Does nothing on a live machine.
    void show(Moment moment);

signals:
    void stopChanged();
    void batchStopChanged();
    void quitRequestChanged();

private:
    /// Applications of one batch that were asked to quit.
    struct BatchWait;
    /// An application that was asked to quit.
    struct QuitWait;

    using Results = std::vector<StopResult>;

    void review(StopPlan plan, bool isService, bool forgotten);
    void finishStop(const std::optional<Service>& service, const Results& later);
    void tellCollection(const StopPlan& plan, const Results& results, bool forgotten) const;
    void execute(StopPlan plan, StopForce force, std::function<void(const Results&)> then);

    void askApplications(const std::vector<BatchApplicationStop>& applications, StopForce force,
                         Results results);
    void ask(const BatchApplicationStop& stop, StopForce force, BatchWait& wait);
    void watchBatch(const std::shared_ptr<BatchWait>& wait);
    void finishBatch(const Results& later);

    void watchQuit(const std::shared_ptr<QuitWait>& wait);

    // Constant after construction.
    VarnetStore& store_;
    const std::uint32_t uid_;
    const std::int32_t selfPID_;
    platform::ApplicationQuitting* const applications_;

    std::optional<StopPlan> stopPlan_;
    std::optional<Results> stopResults_;
    bool isStopping_ = false;
    bool stopIsService_ = false;
    bool stopWasForgotten_ = false;

    std::optional<BatchStopPlan> batchStopPlan_;
    std::optional<Results> batchStopResults_;
    bool isBatchStopping_ = false;
    std::vector<BatchService> batchServices_;

    std::optional<QuitRequest> quitRequest_;
    std::unique_ptr<platform::QuittableApplication> quitting_; ///< what the question is about

    /// What posted work looks at before it touches this.
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

} // namespace varnet
