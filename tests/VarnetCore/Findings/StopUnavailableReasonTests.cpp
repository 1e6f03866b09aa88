#include "VarnetCore/Findings/StopUnavailableReason.h"
#include "tests/VarnetCore/Findings/SampleMaking.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace varnet {
namespace {

using namespace samples;

constexpr std::int32_t self = 4242;

ApplicationGroup group(GroupKind kind, std::vector<SampleRef> processes = {}, std::int32_t application = 0) {
    ApplicationGroup group;
    group.kind = kind;
    group.processes = std::move(processes);
    if (application > 0) {
        group.application = std::make_shared<const ApplicationDescriptor>(
            ApplicationDescriptor{"/x", "x", "X", application, {}});
    }
    return group;
}

TEST(StopUnavailableReason, AGroupsReasonFollowsItsKind) {
    const SampleRef others = [] {
        ProcessSample sample = process(5);
        sample.uid = 0;
        return shared(sample);
    }();
    ApplicationGroup inProject = group(GroupKind::project);
    inProject.project = project("/w/a");
    ProcessSample root = process(6);
    const Service homeless = server(root);
    root.project = project("/w/a");
    const Service atHome = server(root);

    const std::string system = "System process. macOS needs it, so it can’t be stopped here.";
    const std::string idle = "No running servers to stop in this project. Editors and AI agents stay open.";
    const std::string guarded =
        "This project’s servers belong to protected processes. Stop them from the app that started them.";
    struct Row {
        const char* oddity;
        ApplicationGroup group;
        Service service;
        std::string reason;
    };
    for (const Row& row : {
             Row{"system, whatever it holds", group(GroupKind::system, {others}), homeless, system},
             Row{"a project with a server", inProject, atHome, guarded},
             Row{"a server of no project", inProject, homeless, idle},
             Row{"a group of no project has it", group(GroupKind::project), homeless, guarded},
             Row{"a group of no project has no other", group(GroupKind::project), atHome, idle},
             Row{"this program, before it is missed", group(GroupKind::application, {}, self), homeless,
                 "This is Varnet. To quit it, use Quit in the app menu."},
             Row{"gone", group(GroupKind::unassigned), homeless,
                 "This item is no longer running. Wait for the list to refresh."},
             Row{"its first process speaks", group(GroupKind::unassigned, {others, shared(process(1))}),
                 homeless, "This process belongs to another user. It can’t be stopped from your account."},
         }) {
        EXPECT_EQ(stopUnavailableReason(row.group, std::vector{row.service}, user, self), row.reason)
            << row.oddity;
    }
}

} // namespace
} // namespace varnet
