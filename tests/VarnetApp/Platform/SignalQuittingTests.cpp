// Quitting real children of the test that a catalogue calls applications.

#include "VarnetApp/Platform/linux/SignalQuitting.h"
#include "probes/vn_probes.h"
#include "tests/fakes/ChildProcess.h"
#include "tests/fakes/FakeQuitting.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <thread>

namespace varnet::platform {
namespace {

class SignalQuittingTest : public testing::Test {
protected:
    /// A child that stands for an application.
    std::unique_ptr<ChildProcess> start(const std::string& manner = "exec sleep 60") {
        auto child = std::make_unique<ChildProcess>("/bin/sh", std::vector<std::string>{"sh", "-c", manner},
                                                    std::filesystem::temp_directory_path());
        std::uint64_t began = 0;
        std::uint32_t uid = 0;
        EXPECT_EQ(vn_identity(child->pid(), &began, &uid), 0);
        catalog_.running.push_back({"/opt/child.desktop", "child", "Child", child->pid(), began});
        return child;
    }

    static bool ends(QuittableApplication& application) {
        for (int tries = 0; tries < 200 && !application.isTerminated(); ++tries)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        return application.isTerminated();
    }

    FakeCatalog catalog_;
    SignalQuitting quitting_{catalog_};
};

TEST_F(SignalQuittingTest, findsWhatTheCatalogueSaysIfItIsStillThat) {
    const auto child = start();
    ASSERT_TRUE(quitting_.find(child->pid()));
    EXPECT_EQ(quitting_.find(child->pid())->bundlePath(), "/opt/child.desktop");
    EXPECT_FALSE(quitting_.find(1)) << "a process, but no application";
    *catalog_.running[0].processStart += 1;
    EXPECT_FALSE(quitting_.find(child->pid())) << "the pid was given away";
    catalog_.running[0].processStart.reset();
    EXPECT_TRUE(quitting_.find(child->pid())) << "a start that is not known says nothing";
    child->end(SIGKILL);
    EXPECT_FALSE(quitting_.find(catalog_.running[0].pid));
}

TEST_F(SignalQuittingTest, politeEndsThePoliteAndForceTheRest) {
    const auto polite = start();
    const auto application = quitting_.find(polite->pid());
    ASSERT_TRUE(application);
    EXPECT_FALSE(application->isTerminated());
    EXPECT_TRUE(application->terminate());
    EXPECT_TRUE(ends(*application)) << "also before anybody has collected it";
    EXPECT_FALSE(application->terminate());
    EXPECT_FALSE(application->forceTerminate());

    const auto stubborn = start("trap '' TERM; touch /dev/null; while :; do sleep 0.05; done");
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    const auto other = quitting_.find(stubborn->pid());
    ASSERT_TRUE(other);
    EXPECT_TRUE(other->terminate()) << "it was asked";
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_FALSE(other->isTerminated());
    EXPECT_TRUE(other->forceTerminate());
    EXPECT_TRUE(ends(*other));
}

TEST_F(SignalQuittingTest, holdsTheProcessAndNotItsNumber) {
    const auto child = start();
    const auto application = quitting_.find(child->pid());
    ASSERT_TRUE(application);
    child->end(SIGKILL); // collected: the number is free for anybody
    EXPECT_TRUE(application->isTerminated());
    EXPECT_FALSE(application->terminate());
}

} // namespace
} // namespace varnet::platform
