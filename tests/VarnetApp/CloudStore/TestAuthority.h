#pragma once

#include <QSslCertificate>
#include <QSslKey>

namespace varnet {

/// A certificate authority made for one run, and the certificate that it gives to a service on the loopback
/// address.
struct TestAuthority {
    QSslCertificate root;
    QSslCertificate certificate; ///< of 127.0.0.1
    QSslKey key;

    static TestAuthority make();
};

} // namespace varnet
