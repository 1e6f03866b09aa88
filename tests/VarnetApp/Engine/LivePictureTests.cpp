// The engine on the running kernel, with real processes, sockets and a real checkout. Only time is a fake.

#include "VarnetApp/Engine/MonitorEngine.h"
#include "probes/SystemProbes.h"
#include "tests/fakes/ChildProcess.h"
#include "tests/fakes/FakeClock.h"
#include "tests/fakes/GitCheckoutFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <thread>

namespace varnet {
namespace {

/// It listens, says where, and stays.
constexpr const char* serverScript = R"(
import os, socket, time
s = socket.create_server(('127.0.0.1', 0))
open('port.new', 'w').write(str(s.getsockname()[1]))
os.rename('port.new', 'port')
time.sleep(60)
)";

class LivePictureTest : public testing::Test {
protected:
    int waitForPort() const {
        for (int tries = 0; tries < 500; ++tries) {
            int port = 0;
            if (std::ifstream(home_.path("cart/port")) >> port) return port;
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        return 0;
    }

    /// A start of the program.
    void open() {
        engine_ = std::make_unique<MonitorEngine>(MonitorEngine::Setup{
            .probes = probes_, .clock = clock_, .storage = home_.path("state"), .home = "/nowhere"});
    }

    /// The process that serves on a port after so many seconds; null: there is none.
    SampleRef serverOn(int port, double seconds) {
        clock_.advance(seconds);
        const auto snapshot = engine_->sample({}, Thermal::nominal, true);
        const auto service = std::ranges::find_if(
            snapshot->services, [&](const Service& one) { return one.ports() == std::vector{port}; });
        if (service == snapshot->services.end()) return nullptr;
        EXPECT_EQ(service->name(), "Django");
        return service->root;
    }

    GitCheckoutFolder home_;
    SystemProbes probes_;
    FakeClock clock_;
    std::unique_ptr<MonitorEngine> engine_;
};

TEST_F(LivePictureTest, serverOutlivesItsAgentAndTheProgram) {
    home_.makeRepository("shop");
    ASSERT_EQ(home_.shell("shop", "git worktree add -q -b feature/cart ../cart"), 0);
    home_.write("cart/manage.py", serverScript);
    // An agent is told by its executable's name: a shell in its clothes.
    std::filesystem::copy_file("/bin/sh", home_.path("claude"));
    ChildProcess agent(home_.path("claude"), {"claude", "-c", "python3 manage.py & wait"},
                       home_.path("cart"));
    const int port = waitForPort();
    ASSERT_GT(port, 0);

    open();
    const SampleRef first = serverOn(port, 0);
    ASSERT_NE(first, nullptr);
    ASSERT_TRUE(first->project);
    EXPECT_EQ(first->project->root, home_.path("cart"));
    EXPECT_EQ(first->project->repository, home_.path("shop"));
    EXPECT_EQ(first->project->name, "shop");
    EXPECT_EQ(first->project->worktree, "feature/cart");
    ASSERT_TRUE(first->attribution);
    EXPECT_EQ(first->attribution->agent, "Claude Code");
    EXPECT_EQ(first->attribution->origin.pid, agent.pid());
    EXPECT_FALSE(first->attribution->exitedAt);
    EXPECT_TRUE(first->memory.value_or(0) > 0);

    agent.end(SIGKILL);
    const SampleRef orphan = serverOn(port, 2);
    ASSERT_NE(orphan, nullptr);
    EXPECT_EQ(orphan->id, first->id);
    const auto exitedAt = orphan->attribution->exitedAt;
    EXPECT_EQ(exitedAt, clock_.now());
    serverOn(port, 15);
    serverOn(port, 14); // saves

    open();
    const SampleRef remembered = serverOn(port, 2);
    ASSERT_NE(remembered, nullptr);
    ASSERT_TRUE(remembered->attribution);
    EXPECT_EQ(remembered->attribution->agent, "Claude Code");
    EXPECT_EQ(remembered->attribution->exitedAt, exitedAt);

    EXPECT_EQ(probes_.signalChecked(first->id.pid, first->id.start, probes_.userID(), SIGKILL), 0);
}

} // namespace
} // namespace varnet
