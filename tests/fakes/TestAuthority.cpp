#include "tests/fakes/TestAuthority.h"

#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include <memory>
#include <stdexcept>

namespace varnet {

namespace {

void extend(X509* certificate, int kind, const char* value) {
    X509_EXTENSION* extension = X509V3_EXT_conf_nid(nullptr, nullptr, kind, value);
    if (extension == nullptr) throw std::runtime_error("no such extension");
    X509_add_ext(certificate, extension, -1);
    X509_EXTENSION_free(extension);
}

/// What some writer of PEM writes.
template <typename Write>
QByteArray pem(Write write) {
    const std::unique_ptr<BIO, decltype(&BIO_free)> out(BIO_new(BIO_s_mem()), BIO_free);
    write(out.get());
    char* data = nullptr;
    const long size = BIO_get_mem_data(out.get(), &data);
    return {data, static_cast<qsizetype>(size)};
}

} // namespace

TestAuthority TestAuthority::make() {
    const std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)> key(EVP_EC_gen("P-256"), EVP_PKEY_free);
    const std::unique_ptr<X509, decltype(&X509_free)> made(X509_new(), X509_free);
    X509* const certificate = made.get();
    X509_set_version(certificate, 2);
    ASN1_INTEGER_set(X509_get_serialNumber(certificate), 1);
    X509_gmtime_adj(X509_getm_notBefore(certificate), -86'400);
    X509_gmtime_adj(X509_getm_notAfter(certificate), 86'400);
    X509_set_pubkey(certificate, key.get());
    X509_NAME_add_entry_by_txt(X509_get_subject_name(certificate), "CN", MBSTRING_ASC,
                               reinterpret_cast<const unsigned char*>("127.0.0.1"), -1, -1, 0);
    X509_set_issuer_name(certificate, X509_get_subject_name(certificate));
    extend(certificate, NID_basic_constraints, "critical,CA:TRUE");
    extend(certificate, NID_subject_alt_name, "IP:127.0.0.1");
    if (X509_sign(certificate, key.get(), EVP_sha256()) == 0) throw std::runtime_error("cannot certify");
    const QByteArray secret = pem(
        [&](BIO* out) { PEM_write_bio_PrivateKey(out, key.get(), nullptr, nullptr, 0, nullptr, nullptr); });
    return {QSslCertificate(pem([&](BIO* out) { PEM_write_bio_X509(out, certificate); })),
            QSslKey(secret, QSsl::Ec)};
}

} // namespace varnet
