#include "VarnetCore/Findings/StopPlanner.h"
#include "VarnetCore/Monitoring/Detector.h"
#include "VarnetCore/Monitoring/ProcessSample.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace varnet {
namespace {

TEST(Detector, FindsCommandLineAgentsThatHide) {
    using Row = std::tuple<const char*, std::string, std::string, std::vector<std::string>,
                           std::optional<std::string>>;
    const std::string node = "/usr/bin/node";
    const std::optional<std::string> none;
    for (const auto& [oddity, name, executable, arguments, agent] : {
             Row{"node that titles itself", "claude", node, {}, "Claude Code"},
             Row{"title in the arguments only", "MainThread", node, {"Claude"}, "Claude Code"},
             Row{"launcher link as script", "node", node, {"node", "/usr/bin/gemini"}, "Gemini CLI"},
             Row{"bun", "bun", "/opt/BUN", {"bun", "/usr/bin/codex"}, "Codex"},
             Row{"deno", "deno", "/usr/bin/deno", {"deno", "opencode"}, "OpenCode"},
             Row{"agent's own runtime", "node", node, {"node", "/opt/x/cursor-agent"}, "Cursor"},
             Row{"binary named after its version", "2.0.14", "/v/2.0.14", {"claude"}, "Claude Code"},
             Row{"... by its name", "codex", "/s/versions/10.0", {}, "Codex"},
             Row{"name before arguments", "codex", node, {"claude"}, "Codex"},
             Row{"third argument is the user's", "node", node, {"node", "run.js", "claude"}, none},
             Row{"a version is followed by no script", "x", "/v/2.0.14", {"x", "claude"}, none},
             Row{"only these names", "node", node, {"node", "/usr/bin/cursor"}, none},
             Row{"a name that begins like one", "node", node, {"node", "/usr/bin/claude.js"}, none},
             Row{"a folder of that name", "node", node, {"node", "/src/claude/server.js"}, none},
             Row{"other executables say what they are", "claude", "/usr/bin/bash", {"claude"}, none},
             Row{"python is no such runtime", "python3", "/bin/python3", {"python3", "claude"}, none},
             Row{"no executable known", "node", "", {"node", "/usr/bin/gemini"}, none},
             Row{"inside an application", "claude", "/A.app/Contents/node", {"claude"}, none},
             Row{"plain number", "claude", "/v/2", {}, none},
             Row{"dots without digits", "claude", "/v/2..1", {}, none},
             Row{"dot at the end", "claude", "/v/2.", {}, none},
             Row{"version with a suffix", "claude", "/v/2.0.1-beta", {}, none},
             Row{"package before title", "claude", node, {"node", "/m/@openai/codex/x.js"}, "Codex"},
         }) {
        EXPECT_EQ(Detector::agent(name, executable, arguments, ""), agent) << oddity;
    }
}

TEST(Detector, HiddenAgentsAreDevelopmentAndProtected) {
    ProcessSample agent;
    agent.id.pid = 100;
    agent.uid = 1000;
    agent.name = "2.0.14";
    agent.executable = "/home/me/.local/share/claude/versions/2.0.14";
    EXPECT_FALSE(agent.isDevelopment());
    EXPECT_FALSE(StopPlanner::isProtected(agent, 1000, -1));
    agent.arguments = {"claude"};
    EXPECT_TRUE(agent.isDevelopment());
    EXPECT_TRUE(StopPlanner::isProtected(agent, 1000, -1));
    EXPECT_FALSE(StopPlanner::canStopProcess(agent, 1000, -1));
}

TEST(Detector, TakesAnyBytes) {
    const std::vector<std::string> arguments{"", "/", "\xFF\xFE", std::string(3, '\0'),
                                             std::string(100'000, '@')};
    for (const std::string& text : arguments) {
        EXPECT_EQ(Detector::agent(text, text, arguments, text), std::nullopt);
        EXPECT_FALSE(Detector::isDevelopment(text, text, arguments));
        EXPECT_EQ(Detector::framework(arguments, text), std::nullopt);
        EXPECT_FALSE(Detector::isInstalledPluginDirectory(text));
    }
}

} // namespace
} // namespace varnet
