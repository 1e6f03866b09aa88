#pragma once

#include <QNetworkRequest>

/// A host that may be told to look elsewhere is no host to trust: nothing that has to do with updates follows
/// a redirect.
namespace varnet::UpdateRedirectPolicy {

inline void apply(QNetworkRequest& request) {
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
}

/// @param status of a finished answer
inline bool refuses(int status) noexcept {
    return status >= 300 && status < 400;
}

} // namespace varnet::UpdateRedirectPolicy
