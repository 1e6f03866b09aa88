#include "VarnetApp/Diagnostics/CommandLine.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "packaging/PackageTexts.h"

namespace varnet {
namespace {

using testing::IsEmpty;
using testing::UnorderedElementsAre;
using testing::UnorderedElementsAreArray;

std::vector<std::string> everySwitch() {
    std::vector<std::string> names;
    for (const CommandLine::Switch& known : CommandLine::knownSwitches())
        names.emplace_back(known.name);
    return names;
}

/// The completion in a real shell.
class BashCompletionTest : public testing::Test {
protected:
    BashCompletionTest() {
        folder_.write("completion", PackageTexts::bashCompletion());
        std::filesystem::create_directories(folder_.path() / "here/pictures old");
        std::filesystem::create_directories(folder_.path() / "here/packages");
        folder_.write("here/paper.txt", "");
    }

    /// What is offered for the last of the words behind the program's name.
    std::vector<std::string> offered(const std::vector<std::string>& words) {
        std::string line = "varnet";
        for (const std::string& word : words)
            line += " '" + word + "'";
        folder_.write("script", "cd '" + folder_.path().string() + "/here' && . ../completion\nCOMP_WORDS=(" +
                                    line + ")\nCOMP_CWORD=" + std::to_string(words.size()) +
                                    "\n_varnet\nprintf '%s\\n' \"${COMPREPLY[@]}\"\n");
        FILE* const pipe = popen(("bash '" + (folder_.path() / "script").string() + "' 2>&1").c_str(), "r");
        std::string output;
        std::array<char, 4096> buffer{};
        while (const std::size_t got = fread(buffer.data(), 1, buffer.size(), pipe))
            output.append(buffer.data(), got);
        EXPECT_EQ(pclose(pipe), 0) << output;
        std::vector<std::string> lines;
        std::istringstream stream(output);
        for (std::string each; std::getline(stream, each);)
            if (!each.empty()) lines.push_back(each);
        return lines;
    }

    TemporaryFolder folder_;
};

TEST_F(BashCompletionTest, offersWhatMayStandThere) {
    EXPECT_THAT(offered({"--"}), UnorderedElementsAreArray(everySwitch()));
    EXPECT_THAT(offered({"--diagnose", "--"}), UnorderedElementsAreArray(everySwitch()))
        << "behind one that takes nothing";
    struct Row {
        const char* name;
        std::vector<std::string> words;
        std::vector<std::string> offers;
    };
    for (const Row& row : std::vector<Row>{
             {"begun switch", {"--show-s"}, {"--show-settings"}},
             {"only folders, also with blanks", {"--render-storage", "p"}, {"packages", "pictures old"}},
             {"one folder is enough", {"--render-storage", "packages", "p"}, {}},
             {"several folders", {"--storage-diagnose", "packages", "pi"}, {"pictures old"}},
             {"a folder that may be left out",
              {"--disk-diagnose", "--di"},
              {"--disk-diagnose", "--diagnose"}},
             {"language", {"--render-storage", "x", "--preview-language", "c"}, {"cs"}},
             {"nobody knows the seconds", {"--benchmark", ""}, {}},
         }) {
        EXPECT_THAT(offered(row.words), UnorderedElementsAreArray(row.offers)) << row.name;
    }
}

TEST(PackageTextsTest, everySwitchStandsInEveryTextAsItIsTyped) {
    for (const std::string& name : everySwitch()) {
        std::string inManual;
        for (const char c : name)
            inManual += c == '-' ? "\\-" : std::string(1, c);
        EXPECT_NE(PackageTexts::manualOptions().find("\\fB" + inManual + "\\fR"), std::string::npos) << name;
        EXPECT_NE(PackageTexts::zshCompletion().find("'" + name + "["), std::string::npos) << name;
        EXPECT_NE(PackageTexts::fishCompletion().find(" -l " + name.substr(2) + " "), std::string::npos)
            << name;
    }
}

} // namespace
} // namespace varnet
