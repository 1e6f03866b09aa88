#include "VarnetCore/Monitoring/ProcessTreeNode.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace varnet {
namespace {

SampleRef process(std::int32_t pid, std::int32_t parent, std::uint64_t start) {
    ProcessSample sample;
    sample.id = {1, pid, start};
    sample.parentPID = parent;
    return std::make_shared<const ProcessSample>(std::move(sample));
}

TEST(ProcessTreeNode, AChainLongerThanTheStackIsBuiltAndTakenApart) {
    constexpr std::int32_t length = 100'000;
    std::vector<SampleRef> chain;
    for (std::int32_t pid = 1; pid <= length; ++pid)
        chain.push_back(process(pid, pid - 1, 1));

    std::vector<ProcessTreeNode> roots = ProcessTreeNode::roots(chain);
    ASSERT_EQ(roots.size(), 1U);
    std::int32_t depth = 1;
    for (const ProcessTreeNode* node = &roots.front(); node->children; node = &node->children->front()) {
        ASSERT_EQ(node->children->size(), 1U);
        ++depth;
    }
    EXPECT_EQ(depth, length);
    // Replacing a node takes its subtree apart as well.
    roots.front() = ProcessTreeNode(chain.front());
    EXPECT_FALSE(roots.front().children);
}

TEST(ProcessTreeNode, ALoopOfTheWholeTableShowsEveryProcessOnce) {
    constexpr std::int32_t length = 100'000;
    std::vector<SampleRef> loop;
    for (std::int32_t pid = 1; pid <= length; ++pid)
        loop.push_back(process(pid, pid == 1 ? length : pid - 1, 1));
    const std::vector<ProcessTreeNode> roots = ProcessTreeNode::roots(loop);
    ASSERT_EQ(roots.size(), 1U);
    EXPECT_EQ(roots.front().id().pid, 1);
}

} // namespace
} // namespace varnet
