#include "VarnetApp/Diagnostics/CommandLine.h"

#include <gtest/gtest.h>

#include <ranges>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace varnet {
namespace {

using Action = CommandLine::Action;

std::vector<std::string_view> wordsOf(std::string_view text) {
    std::vector<std::string_view> words;
    for (const auto word : std::views::split(text, ' '))
        if (!word.empty()) words.emplace_back(word);
    return words;
}

/// What it came to, beside its action: why it was refused, its folders, or its seconds where they are not 30.
std::string detailOf(const CommandLine& line) {
    std::ostringstream detail;
    if (line.action == Action::refuse) return std::string(line.refusal);
    detail << line.folder;
    for (const std::string& folder : line.folders)
        detail << '<' << folder << '>';
    if (line.seconds != 30) detail << line.seconds;
    return detail.str();
}

TEST(CommandLineTest, switchesAndRefusals) {
    const char* const noTime = "--benchmark needs a number of seconds above 0.";
    struct Row {
        const char* name;
        const char* arguments;
        Action action;
        const char* detail = "";
    };
    const Row rows[] = {
        {"nothing", "", Action::start},
        {"diagnose", "--diagnose", Action::diagnose},
        {"benchmark without a value", "--benchmark", Action::benchmark},
        {"benchmark with seconds", "--benchmark 2.5", Action::benchmark, "2.5"},
        {"benchmark with a word", "--benchmark long", Action::benchmark},
        {"benchmark with a number and more", "--benchmark 5s", Action::benchmark},
        {"benchmark with no number at all", "--benchmark nan", Action::benchmark},
        {"benchmark for ever", "--benchmark inf", Action::benchmark},
        {"benchmark before another switch", "--benchmark --diagnose", Action::diagnose},
        {"no time at all", "--benchmark 0", Action::refuse, noTime},
        {"negative time", "--benchmark -3", Action::refuse, noTime},
        {"order of testing, not of typing", "--benchmark 5 --diagnose", Action::diagnose, "5"},
        {"integration", "--integration-test", Action::integration},
        {"collection", "--render-collection a", Action::renderCollection, "a"},
        {"reports", "--render-reports a", Action::renderReports, "a"},
        {"pictures without a folder", "--render-battery", Action::start},
        {"without one before another switch", "--render-battery --diagnose", Action::diagnose},
        {"without one before other pictures", "--render-collection --render-reports r", Action::renderReports,
         "r"},
        {"battery pictures before the other switches", "--diagnose --render-previews a --render-battery b",
         Action::renderBattery, "b"},
        {"but after its own diagnosis", "--render-battery b --battery-diagnose", Action::batteryDiagnose},
        {"storage pictures before all the others", "--render-battery a --storage-diagnose --render-storage b",
         Action::renderStorage, "b"},
        {"collection before reports", "--render-reports r --render-collection c", Action::renderCollection,
         "c"},
        {"previews before reports", "--render-reports r --render-previews p", Action::renderPreviews, "p"},
        {"languages before all others", "--render-storage s --render-localization l",
         Action::renderLocalization, "l"},
        {"marketing before previews", "--render-previews p --render-marketing m", Action::renderMarketing,
         "m"},
        {"but measuring wins", "--render-marketing m --diagnose", Action::diagnose},
        {"a look for updates before the scan", "--storage-diagnose --check-update", Action::checkUpdate},
        {"pictures before a look for updates", "--check-update --render-collection a",
         Action::renderCollection, "a"},
        {"all folders behind it", "--storage-diagnose a b --diagnose", Action::storageDiagnose, "<a><b>"},
        {"one folder only", "--disk-diagnose a b", Action::refuse, "--disk-diagnose measures one folder."},
        {"unknown switch", "--diagnosis", Action::refuse, "Unknown switch \"--diagnosis\"."},
        {"unknown beside a known one", "--diagnose -x", Action::refuse, "Unknown switch \"-x\"."},
        {"stray word", "now", Action::refuse, "Unexpected argument \"now\"."},
        {"help wins", "--diagnose --help", Action::help},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const CommandLine line = CommandLine::parse(wordsOf(row.arguments));
        EXPECT_EQ(line.action, row.action);
        EXPECT_EQ(detailOf(line), row.detail);
    }
    EXPECT_EQ(CommandLine::parse(std::vector<std::string_view>{""}).refusal, "Unexpected argument \"\".");
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
