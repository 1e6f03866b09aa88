#include "VarnetApp/Diagnostics/ReleaseFeedDiagnostic.h"
#include "VarnetApp/Updates/RunningCopy.h"
#include "tests/VarnetApp/Updates/LoopbackService.h"

#include <gtest/gtest.h>

#include <string>

namespace varnet::test {
namespace {

using Service = LoopbackService;
using Then = LoopbackService::Answer::Then;

TEST(ReleaseFeedDiagnosticTest, printsHowTheReleaseStandsOrWhyNobodyKnows) {
    const QByteArray good = Service::manifest("archive");
    const QByteArray full = good.leftJustified(65'536, ' ');
    struct Row {
        const char* name;
        Service::Answer answer;
        std::string line;
        int build = 1;
    };
    const Row rows[] = {
        {"newer", {Service::ok(good)}, "Version 9.9. Update status: available"},
        {"the same", {Service::ok(good)}, "Version 9.9. Update status: current", 1000},
        {"for another system",
         {Service::ok(Service::manifest("archive", "99.0"))},
         "Version 9.9. Update status: requiresNewerSystem"},
        {"as long as it may be", {Service::ok(full)}, "Version 9.9. Update status: available"},
        {"a byte longer", {Service::ok(full + ' ')}, "Update check failed: the answer is too long"},
        {"longer, and does not say so",
         {"HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n" + full + ' '},
         "Update check failed: the answer is too long"},
        {"without an end",
         {Service::ok(QByteArray(4'000'000, ' '), 1'000'000'000'000), Then::drip},
         "Update check failed: the answer is too long"},
        {"elsewhere", {Service::redirect("/elsewhere")}, "Update check failed: the server redirects"},
        {"elsewhere, with a body",
         {Service::answer("301 Moved Permanently", good)},
         "Update check failed: the server redirects"},
        {"an error with a good body",
         {Service::answer("500 Oops", good)},
         "Update check failed: the server answered with status 500"},
        {"part of a manifest",
         {Service::answer("206 Partial Content", good)},
         "Update check failed: the server answered with status 206"},
        {"silence", {{}, Then::stay}, "Update check failed: the server takes too long"},
        {"silence in the middle",
         {Service::ok(good.left(50), 1000), Then::stay},
         "Update check failed: the server takes too long"},
        {"byte by byte",
         {Service::ok(good, 60'000), Then::drip},
         "Update check failed: the server takes too long"},
        {"cut off", {Service::ok(good, good.size() + 1)}, "Update check failed: Connection closed"},
        {"garbage", {Service::ok("\xff{")}, "Update check failed: the manifest is not valid"},
        {"another host's",
         {Service::ok(QByteArray(good).replace(Service::host, "releases.example.net"))},
         "Update check failed: the manifest is not valid"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Service service;
        service.answers = {{Service::feed, row.answer}, {"/elsewhere", {Service::ok(good)}}};
        testing::internal::CaptureStdout();
        const int status =
            ReleaseFeedDiagnostic::run(service.reached(), {.build = row.build, .systemVersion = "6.1.0"});
        EXPECT_EQ(testing::internal::GetCapturedStdout(), row.line + "\n");
        EXPECT_EQ(status == 0, row.line.starts_with("Version"));
        EXPECT_EQ(service.asked, QStringList(Service::feed)) << "nothing else was asked for";
    }
}

} // namespace
} // namespace varnet::test
