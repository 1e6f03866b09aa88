#pragma once

#include <QSslCertificate>
#include <QSslKey>

namespace varnet {

/// A certificate made for one run, of a service on the loopback address. It vouches for itself: who is to
/// trust the service is given it as an authority.
struct TestAuthority {
    QSslCertificate certificate;
    QSslKey key;

    static TestAuthority make();
};

} // namespace varnet
