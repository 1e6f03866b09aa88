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
    const auto stands = [](const char* how) { return std::string("Version 9.9. Update status: ") + how; };
    const auto fails = [](const char* why) { return std::string("Update check failed: ") + why; };
    const auto status = [&](const char* line) { return Service::Answer{Service::answer(line, good)}; };
    const Service::Answer newer{Service::ok(Service::manifest("archive", "99.0"))};
    const Service::Answer undeclared{"HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n" + full + ' '};
    const Service::Answer endless{Service::ok(QByteArray(4'000'000, ' '), 1'000'000'000'000), Then::drip};
    const Service::Answer halted{Service::ok(good.left(50), 1000), Then::stay};
    const Service::Answer foreign{
        Service::ok(QByteArray(good).replace(Service::host, "releases.example.net"))};
    struct Row {
        const char* name;
        Service::Answer answer;
        std::string line;
        int build = 1;
    };
    const Row rows[] = {
        {"newer", {Service::ok(good)}, stands("available")},
        {"the same", {Service::ok(good)}, stands("current"), 1000},
        {"for another system", newer, stands("requiresNewerSystem")},
        {"as long as it may be", {Service::ok(full)}, stands("available")},
        {"a byte longer", {Service::ok(full + ' ')}, fails("the answer is too long")},
        {"longer, and does not say so", undeclared, fails("the answer is too long")},
        {"without an end", endless, fails("the answer is too long")},
        {"elsewhere", {Service::redirect("/elsewhere")}, fails("the server redirects")},
        {"elsewhere, with a body", status("301 Moved Permanently"), fails("the server redirects")},
        {"an error with a good body", status("500 Oops"), fails("the server answered with status 500")},
        {"part of it", status("206 Partial Content"), fails("the server answered with status 206")},
        {"silence", {{}, Then::stay}, fails("the server takes too long")},
        {"silence in the middle", halted, fails("the server takes too long")},
        {"byte by byte", {Service::ok(good, 60'000), Then::drip}, fails("the server takes too long")},
        {"cut off", {Service::ok(good, good.size() + 1)}, fails("Connection closed")},
        {"garbage", {Service::ok("\xff{")}, fails("the manifest is not valid")},
        {"another host's", foreign, fails("the manifest is not valid")},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Service service;
        service.answers = {{Service::feed, row.answer}, {"/elsewhere", {Service::ok(good)}}};
        testing::internal::CaptureStdout();
        const int result =
            ReleaseFeedDiagnostic::run(service.reached(), {.build = row.build, .systemVersion = "6.1.0"});
        EXPECT_EQ(testing::internal::GetCapturedStdout(), row.line + "\n");
        EXPECT_EQ(result == 0, row.line.starts_with("Version"));
        EXPECT_EQ(service.asked, QStringList(Service::feed)) << "nothing else was asked for";
    }
}

} // namespace
} // namespace varnet::test
