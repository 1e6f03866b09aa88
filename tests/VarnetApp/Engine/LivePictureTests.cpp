// The engine on the running kernel, with real processes, sockets and a real checkout. Only time is a fake.

#include "VarnetApp/Engine/MonitorEngine.h"
#include "probes/SystemProbes.h"
#include "tests/fakes/ChildProcess.h"
#include "tests/fakes/FakeClock.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <memory>
#include <thread>

namespace varnet {
namespace {

namespace fs = std::filesystem;

class LivePictureTest : public testing::Test {
protected:
    LivePictureTest() {
        fs::create_directories(repository());
        std::ofstream(repository() / "package.json") << R"({"name":"shop"})";
        run("git init -q -b main . && git -c user.name=t -c user.email=t@t commit -q --allow-empty -m first "
            "&& "
            "git worktree add -q -b feature/cart ../cart");
        // It listens, says where, and stays.
        std::ofstream(worktree() / "manage.py") << "import socket, time\n"
                                                   "s = socket.create_server(('127.0.0.1', 0))\n"
                                                   "open('port.new', 'w').write(str(s.getsockname()[1]))\n"
                                                   "import os; os.rename('port.new', 'port')\n"
                                                   "time.sleep(60)\n";
        // An agent is told by its executable's name: a shell in its clothes.
        fs::copy_file("/bin/sh", folder_.path() / "claude");
    }

    fs::path repository() const { return folder_.path() / "shop"; }
    fs::path worktree() const { return folder_.path() / "cart"; }

    void run(const std::string& command) const {
        const std::string line = "cd '" + repository().string() + "' && { " + command + "; } >/dev/null 2>&1";
        ASSERT_EQ(std::system(line.c_str()), 0) << command;
    }

    int waitForPort() const {
        for (int tries = 0; tries < 500; ++tries) {
            int port = 0;
            if (std::ifstream(worktree() / "port") >> port) return port;
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        return 0;
    }

    std::unique_ptr<MonitorEngine> engine() {
        return std::make_unique<MonitorEngine>(MonitorEngine::Setup{
            .probes = probes_, .clock = clock_, .storage = folder_.path() / "state", .home = "/nowhere"});
    }

    std::shared_ptr<const MonitorSnapshot> sampleAfter(MonitorEngine& engine, double seconds) {
        clock_.advance(seconds);
        return engine.sample({}, Thermal::nominal, true);
    }

    static const Service* serviceOn(const MonitorSnapshot& snapshot, int port) {
        for (const Service& service : snapshot.services) {
            if (service.ports() == std::vector{port}) return &service;
        }
        return nullptr;
    }

    TemporaryFolder folder_;
    SystemProbes probes_;
    FakeClock clock_;
};

TEST_F(LivePictureTest, serverOutlivesItsAgentAndTheProgram) {
    ChildProcess agent(folder_.path() / "claude", {"claude", "-c", "python3 manage.py & wait"}, worktree());
    const int port = waitForPort();
    ASSERT_GT(port, 0);

    auto monitor = engine();
    auto snapshot = sampleAfter(*monitor, 0);
    const Service* service = serviceOn(*snapshot, port);
    ASSERT_NE(service, nullptr);
    EXPECT_EQ(service->name(), "Django");
    ASSERT_TRUE(service->project());
    EXPECT_EQ(service->project()->root, worktree().string());
    EXPECT_EQ(service->project()->repository, repository().string());
    EXPECT_EQ(service->project()->name, "shop");
    EXPECT_EQ(service->project()->worktree, "feature/cart");
    ASSERT_TRUE(service->root->attribution);
    EXPECT_EQ(service->root->attribution->agent, "Claude Code");
    EXPECT_EQ(service->root->attribution->origin.pid, agent.pid());
    EXPECT_FALSE(service->root->attribution->exitedAt);
    EXPECT_TRUE(service->root->memory.value_or(0) > 0);
    const ProcessIdentity server = service->root->id;

    agent.end(SIGKILL);
    snapshot = sampleAfter(*monitor, 2);
    service = serviceOn(*snapshot, port);
    ASSERT_NE(service, nullptr);
    EXPECT_EQ(service->root->id, server);
    const auto exitedAt = service->root->attribution->exitedAt;
    EXPECT_EQ(exitedAt, snapshot->date);
    sampleAfter(*monitor, 15);
    sampleAfter(*monitor, 14); // saves

    monitor = engine();
    snapshot = sampleAfter(*monitor, 2);
    service = serviceOn(*snapshot, port);
    ASSERT_NE(service, nullptr);
    ASSERT_TRUE(service->root->attribution);
    EXPECT_EQ(service->root->attribution->agent, "Claude Code");
    EXPECT_EQ(service->root->attribution->exitedAt, exitedAt);

    EXPECT_EQ(probes_.signalChecked(server.pid, server.start, probes_.userID(), SIGKILL), 0);
}

TEST_F(LivePictureTest, theProgramItselfIsInThePicture) {
    auto monitor = engine();
    sampleAfter(*monitor, 0);
    const std::clock_t until = std::clock() + CLOCKS_PER_SEC / 50;
    while (std::clock() < until) {
    }
    const auto snapshot = sampleAfter(*monitor, 2);
    EXPECT_FALSE(snapshot->error);
    const auto self =
        std::ranges::find_if(snapshot->processes, [](const SampleRef& p) { return p->id.pid == getpid(); });
    ASSERT_NE(self, snapshot->processes.end());
    EXPECT_EQ((*self)->executable, fs::read_symlink("/proc/self/exe").string());
    EXPECT_GT((*self)->cpu.value_or(0), 0);
    EXPECT_GT((*self)->memory.value_or(0), 100'000U);
    EXPECT_TRUE(snapshot->systemMemory.usedRAM);
    EXPECT_GT(snapshot->physicalMemory, *snapshot->systemMemory.usedRAM);
}

} // namespace
} // namespace varnet
