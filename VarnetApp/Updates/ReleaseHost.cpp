#include "VarnetApp/Updates/ReleaseHost.h"

#include "VarnetApp/Updates/UpdateRedirectPolicy.h"

#include <QNetworkReply>

namespace varnet {

QNetworkRequest ReleaseHost::request(const QString& path) const {
    QUrl url = reroute.value_or(QUrl("https://" + QString::fromStdString(name)));
    url.setPath(path);
    QNetworkRequest request(url);
    UpdateRedirectPolicy::apply(request);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    // Whoever unpacks by itself may be handed a few bytes that become gigabytes.
    request.setRawHeader("Accept-Encoding", "identity");
    request.setHeader(QNetworkRequest::UserAgentHeader, "Varnet");
    return request;
}

int ReleaseHost::statusOf(const QNetworkReply& reply) {
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

} // namespace varnet
