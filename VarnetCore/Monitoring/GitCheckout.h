#pragma once

#include <optional>
#include <string>
#include <string_view>

/// What the small text files of a Git checkout say. Pure; total over any bytes.
namespace varnet::GitCheckout {

/// Where the contents of a ".git" file point: "gitdir: PATH", seen from the checkout.
/// @return standardized absolute path; empty when the file says something else
std::optional<std::string> gitDirectory(std::string_view gitFile, std::string_view checkout);

/// The directory shared by all worktrees, from the contents of "commondir".
/// @return standardized absolute path
std::string commonDirectory(std::string_view commondirFile, std::string_view gitDirectory);

/// The label of a checkout from the contents of "HEAD": its branch, else the first 8 characters of its
/// commit, else "worktree".
std::string label(std::string_view headFile);

} // namespace varnet::GitCheckout
