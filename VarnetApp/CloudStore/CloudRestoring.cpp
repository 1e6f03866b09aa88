// Bringing the collection back from the service.

#include "VarnetApp/CloudStore/CloudEnvelope.h"
#include "VarnetApp/CloudStore/CloudService.h"
#include "VarnetApp/CloudStore/CloudStore.h"
#include "VarnetApp/CloudStore/InstallationKey.h"
#include "VarnetApp/CloudStore/RestorePages.h"
#include "VarnetCore/Base/Clock.h"

namespace varnet {

void CloudStore::restoreCollection() {
    if (!setup_ || !configured() || !credentials_) return;
    if (makesWay([this] { restoreCollection(); })) return;
    begin();
    askPage(std::make_shared<RestorePages>(), {});
}

/// All pages are here before anything of them counts.
void CloudStore::askPage(const std::shared_ptr<RestorePages>& pages, const std::string& cursor) {
    withKey([this, pages, cursor](const std::shared_ptr<const InstallationKey>& key) {
        if (!key) return fail(CloudServiceError::noAnswer());
        auto body = CloudEnvelope::seal(*key, "restore", {{"token", credentials_->token}, {"cursor", cursor}},
                                        clock_.now());
        setup_->service.post("restore", std::move(body), this,
                             [this, pages, cursor](CloudReply<std::string> answer) {
                                 if (!answer) return fail(answer.error());
                                 struct Step {
                                     std::expected<std::string, CloudServiceError> next;
                                     std::optional<FlameArchive> collection;
                                 };
                                 // A full page is too much reading for the main thread.
                                 onRecorder(
                                     [pages, cursor, body = std::move(*answer)] {
                                         Step step{pages->take(body, cursor), {}};
                                         if (step.next && step.next->empty())
                                             step.collection = pages->collection();
                                         return step;
                                     },
                                     [this, pages](Step step) {
                                         if (!step.next) return fail(step.next.error());
                                         if (!step.next->empty()) return askPage(pages, *step.next);
                                         takeCollection(std::move(step.collection));
                                     });
                             });
    });
}

void CloudStore::takeCollection(std::optional<FlameArchive> archive) {
    if (!archive) {
        say(QStringLiteral("No collection backup is available for this installation."));
    } else if (!setup_->restoreCollection || setup_->restoreCollection(std::move(*archive))) {
        say(QStringLiteral("Couldn’t save your collection. Check available disk space and folder access."));
    } else {
        say(QStringLiteral("History restored. A local copy of the previous history was kept."));
    }
    end();
}

} // namespace varnet
