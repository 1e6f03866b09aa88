#include "VarnetCore/Monitoring/ProcessTreeNode.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace varnet {
namespace {

/// Each is the parent of the next; the first has the parent given.
std::vector<SampleRef> chain(std::int32_t length, std::int32_t firstParent) {
    std::vector<SampleRef> samples;
    for (std::int32_t pid = 1; pid <= length; ++pid) {
        ProcessSample sample;
        sample.id = {1, pid, 1};
        sample.parentPID = pid == 1 ? firstParent : pid - 1;
        samples.push_back(std::make_shared<const ProcessSample>(std::move(sample)));
    }
    return samples;
}

TEST(ProcessTreeNode, AChainLongerThanTheStackIsBuiltAndTakenApart) {
    constexpr std::int32_t length = 100'000;
    const std::vector<SampleRef> samples = chain(length, 0);
    std::vector<ProcessTreeNode> roots = ProcessTreeNode::roots(samples);
    ASSERT_EQ(roots.size(), 1U);
    std::int32_t depth = 1;
    for (const ProcessTreeNode* node = &roots.front(); node->children; node = &node->children->front()) {
        ASSERT_EQ(node->children->size(), 1U);
        ++depth;
    }
    EXPECT_EQ(depth, length);
    // Replacing a node takes its subtree apart as well.
    roots.front() = ProcessTreeNode(samples.front());
    EXPECT_FALSE(roots.front().children);
}

TEST(ProcessTreeNode, ALoopOfTheWholeTableShowsEveryProcessOnce) {
    const std::vector<ProcessTreeNode> roots = ProcessTreeNode::roots(chain(100'000, 100'000));
    ASSERT_EQ(roots.size(), 1U);
    EXPECT_EQ(roots.front().id().pid, 1);
}

} // namespace
} // namespace varnet
