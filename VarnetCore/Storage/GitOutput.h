#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What Git prints, read without a look at the disk.
namespace varnet::GitOutput {

/// The folders in the answer of "worktree list --porcelain -z". Byte by byte: a name need not be text to be a
/// folder. What is not absolute, and would depend on where this program was started, is left out.
std::vector<std::string> worktrees(std::string_view output);

/// Digits with or without a sign; empty for anything else.
std::optional<std::int64_t> count(std::string_view text);

} // namespace varnet::GitOutput
