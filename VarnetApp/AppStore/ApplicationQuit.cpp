// Quitting one application: a question, a request, and a wait for the confirmed exit.

#include "VarnetApp/AppStore/StopOperations.h"
#include "VarnetApp/AppStore/VarnetStore.h"

#include <algorithm>
#include <utility>

namespace varnet {

namespace {

constexpr const char* readOnlyMessage = "This application is read only for the current user.";
constexpr const char* notRunningMessage = "This application is no longer running.";
constexpr const char* changedMessage =
    "The application changed while this dialog was open. Please inspect it again.";

} // namespace

QuitRequest quitQuestion(const ApplicationDescriptor& application, const ProcessSample& process,
                         StopForce force) {
    QuitRequest request{.application = application,
                        .force = force,
                        .message = {},
                        .text = {},
                        .quitTitle = "Quit",
                        .forceQuitTitle = "Force Quit",
                        .sampled = process.id,
                        .uid = process.uid};
    const QString name = QString::fromStdString(application.name);
    if (force == StopForce::polite) {
        request.message = "Quit " + name + "?";
        request.text = "Quit lets the app finish work or ask you to save. Force Quit closes it immediately; "
                       "unsaved changes may be lost.";
        return request;
    }
    request.message = "Force quit " + name + "?";
    request.text =
        "Unsaved changes may be lost. This closes the application and may interrupt its active work.";
    request.quitTitle = std::exchange(request.forceQuitTitle, QString());
    return request;
}

struct StopOperations::QuitWait {
    QString name;
    StopForce force;
    std::unique_ptr<platform::QuittableApplication> application;
    Date deadline;
};

void StopOperations::quit(const ApplicationDescriptor& application, StopForce force) {
    if (quitRequest_) return; // one question at a time
    const auto& processes = store_.snapshot().processes;
    const auto found = std::ranges::find_if(
        processes, [&](const SampleRef& process) { return process->id.pid == application.pid; });
    if (found == processes.end() || (*found)->uid != uid_ || (*found)->isSystem) {
        store_.setActionMessage(readOnlyMessage);
        return;
    }
    const bool askable = !store_.isPreview() && application.pid != selfPID_ && applications_;
    quitting_ = askable ? applications_->find(application.pid) : nullptr;
    if (!quitting_ || quitting_->bundlePath() != application.bundlePath) {
        quitting_.reset();
        store_.setActionMessage(notRunningMessage);
        return;
    }
    quitRequest_ = quitQuestion(application, **found, force);
    emit quitRequestChanged();
}

void StopOperations::answerQuit(QuitAnswer answer) {
    if (!quitRequest_) return;
    const QuitRequest request = *std::exchange(quitRequest_, std::nullopt);
    auto application = std::exchange(quitting_, nullptr);
    emit quitRequestChanged();
    if (answer == QuitAnswer::cancel || !application) return;

    const StopForce force = answer == QuitAnswer::forceQuit ? StopForce::forced : request.force;
    const auto now = applications_->identity(request.application.pid);
    if (!now || now->start != request.sampled.start || now->uid != request.uid ||
        application->isTerminated()) {
        store_.setActionMessage(changedMessage);
        return;
    }
    const QString name = QString::fromStdString(request.application.name);
    const bool forced = force == StopForce::forced;
    const bool accepted = forced ? application->forceTerminate() : application->terminate();
    if (!accepted) {
        store_.setActionMessage(name + " did not accept the request. Open the app to check its status.");
        return;
    }
    store_.setActionMessage((forced ? "Force quit requested for " : "Quit requested for ") + name +
                            ". Waiting for confirmed exit…");
    watchQuit(std::make_shared<QuitWait>(
        QuitWait{name, force, std::move(application), store_.clock_.now() + quitPatience}));
}

void StopOperations::watchQuit(const std::shared_ptr<QuitWait>& wait) {
    const bool gone = wait->application->isTerminated();
    const Date now = store_.clock_.now();
    if (!gone && now < wait->deadline) {
        store_.mainQueue_.postAfter(pause, [this, alive = std::weak_ptr(alive_), wait] {
            if (!alive.expired()) watchQuit(wait);
        });
        return;
    }
    store_.setActionMessage(gone ? wait->name + " has left the building."
                                 : wait->name + " is still running. Check its windows for a save or "
                                                "confirmation dialog.");
    const QString title = (wait->force == StopForce::forced ? "Force quit " : "Quit ") + wait->name;
    HistoryRecord record{Uuid::random(), now, title.toStdString(),
                         gone ? "Confirmed exited."
                              : "Still running; request was not reported as a successful exit."};
    store_.runOnEngine([record = std::move(record)](MonitorEngine& engine) { engine.addAction(record); });
}

} // namespace varnet
