#include "VarnetApp/CloudViews/FeedbackModel.h"

#include "VarnetApp/CloudStore/CloudService.h"
#include "VarnetApp/CloudStore/CloudStore.h"

#include <array>

namespace varnet {

namespace {

struct Kind {
    const char* name; ///< as the service knows it
    const char* title;
};

constexpr std::array<Kind, 3> allKinds{{{"bug", "Problem"}, {"idea", "Idea"}, {"other", "Something else"}}};

/// Whether somebody could be written to there: rough, since only a letter could tell.
bool looksLikeAddress(const QString& text) {
    const qsizetype at = text.indexOf('@');
    return at > 0 && at < text.size() - 1 && !text.contains(' ') && text.count('@') == 1;
}

} // namespace

void FeedbackModel::begin() {
    if (context().cloud && context().cloud->configured()) return;
    message_ = "Feedback is unavailable in this build.";
    emit changed();
}

QStringList FeedbackModel::kinds() const {
    QStringList titles;
    for (const Kind& kind : allKinds)
        titles.append(QString::fromUtf8(kind.title));
    return titles;
}

QString FeedbackModel::missing() const {
    if (title_.trimmed().isEmpty()) return "A title first: a few words will do.";
    if (body_.trimmed().isEmpty()) return "There is nothing to send yet.";
    if (const QString email = email_.trimmed(); !email.isEmpty() && !looksLikeAddress(email))
        return "That email address would not reach you.";
    return {};
}

void FeedbackModel::send() {
    if (!canSend()) return;
    if (!context().cloud || !context().cloud->configured()) {
        message_ = "Feedback is unavailable in this build.";
        succeeded_ = false;
        emit changed();
        return;
    }
    const QString email = email_.trimmed();
    sending_ = true;
    message_.clear();
    emit changed();
    const std::size_t kind =
        kind_ >= 0 && static_cast<std::size_t>(kind_) < allKinds.size() ? static_cast<std::size_t>(kind_) : 0;
    context().cloud->sendFeedback(
        {.kind = allKinds.at(kind).name,
         .title = title_.trimmed().toStdString(),
         .body = body_.trimmed().toStdString(),
         .email = email.isEmpty() ? std::nullopt : std::optional(email.toStdString())},
        this, [this](bool accepted) { sent(accepted); });
}

void FeedbackModel::sent(bool accepted) {
    sending_ = false;
    succeeded_ = accepted;
    message_ = accepted ? "Thanks. We have your feedback."
                        : "Couldn’t send feedback. Your text is still here. Try again.";
    if (accepted) {
        title_.clear();
        body_.clear();
    }
    emit changed();
}

} // namespace varnet
