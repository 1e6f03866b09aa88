#include "VarnetApp/CloudStore/CloudAccount.h"
#include "VarnetApp/CloudStore/InstallationKey.h"
#include "VarnetApp/CloudStore/RestorePages.h"
#include "VarnetCore/Base/SmallFile.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <openssl/evp.h>

#include <sys/stat.h>

#include <string>
#include <utility>
#include <vector>

namespace varnet {
namespace {

TEST(CloudCredentials, areReadWholeOrNotAtAll) {
    CloudCredentials credentials{"t", "d", "a", "e@x", "g", "private", {}, {}};
    EXPECT_EQ(CloudCredentials::parse(credentials.json()), credentials);
    credentials.pendingMode = "off";
    credentials.pendingDisconnect = true;
    const std::string whole = credentials.json();
    EXPECT_EQ(CloudCredentials::parse(whole), credentials);
    const auto with = [&](const std::string& from, const std::string& to) {
        std::string text = whole;
        return text.replace(text.find(from), from.size(), to);
    };
    for (const auto& [oddity, text] : std::vector<std::pair<const char*, std::string>>{
             {"nothing", ""},
             {"cut off", whole.substr(0, whole.size() - 1)},
             {"a list", "[]"},
             {"no token", with("\"token\"", "\"tokn\"")},
             {"a number for a text", with("\"t\"", "7")},
             {"a mode nobody knows", with("\"private\"", "\"public\"")},
             {"an intent nobody knows", with("\"off\"", "\"on\"")},
             {"an intent that is no flag", with("true", "1")}})
        EXPECT_EQ(CloudCredentials::parse(text), std::nullopt) << oddity;
    CloudCredentials other = credentials;
    other.generation = "h";
    EXPECT_NE(credentials.scope(), other.scope());
    // A line break belongs to one of the two texts.
    credentials.accountID = "a\n";
    credentials.generation = "b";
    other.accountID = "a";
    other.generation = "\nb";
    EXPECT_NE(credentials.scope(), other.scope());
}

TEST(CloudServiceError, isWhatTheServiceSays) {
    EXPECT_EQ(CloudServiceError::parse(R"({"code":"a","message":"b"})"), (CloudServiceError{"a", "b"}));
    for (const char* const text : {"", "{}", R"({"code":"a"})", R"({"code":1,"message":"b"})",
                                   R"({"code":"unavailable","message":"b"})", R"({"code":"a","message":""})"})
        EXPECT_EQ(CloudServiceError::parse(text), std::nullopt) << text;
}

TEST(InstallationKey, isMadeOnceAndNeverWrittenOver) {
    const TemporaryFolder folder;
    const auto file = folder.path() / "cloud" / "installation.json";
    const auto made = InstallationKey::open(file);
    ASSERT_TRUE(made);
    struct stat info{};
    ASSERT_EQ(stat(file.c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 07777, 0600U);
    const auto again = InstallationKey::open(file);
    ASSERT_TRUE(again);
    EXPECT_EQ(again->installationID(), made->installationID());
    EXPECT_EQ(again->publicKey(), made->publicKey());
    const std::string signature = made->sign("some bytes");
    EXPECT_NE(signature, made->sign("some bytes")) << "signatures are random";
    EXPECT_EQ(signature.front(), '\x30') << "DER";

    const std::string whole = readSmallFile(file.string(), 100'000).value();
    const std::size_t secret = whole.find("privateKey") + 13;
    for (const auto& [oddity, bytes] : std::vector<std::pair<const char*, std::string>>{
             {"empty", ""},
             {"cut off", whole.substr(0, whole.size() / 2)},
             {"a key that is none", whole.substr(0, secret) + "AAAA" + whole.substr(secret + 4)},
             {"far too long", whole + std::string(20'000, ' ')}}) {
        SCOPED_TRACE(oddity);
        folder.write("cloud/installation.json", bytes);
        EXPECT_FALSE(InstallationKey::open(file));
        EXPECT_EQ(readSmallFile(file.string(), 100'000), bytes);
    }
    folder.write("file", "");
    EXPECT_FALSE(InstallationKey::open(folder.path() / "file" / "key")) << "nowhere to keep it";
}

TEST(RestorePages, takeTheNewestOfEachAndEndSomewhere) {
    const std::string collection =
        R"("kind":"collection","id":"current","at":1,"data":{"started":1,"timezone":"GMT","metrics":{"round":)";
    RestorePages pages;
    EXPECT_EQ(pages.take(R"({"generation":"g","nextCursor":"1","records":[{"revision":7,)" + collection +
                             R"(2}}},{"kind":"battery","id":"b"},7,{"kind":"day"}]})",
                         ""),
              "1");
    EXPECT_EQ(pages.take(R"({"generation":"g","nextCursor":null,"records":[{"revision":6,)" + collection +
                             R"(1}}}]})",
                         "1"),
              "");
    EXPECT_EQ(pages.collection()->metrics.at("round"), 2) << "an older revision that comes later";
    const std::vector<std::pair<const char*, const char*>> rows{
        {"another archive", R"({"generation":"h","records":[]})"},
        {"back to itself", R"({"generation":"g","nextCursor":"1","records":[]})"},
        {"no records", R"({"generation":"g"})"},
        {"records that are none", R"({"generation":"g","records":{}})"},
        {"a cursor of another type", R"({"generation":"g","nextCursor":2,"records":[]})"},
        {"no page", "[]"},
        {"nothing", ""},
    };
    for (const auto& [oddity, page] : rows) {
        RestorePages read;
        EXPECT_TRUE(read.take(R"({"generation":"g","nextCursor":"1","records":[]})", ""));
        EXPECT_FALSE(read.take(page, "1")) << oddity;
    }
    RestorePages endless;
    int taken = 0;
    const auto next = [&] {
        const std::string cursor = std::to_string(taken + 1);
        return R"({"generation":"g","nextCursor":")" + cursor + R"(","records":[]})";
    };
    while (endless.take(next(), std::to_string(taken)))
        ++taken;
    EXPECT_EQ(taken, RestorePages::mostPages);
}

} // namespace
} // namespace varnet
