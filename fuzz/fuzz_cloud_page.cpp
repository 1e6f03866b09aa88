// An address that the service sends for the browser leads to the service's host, over an encrypted
// connection, or is refused. What the browser is given tells, not what the address was read as.

#include "VarnetApp/CloudStore/CloudService.h"
#include "VarnetCore/Base/Clock.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fuzz/Require.h"

using namespace varnet;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const SystemClock clock;
    static const CloudService service({.endpoint = QStringLiteral("https://cloud.example.test"),
                                       .clock = clock,
                                       .version = "1.0",
                                       .systemVersion = "12"});
    const QUrl url(QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)),
                   QUrl::StrictMode);
    if (!service.isOwnPage(url)) return 0;
    const QByteArray encoded = url.toEncoded();
    std::string_view shown(encoded.constData(), static_cast<std::size_t>(encoded.size()));
    require(shown.starts_with("https://"));
    shown.remove_prefix(std::string_view("https://").size());
    std::string_view authority = shown.substr(0, shown.find_first_of("/?#"));
    if (const auto at = authority.rfind('@'); at != authority.npos) authority.remove_prefix(at + 1);
    require(authority.substr(0, authority.find(':')) == "cloud.example.test");
    require(std::ranges::none_of(encoded, [](char byte) {
        return static_cast<unsigned char>(byte) <= 0x20 || static_cast<unsigned char>(byte) >= 0x7F;
    }));
    return 0;
}
