#include "VarnetCore/Findings/StopUnavailableReason.h"
#include "tests/VarnetCore/Findings/SampleMaking.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace varnet {
namespace {

using namespace samples;

constexpr std::int32_t self = 4242;

TEST(StopUnavailableReason, OfGroupsThatLackWhatTheyAreNamedAfter) {
    ApplicationGroup inProject;
    inProject.kind = GroupKind::project;
    ApplicationGroup ofNoProject = inProject;
    inProject.project = project("/w/a");
    ApplicationGroup itself;
    itself.kind = GroupKind::application;
    itself.application =
        std::make_shared<const ApplicationDescriptor>(ApplicationDescriptor{"/x", "x", "X", self, {}});
    ProcessSample root = process(6);
    const Service homeless = server(root);
    root.project = project("/w/a");
    const Service atHome = server(root);

    const std::string idle = "No running servers to stop in this project. Editors and AI agents stay open.";
    const std::string guarded =
        "This project’s servers belong to protected processes. Stop them from the app that started them.";
    const auto reason = [](const ApplicationGroup& group, const Service& service) {
        return stopUnavailableReason(group, std::vector{service}, user, self);
    };
    EXPECT_EQ(reason(inProject, homeless), idle);
    EXPECT_EQ(reason(ofNoProject, homeless), guarded) << "a server of no project is in the group of none";
    EXPECT_EQ(reason(ofNoProject, atHome), idle);
    EXPECT_EQ(reason(itself, homeless), "This is Varnet. To quit it, use Quit in the app menu.")
        << "before its processes are missed";
}

} // namespace
} // namespace varnet
