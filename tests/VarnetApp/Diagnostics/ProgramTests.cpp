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

    /// The object that the program prints before it ends with a status.
    Json report(const std::string& arguments, int status = 0, const std::string& environment = {}) const {
        const Outcome outcome = run(arguments, environment);
        EXPECT_EQ(outcome.status, status) << outcome.output;
        const Json printed = Json::parse(outcome.output, nullptr, false);
        EXPECT_TRUE(printed.is_object()) << outcome.output;
        return printed;
    }
    /// A file where a folder should be.
    void block(const std::string& below) const { folder_.write(below, ""); }

    TemporaryFolder folder_;
};

TEST_F(ProgramTest, diagnosePrintsTheWholePicture) {
    const Json printed = report("--diagnose");
    EXPECT_TRUE(printed["error"].is_null());
    EXPECT_TRUE(printed["uniqueMembership"].get<bool>());
    EXPECT_GT(printed["processes"].get<int>(), 0);
    EXPECT_GT(printed["processesWithCPU"].get<int>(), 0);
    EXPECT_GT(printed["processesWithMemory"].get<int>(), 0);
    EXPECT_TRUE(printed["wholeMacCPU"].is_number());
    EXPECT_GT(printed["physicalRAMBytes"].get<double>(), printed["usedRAMBytes"].get<double>());
    EXPECT_TRUE(printed["historyWarning"].is_null());
    for (const char* const key : {"compressedRAMBytes", "swapUsedBytes", "processFootprintBytes",
                                  "fanAvailability", "fans", "findings"}) {
        EXPECT_TRUE(printed.contains(key)) << key;
    }
    ASSERT_FALSE(printed["groups"].empty());
    for (const Json& group : printed["groups"]) {
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
    block("artifacts/diagnostic-state");
    EXPECT_EQ(report("--diagnose")["historyWarning"],
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
    const Json printed = report("--battery-diagnose", 0, "VARNET_KERNEL_ROOT=machine");
    EXPECT_EQ(printed["reading"]["state"], "onBattery");
    EXPECT_EQ(printed["reading"]["charge"], 60.0);
    EXPECT_EQ(printed["reading"]["health"], "none");
    EXPECT_EQ(printed["historyPoints"], 1);
    EXPECT_EQ(printed["healthPoints"], 0);
    EXPECT_EQ(printed["historySaved"], true);
    EXPECT_EQ(printed["historyWarning"], "none");
    EXPECT_TRUE(printed["highestImpactScores"].is_array());
    EXPECT_FALSE(std::filesystem::exists(folder_.path() / "data")) << "the user's own files stay untouched";
}

TEST_F(ProgramTest, batteryDiagnoseSucceedsWhereNothingCanBeReadOrKept) {
    block("artifacts");
    const Json printed = report("--battery-diagnose", 0, "VARNET_KERNEL_ROOT=nowhere");
    EXPECT_EQ(printed["reading"]["availability"], "unavailable");
    EXPECT_EQ(printed["historySaved"], false);
    EXPECT_EQ(printed["historyWarning"], "Battery history could not be saved. Live readings still work.");
}

TEST_F(ProgramTest, storageDiagnosePrintsWhatProjectsOccupy) {
    folder_.write("code/web/package.json", "{}");
    folder_.write("code/web/.gitignore", "node_modules\n");
    folder_.write("code/web/node_modules/a/file", std::string(100'000, 'x'));
    folder_.write(".codex/worktrees/task/.git", "gitdir: /nowhere");
    const std::string prepare = "cd '" + folder_.path("code/web") + "' && git init -q -b main .";
    ASSERT_EQ(std::system(prepare.c_str()), 0);
    const Json printed = report("--storage-diagnose code missing");
    EXPECT_EQ(printed["measured"], 2);
    EXPECT_GT(printed["items"].get<int>(), 7);
    EXPECT_GT(printed["allocatedBytes"].get<int>(), printed["reviewBytes"].get<int>());
    EXPECT_GE(printed["reviewBytes"].get<int>(), 100'000);
    EXPECT_GE(printed["logicalBytes"].get<int>(), 100'000);
    EXPECT_EQ(printed["notes"], Json::array());
    ASSERT_EQ(printed["projects"].size(), 2U);
    const Json& web = printed["projects"][0]; // the largest
    EXPECT_EQ(web["path"], folder_.path("code/web"));
    EXPECT_EQ(web["source"], "Local folder");
    EXPECT_EQ(web["branch"], "main");
    EXPECT_EQ(web["partial"], false);
    EXPECT_EQ(web["gitSummary"], "Uncommitted or untracked files · upstream not verified");
    EXPECT_EQ(web["candidates"][0]["relativePath"], "node_modules");
    EXPECT_TRUE(web["buckets"].contains("Dependencies"));
    EXPECT_EQ(printed["projects"][1]["source"], "Codex");
    EXPECT_EQ(printed["projects"][1]["worktree"], true);
}

TEST_F(ProgramTest, benchmarkPrintsItsObject) {
    const Json printed = report("--benchmark 1");
    EXPECT_GE(printed["cpuPercentOfOneCore"].get<double>(), 0);
    EXPECT_GT(printed["meanSampleWallMs"].get<double>(), 0);
    EXPECT_GT(printed["processes"].get<int>(), 0);
    EXPECT_GE(printed["samples"].get<int>(), 1);
}

TEST_F(ProgramTest, integrationTestFindsAndStopsItsServer) {
    block("artifacts/integration-fixture/not-a-directory"); // leftovers of an earlier one do not disturb it
    const Json printed = report("--integration-test");
    EXPECT_TRUE(printed["success"].get<bool>());
    EXPECT_EQ(printed["detectedPorts"].size(), 1U);
    EXPECT_EQ(printed["targetCount"], 1);
    EXPECT_TRUE(printed["discoveredBetweenMetricSamples"].get<bool>());
    EXPECT_TRUE(printed["historyFailureReported"].get<bool>());
}

TEST_F(ProgramTest, integrationTestSaysWhyItCannotStart) {
    block("artifacts");
    const Json printed = report("--integration-test", 1);
    EXPECT_FALSE(printed["success"].get<bool>());
    EXPECT_EQ(printed["reason"], "Not a directory");
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
