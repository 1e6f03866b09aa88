// What Git prints of worktrees leads to absolute folders only, a record is found behind whatever nonsense,
// and a count is one number.

#include "VarnetCore/Base/Utf8.h"
#include "VarnetCore/Storage/GitOutput.h"
#include "VarnetCore/Storage/StorageGit.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/Require.h"

using namespace varnet;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view output(reinterpret_cast<const char*>(data), size);
    const auto folders = GitOutput::worktrees(output);
    require(static_cast<std::ptrdiff_t>(folders.size()) <= 1 + std::ranges::count(output, '\0'));
    for (const std::string& folder : folders)
        require(folder.starts_with('/') && folder.find('\0') == std::string::npos &&
                output.find("worktree " + folder) != output.npos);
    const std::string more = std::string(output) + '\0' + "worktree /src/one\ntwo";
    const auto again = GitOutput::worktrees(more);
    require(again.size() == folders.size() + 1 && again.back() == "/src/one\ntwo");

    const std::string text = StorageGit::Result{0, std::string(output)}.text();
    require(isValidUtf8(text) && StorageGit::Result({0, text}).text() == text);
    if (const auto count = GitOutput::count(text)) {
        require(GitOutput::count(std::to_string(*count)) == count);
        require(text.find_first_not_of("+-0123456789") == std::string::npos);
    }
    return 0;
}
