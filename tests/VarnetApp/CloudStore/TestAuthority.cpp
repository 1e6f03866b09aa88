#include "tests/VarnetApp/CloudStore/TestAuthority.h"

#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include <memory>
#include <stdexcept>

namespace varnet {

namespace {

using Key = std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)>;
using Certificate = std::unique_ptr<X509, decltype(&X509_free)>;

void extend(X509* certificate, X509* issuer, int kind, const char* value) {
    X509V3_CTX context;
    X509V3_set_ctx(&context, issuer, certificate, nullptr, nullptr, 0);
    X509_EXTENSION* extension = X509V3_EXT_conf_nid(nullptr, &context, kind, value);
    if (extension == nullptr) throw std::runtime_error("no such extension");
    X509_add_ext(certificate, extension, -1);
    X509_EXTENSION_free(extension);
}

/// @param issuer null: it vouches for itself
Certificate certify(EVP_PKEY* key, const char* name, X509* issuer, EVP_PKEY* issuerKey) {
    Certificate certificate(X509_new(), X509_free);
    X509_set_version(certificate.get(), 2);
    ASN1_INTEGER_set(X509_get_serialNumber(certificate.get()), issuer == nullptr ? 1 : 2);
    X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -86'400);
    X509_gmtime_adj(X509_getm_notAfter(certificate.get()), 86'400);
    X509_set_pubkey(certificate.get(), key);
    X509_NAME_add_entry_by_txt(X509_get_subject_name(certificate.get()), "CN", MBSTRING_ASC,
                               reinterpret_cast<const unsigned char*>(name), -1, -1, 0);
    X509* const signer = issuer == nullptr ? certificate.get() : issuer;
    X509_set_issuer_name(certificate.get(), X509_get_subject_name(signer));
    extend(certificate.get(), signer, NID_basic_constraints,
           issuer == nullptr ? "critical,CA:TRUE" : "CA:FALSE");
    if (issuer != nullptr) extend(certificate.get(), signer, NID_subject_alt_name, "IP:127.0.0.1");
    if (X509_sign(certificate.get(), issuerKey, EVP_sha256()) == 0)
        throw std::runtime_error("cannot certify");
    return certificate;
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

QSslCertificate qtCertificate(X509* certificate) {
    return QSslCertificate(pem([&](BIO* out) { PEM_write_bio_X509(out, certificate); }));
}

} // namespace

TestAuthority TestAuthority::make() {
    const Key rootKey(EVP_EC_gen("P-256"), EVP_PKEY_free);
    const Key key(EVP_EC_gen("P-256"), EVP_PKEY_free);
    const Certificate root = certify(rootKey.get(), "Test authority", nullptr, rootKey.get());
    const Certificate leaf = certify(key.get(), "127.0.0.1", root.get(), rootKey.get());
    const QByteArray secret = pem(
        [&](BIO* out) { PEM_write_bio_PrivateKey(out, key.get(), nullptr, nullptr, 0, nullptr, nullptr); });
    return {qtCertificate(root.get()), qtCertificate(leaf.get()), QSslKey(secret, QSsl::Ec)};
}

} // namespace varnet
