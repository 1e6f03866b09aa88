#include "VarnetApp/Diagnostics/CommandLine.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace varnet {
namespace {

using Action = CommandLine::Action;

TEST(CommandLineTest, switchesAndRefusals) {
    struct Row {
        const char* name;
        std::vector<std::string_view> arguments;
        Action action;
        double seconds = 30;
        std::string_view refusal = "";
    };
    const Row rows[] = {
        {"nothing", {}, Action::start},
        {"diagnose", {"--diagnose"}, Action::diagnose},
        {"benchmark without a value", {"--benchmark"}, Action::benchmark, 30},
        {"benchmark with seconds", {"--benchmark", "2.5"}, Action::benchmark, 2.5},
        {"benchmark with a word", {"--benchmark", "long"}, Action::benchmark, 30},
        {"benchmark with a number and more", {"--benchmark", "5s"}, Action::benchmark, 30},
        {"benchmark with no number at all", {"--benchmark", "nan"}, Action::benchmark, 30},
        {"benchmark for ever", {"--benchmark", "inf"}, Action::benchmark, 30},
        {"benchmark before another switch", {"--benchmark", "--diagnose"}, Action::diagnose},
        {"no time at all",
         {"--benchmark", "0"},
         Action::refuse,
         30,
         "--benchmark needs a number of seconds above 0."},
        {"negative time",
         {"--benchmark", "-3"},
         Action::refuse,
         30,
         "--benchmark needs a number of seconds above 0."},
        {"order of testing, not of typing", {"--benchmark", "5", "--diagnose"}, Action::diagnose, 5},
        {"integration", {"--integration-test"}, Action::integration},
        {"battery pictures", {"--render-battery", "pictures"}, Action::renderBattery},
        {"battery pictures without a folder", {"--render-battery"}, Action::start},
        {"without one before another switch", {"--render-battery", "--diagnose"}, Action::diagnose},
        {"battery pictures before the other switches",
         {"--diagnose", "--render-previews", "a", "--render-battery", "b"},
         Action::renderBattery},
        {"but after its own diagnosis",
         {"--render-battery", "b", "--battery-diagnose"},
         Action::batteryDiagnose},
        {"storage pictures before all the others",
         {"--render-battery", "a", "--storage-diagnose", "--render-storage", "b"},
         Action::renderStorage},
        {"storage pictures without a folder", {"--render-storage"}, Action::start},
        {"a look for updates before the scan, after the pictures",
         {"--storage-diagnose", "--check-update"},
         Action::checkUpdate},
        {"pictures before a look for updates",
         {"--check-update", "--render-collection", "a"},
         Action::renderCollection},
        {"unknown switch", {"--diagnosis"}, Action::refuse, 30, "Unknown switch \"--diagnosis\"."},
        {"unknown beside a known one", {"--diagnose", "-x"}, Action::refuse, 30, "Unknown switch \"-x\"."},
        {"stray word", {"now"}, Action::refuse, 30, "Unexpected argument \"now\"."},
        {"empty word", {""}, Action::refuse, 30, "Unexpected argument \"\"."},
        {"help wins", {"--diagnose", "--help"}, Action::help},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const CommandLine line = CommandLine::parse(row.arguments);
        EXPECT_EQ(line.action, row.action);
        EXPECT_EQ(line.refusal, row.refusal);
        if (row.action != Action::refuse) {
            EXPECT_EQ(line.seconds, row.seconds);
        }
    }
}

TEST(CommandLineTest, storageDiagnoseTakesAllFoldersBehindIt) {
    const std::vector<std::string_view> arguments{"--storage-diagnose", "a", "b c", "--diagnose"};
    const CommandLine line = CommandLine::parse(arguments);
    EXPECT_EQ(line.action, Action::storageDiagnose);
    EXPECT_EQ(line.folders, (std::vector<std::string>{"a", "b c"}));
}

TEST(CommandLineTest, eachRendererKeepsItsOwnFolder) {
    struct Row {
        const char* name;
        std::vector<std::string_view> arguments;
        Action action;
        std::string_view folder;
    };
    for (const Row& row : std::vector<Row>{
             {"collection", {"--render-collection", "a"}, Action::renderCollection, "a"},
             {"reports", {"--render-reports", "a"}, Action::renderReports, "a"},
             {"order of testing",
              {"--render-reports", "r", "--render-collection", "c"},
              Action::renderCollection,
              "c"},
             {"previews before reports",
              {"--render-reports", "r", "--render-previews", "p"},
              Action::renderPreviews,
              "p"},
             {"without a folder it is absent",
              {"--render-collection", "--render-reports", "r"},
              Action::renderReports,
              "r"},
             {"languages before all others",
              {"--render-storage", "s", "--render-localization", "l"},
              Action::renderLocalization,
              "l"},
             {"marketing before previews, after what is measured",
              {"--render-previews", "p", "--render-marketing", "m"},
              Action::renderMarketing,
              "m"},
             {"but measuring wins", {"--render-marketing", "m", "--diagnose"}, Action::diagnose, ""},
             {"last of all", {"--render-reports"}, Action::start, ""}}) {
        SCOPED_TRACE(row.name);
        const CommandLine line = CommandLine::parse(row.arguments);
        EXPECT_EQ(line.action, row.action);
        EXPECT_EQ(line.folder, row.folder);
    }
}

TEST(CommandLineTest, diskDiagnoseMeasuresOneFolder) {
    const std::vector<std::string_view> arguments{"--disk-diagnose", "a", "b"};
    EXPECT_EQ(CommandLine::parse(arguments).refusal, "--disk-diagnose measures one folder.");
}

TEST(CommandLineTest, helpTellsOfEverySwitchInLinesOfATerminal) {
    const std::string help = CommandLine::help();
    for (const CommandLine::Switch& known : CommandLine::knownSwitches()) {
        EXPECT_NE(help.find("\n  " + std::string(known.name)), std::string::npos) << known.name;
        EXPECT_FALSE(known.help.empty()) << known.name;
    }
    std::istringstream lines(help);
    for (std::string line; std::getline(lines, line);)
        EXPECT_LE(line.size(), 80U) << line;
}

} // namespace
} // namespace varnet
