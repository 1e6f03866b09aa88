#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace varnet::platform {

/// Where a process stands in the service manager's tree, out of the text of its `cgroup` file: the manager's
/// own hierarchy of version 1 where there is one, else the unified one.
/// @return a path such as "/user.slice/user-1000.slice/session-2.scope"; empty when no line says
std::optional<std::string> controlGroupPath(std::string_view text);

/// The names along a path, outermost first, with the manager's mark ("_") for names that the kernel keeps for
/// itself removed.
std::vector<std::string_view> controlGroupUnits(std::string_view path);

/// The innermost service or scope that a path leads into; empty when there is none.
std::string_view innermostUnit(std::string_view path);

/// Whether processes at a path belong to the user's sessions, where applications run: a login session, the
/// user's own manager, or a machine without such a manager. A path inside the system's services does not.
bool isInUserSession(std::string_view path);

} // namespace varnet::platform
