#include "VarnetApp/Diagnostics/ReleaseFeedDiagnostic.h"

#include "VarnetApp/Updates/ReleaseFeed.h"
#include "VarnetApp/Updates/RunningCopy.h"

#include <QEventLoop>
#include <QNetworkAccessManager>
#include <fmt/format.h>

namespace varnet::ReleaseFeedDiagnostic {

namespace {

ReleaseFeed::Answer ask(const ReleaseHost& host) {
    if (host.name.empty()) return std::unexpected("no release host is configured");
    QNetworkAccessManager network;
    QEventLoop loop;
    ReleaseFeed::Answer answer;
    ReleaseFeed(network, host).read(&loop, [&](ReleaseFeed::Answer received) {
        answer = std::move(received);
        loop.quit();
    });
    loop.exec();
    return answer;
}

} // namespace

int run(const ReleaseHost& host, const RunningCopy& copy) {
    const ReleaseFeed::Answer answer = ask(host);
    if (!answer) {
        fmt::print("Update check failed: {}\n", answer.error().toStdString());
        return 1;
    }
    fmt::print("Version {}. Update status: {}\n", answer->version,
               rawValue(answer->availability(copy.build, copy.systemVersion)));
    return 0;
}

} // namespace varnet::ReleaseFeedDiagnostic
