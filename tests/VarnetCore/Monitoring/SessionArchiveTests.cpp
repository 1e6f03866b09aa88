#include "VarnetCore/Monitoring/SessionArchive.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>
#include <tuple>

namespace varnet {
namespace {

constexpr std::string_view emptyArchive = R"({"lineage":[],"actions":[],"ignored":{},"roastChoices":{}})";

SessionArchive sample() {
    SessionArchive archive;
    archive.lineage.push_back(
        {{1, 2, 3}, {"Codex", {1, 1, 1}, Confidence::likely, "why", Date{0.1 + 0.2}}, Date{5}});
    archive.actions.push_back({Uuid::random(), Date{-1e-300}, "Stopped", "\"quotes\"\n"});
    archive.ignored["finding"] = Date{815'000'000.123456789};
    archive.roastChoices["hot"] = std::numeric_limits<std::int64_t>::min();
    return archive;
}

TEST(SessionArchive, WhatIsWrittenReadsBackExactly) {
    const SessionArchive archive = sample();
    EXPECT_EQ(SessionArchive::decode(archive.encode()), archive);
}

TEST(SessionArchive, AnyBytesAreWrittenAsJson) {
    SessionArchive archive = sample();
    archive.actions[0].title = "cut \xE2\x82";
    archive.ignored["process:\xFF"] = Date{1};
    const auto read = SessionArchive::decode(archive.encode());
    ASSERT_TRUE(read);
    EXPECT_EQ(read->actions[0].title, "cut \xEF\xBF\xBD");
    EXPECT_TRUE(read->ignored.contains("process:\xEF\xBF\xBD"));
}

TEST(SessionArchive, AMomentThatIsNoNumberDoesNotSpoilTheFile) {
    SessionArchive archive = sample();
    archive.actions[0].date = {std::numeric_limits<double>::quiet_NaN()};
    archive.ignored["x"] = {std::numeric_limits<double>::infinity()};
    auto read = SessionArchive::decode(archive.encode());
    ASSERT_TRUE(read);
    read->prune(Date{815'000'000}, {});
    EXPECT_TRUE(read->actions.empty());
    EXPECT_FALSE(read->ignored.contains("x"));
}

TEST(SessionArchive, DecodesStrictlyTyped) {
    using Row = std::tuple<const char*, const char*, std::optional<std::int64_t>>;
    for (const auto& [oddity, roastChoice, value] : {
             Row{"a float that is whole", "5.0", 5},
             Row{"an exponent that is whole", "-1e3", -1000},
             Row{"a fraction", "5.5", std::nullopt},
             Row{"largest", "9223372036854775807", std::numeric_limits<std::int64_t>::max()},
             Row{"one too large", "9223372036854775808", std::nullopt},
             Row{"a float one too large", "9223372036854775808.0", std::nullopt},
             Row{"lowest as a float", "-9223372036854775808.0", std::numeric_limits<std::int64_t>::min()},
             Row{"a flag is no number", "true", std::nullopt},
             Row{"beyond any number", "1e999", std::nullopt},
             Row{"no JSON number", "NaN", std::nullopt},
         }) {
        std::string json(emptyArchive);
        json.insert(json.size() - 2, std::string("\"k\":") + roastChoice);
        const auto archive = SessionArchive::decode(json);
        const auto choice = archive ? std::optional(archive->roastChoices.at("k")) : std::nullopt;
        EXPECT_EQ(choice, value) << oddity;
    }
}

TEST(SessionArchive, RefusesWhatIsNoArchive) {
    const std::string whole(emptyArchive);
    EXPECT_TRUE(SessionArchive::decode(whole));
    EXPECT_TRUE(SessionArchive::decode(whole.substr(0, whole.size() - 1) + R"(,"more":[1,{"x":null}]})"))
        << "unknown keys are ignored";
    using Row = std::tuple<const char*, std::string>;
    for (const auto& [oddity, json] : {
             Row{"nothing", ""},
             Row{"another kind of JSON", "[]"},
             Row{"null", "null"},
             Row{"two archives", whole + whole},
             Row{"invalid UTF-8", whole.substr(0, whole.size() - 1) + ",\"\xFF\":1}"},
             Row{"half a surrogate pair", whole.substr(0, whole.size() - 1) + R"(,"\ud800":1})"},
             Row{"a hostile depth", std::string(1'000'000, '[')},
             Row{"a hostile depth in an unknown key", whole.substr(0, whole.size() - 1) +
                                                          ",\"x\":" + std::string(200, '[') +
                                                          std::string(200, ']') + '}'},
         }) {
        EXPECT_FALSE(SessionArchive::decode(json)) << oddity;
    }
}

} // namespace
} // namespace varnet
