// The built program as a user runs it.

#include "tests/fakes/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <set>
#include <string>

namespace varnet {
namespace {

using Json = nlohmann::json;

class ProgramTest : public testing::Test {
protected:
    struct Outcome {
        int status;
        std::string output;
    };

    /// Runs the program in a folder of its own, without a display, and with its own home.
    Outcome run(const std::string& arguments, const std::string& environment = {}) const {
        const std::string folder = folder_.path().string();
        const std::string command = "cd '" + folder + "' && env -u DISPLAY -u WAYLAND_DISPLAY HOME='" +
                                    folder + "' XDG_DATA_HOME='" + folder + "/data' " + environment +
                                    " " VARNET_PROGRAM " " + arguments + " 2>&1";
        FILE* const pipe = popen(command.c_str(), "r");
        Outcome outcome{-1, {}};
        std::array<char, 4096> buffer{};
        while (const std::size_t got = fread(buffer.data(), 1, buffer.size(), pipe)) {
            outcome.output.append(buffer.data(), got);
        }
        const int status = pclose(pipe);
        outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        return outcome;
    }

    TemporaryFolder folder_;
};

TEST_F(ProgramTest, diagnosePrintsTheWholePicture) {
    const Outcome outcome = run("--diagnose");
    ASSERT_EQ(outcome.status, 0) << outcome.output;
    const Json report = Json::parse(outcome.output, nullptr, false);
    ASSERT_TRUE(report.is_object()) << outcome.output;
    EXPECT_TRUE(report["error"].is_null());
    EXPECT_TRUE(report["uniqueMembership"].get<bool>());
    EXPECT_GT(report["processes"].get<int>(), 0);
    EXPECT_GT(report["processesWithCPU"].get<int>(), 0);
    EXPECT_GT(report["processesWithMemory"].get<int>(), 0);
    EXPECT_TRUE(report["wholeMacCPU"].is_number());
    EXPECT_GT(report["physicalRAMBytes"].get<double>(), report["usedRAMBytes"].get<double>());
    EXPECT_TRUE(report["historyWarning"].is_null());
    for (const char* const key : {"compressedRAMBytes", "swapUsedBytes", "processFootprintBytes",
                                  "fanAvailability", "fans", "findings"}) {
        EXPECT_TRUE(report.contains(key)) << key;
    }
    ASSERT_FALSE(report["groups"].empty());
    for (const Json& group : report["groups"]) {
        for (const char* const key : {"id", "name", "subtitle", "kind", "cpu", "memory", "ports", "agents",
                                      "framework", "processes"}) {
            EXPECT_TRUE(group.contains(key)) << key;
        }
        EXPECT_FALSE(group["processes"].empty());
    }
    EXPECT_TRUE(std::filesystem::exists(folder_.path() / "artifacts/diagnostic-state/history.json"));
    EXPECT_FALSE(std::filesystem::exists(folder_.path() / "data")) << "the user's own files stay untouched";
}

TEST_F(ProgramTest, renderersWriteTheirPicturesAndNothingElse) {
    const std::map<std::string, std::set<std::string>> renderers{
        {"--render-collection", {"collection-minimum.png", "earned-badges.png", "weekly-roast.png"}},
        {"--render-marketing",
         {"marketing-overview.png", "marketing-servers.png", "marketing-disk.png", "marketing-hall.png"}},
        {"--preview-only onboarding --render-localization",
         {"onboarding-cs.png", "onboarding-en.png", "onboarding-small-cs.png", "onboarding-small-en.png"}},
        {"--preview-only quit-forced --preview-language cs --render-localization", {"quit-forced-cs.png"}},
        {"--render-reports", {"my-mac-report.png", "My-week-lightly-roasted.png", "report-sheet.png"}}};
    for (const auto& [renderer, names] : renderers) {
        SCOPED_TRACE(renderer);
        const Outcome outcome = run(renderer + " 'pictures" + renderer + "'");
        ASSERT_EQ(outcome.status, 0) << outcome.output;
        std::set<std::string> written;
        for (const auto& entry :
             std::filesystem::directory_iterator(folder_.path() / ("pictures" + renderer)))
            written.insert(entry.path().filename());
        EXPECT_EQ(written, names);
    }
    EXPECT_FALSE(std::filesystem::exists(folder_.path() / "data")) << "the user's own files stay untouched";
}

TEST_F(ProgramTest, diagnoseReportsAStorageItCannotUse) {
    std::filesystem::create_directory(folder_.path() / "artifacts");
    fclose(fopen((folder_.path() / "artifacts/diagnostic-state").c_str(), "w"));
    const Outcome outcome = run("--diagnose");
    EXPECT_EQ(outcome.status, 0);
    const Json report = Json::parse(outcome.output, nullptr, false);
    EXPECT_EQ(report["historyWarning"],
              "History could not be saved. Live monitoring continues. Not a directory");
}

TEST_F(ProgramTest, batteryDiagnosePrintsAnotherMachinesReading) {
    const std::map<std::string, std::string> files{{"type", "Battery"},
                                                   {"status", "Discharging"},
                                                   {"capacity", "60"},
                                                   {"voltage_now", "12000000"},
                                                   {"power_now", "9000000"}};
    for (const auto& [name, text] : files)
        folder_.write("machine/sys/class/power_supply/BAT0/" + name, text + "\n");
    const Outcome outcome = run("--battery-diagnose", "VARNET_KERNEL_ROOT=machine");
    ASSERT_EQ(outcome.status, 0) << outcome.output;
    const Json report = Json::parse(outcome.output, nullptr, false);
    ASSERT_TRUE(report.is_object()) << outcome.output;
    EXPECT_EQ(report["reading"]["state"], "onBattery");
    EXPECT_EQ(report["reading"]["charge"], 60.0);
    EXPECT_EQ(report["reading"]["health"], "none");
    EXPECT_EQ(report["historyPoints"], 1);
    EXPECT_EQ(report["healthPoints"], 0);
    EXPECT_EQ(report["historySaved"], true);
    EXPECT_EQ(report["historyWarning"], "none");
    EXPECT_TRUE(report["highestImpactScores"].is_array());
    EXPECT_FALSE(std::filesystem::exists(folder_.path() / "data")) << "the user's own files stay untouched";
}

TEST_F(ProgramTest, batteryDiagnoseSucceedsWhereNothingCanBeReadOrKept) {
    fclose(fopen((folder_.path() / "artifacts").c_str(), "w"));
    const Outcome outcome = run("--battery-diagnose", "VARNET_KERNEL_ROOT=nowhere");
    ASSERT_EQ(outcome.status, 0) << outcome.output;
    const Json report = Json::parse(outcome.output, nullptr, false);
    EXPECT_EQ(report["reading"]["availability"], "unavailable");
    EXPECT_EQ(report["historySaved"], false);
    EXPECT_EQ(report["historyWarning"], "Battery history could not be saved. Live readings still work.");
}

TEST_F(ProgramTest, storageDiagnosePrintsWhatProjectsOccupy) {
    folder_.write("code/web/package.json", "{}");
    folder_.write("code/web/.gitignore", "node_modules\n");
    folder_.write("code/web/node_modules/a/file", std::string(100'000, 'x'));
    folder_.write(".codex/worktrees/task/.git", "gitdir: /nowhere");
    const std::string prepare = "cd '" + folder_.path("code/web") + "' && git init -q -b main .";
    ASSERT_EQ(std::system(prepare.c_str()), 0);
    const Outcome outcome = run("--storage-diagnose code missing");
    ASSERT_EQ(outcome.status, 0) << outcome.output;
    const Json report = Json::parse(outcome.output, nullptr, false);
    ASSERT_TRUE(report.is_object()) << outcome.output;
    EXPECT_EQ(report["measured"], 2);
    EXPECT_GT(report["items"].get<int>(), 7);
    EXPECT_GT(report["allocatedBytes"].get<int>(), report["reviewBytes"].get<int>());
    EXPECT_GE(report["reviewBytes"].get<int>(), 100'000);
    EXPECT_GE(report["logicalBytes"].get<int>(), 100'000);
    EXPECT_EQ(report["notes"], Json::array());
    ASSERT_EQ(report["projects"].size(), 2U);
    const Json& web = report["projects"][0]; // the largest
    EXPECT_EQ(web["path"], folder_.path("code/web"));
    EXPECT_EQ(web["source"], "Local folder");
    EXPECT_EQ(web["branch"], "main");
    EXPECT_EQ(web["partial"], false);
    EXPECT_EQ(web["gitSummary"], "Uncommitted or untracked files · upstream not verified");
    EXPECT_EQ(web["candidates"][0]["relativePath"], "node_modules");
    EXPECT_TRUE(web["buckets"].contains("Dependencies"));
    EXPECT_EQ(report["projects"][1]["source"], "Codex");
    EXPECT_EQ(report["projects"][1]["worktree"], true);
}

TEST_F(ProgramTest, benchmarkPrintsItsObject) {
    const Outcome outcome = run("--benchmark 1");
    ASSERT_EQ(outcome.status, 0);
    const Json report = Json::parse(outcome.output, nullptr, false);
    EXPECT_GE(report["cpuPercentOfOneCore"].get<double>(), 0);
    EXPECT_GT(report["meanSampleWallMs"].get<double>(), 0);
    EXPECT_GT(report["processes"].get<int>(), 0);
    EXPECT_GE(report["samples"].get<int>(), 1);
}

TEST_F(ProgramTest, integrationTestFindsAndStopsItsServer) {
    std::filesystem::create_directories(folder_.path() / "artifacts/integration-fixture");
    fclose(fopen((folder_.path() / "artifacts/integration-fixture/not-a-directory").c_str(), "w"));
    const Outcome outcome = run("--integration-test"); // leftovers of an earlier one do not disturb it
    ASSERT_EQ(outcome.status, 0) << outcome.output;
    const Json report = Json::parse(outcome.output, nullptr, false);
    EXPECT_TRUE(report["success"].get<bool>());
    EXPECT_EQ(report["detectedPorts"].size(), 1U);
    EXPECT_EQ(report["targetCount"], 1);
    EXPECT_TRUE(report["discoveredBetweenMetricSamples"].get<bool>());
    EXPECT_TRUE(report["historyFailureReported"].get<bool>());
}

TEST_F(ProgramTest, integrationTestSaysWhyItCannotStart) {
    fclose(fopen((folder_.path() / "artifacts").c_str(), "w"));
    const Outcome outcome = run("--integration-test");
    EXPECT_EQ(outcome.status, 1);
    const Json report = Json::parse(outcome.output, nullptr, false);
    EXPECT_FALSE(report["success"].get<bool>());
    EXPECT_EQ(report["reason"], "Not a directory");
}

TEST_F(ProgramTest, withoutADisplayItPrintsALiveReading) {
    const Outcome outcome = run("");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_NE(outcome.output.find("Busiest"), std::string::npos) << outcome.output;
}

TEST_F(ProgramTest, aPrivateCopyHasNowhereToLookForUpdates) {
    const Outcome outcome = run("--check-update");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "Update check failed: no release host is configured\n");
}

TEST_F(ProgramTest, badUsageIsNamedWithAHint) {
    const Outcome outcome = run("--diagnosis");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.output, "varnet: Unknown switch \"--diagnosis\". Try \"varnet --help\".\n");
    EXPECT_EQ(run("--help").status, 0);
    EXPECT_EQ(run("--version").output.substr(0, 7), "varnet ");
}

} // namespace
} // namespace varnet
