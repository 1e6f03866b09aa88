// Whatever a checkout's files hold, paths come out absolute and standardized, and labels are no longer than
// their text.

#include "VarnetCore/Base/LexicalPath.h"
#include "VarnetCore/Base/Utf8.h"
#include "VarnetCore/Monitoring/Detector.h"
#include "VarnetCore/Monitoring/GitCheckout.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/Require.h"

namespace {

using namespace varnet;

void requireStandardized(const std::string& path) {
    require(path.starts_with('/') && (path == "/" || !path.ends_with('/')));
    require(path.find("//") == std::string::npos && (path + '/').find("/./") == std::string::npos);
    require((path + '/').find("/../") == std::string::npos);
    require(LexicalPath::standardized(path) == path);
    require(LexicalPath::parent(path).size() <= path.size());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    requireStandardized(GitCheckout::commonDirectory(text, "/src/repository/.git"));
    if (const auto directory = GitCheckout::gitDirectory(text, "/src/checkout"))
        requireStandardized(*directory);

    const std::string label = GitCheckout::label(text);
    require(label.size() <= std::max<std::size_t>(text.size(), std::string_view("worktree").size()));
    if (isValidUtf8(text)) require(isValidUtf8(label));

    const std::string standardized = LexicalPath::standardized(text);
    require(LexicalPath::standardized(standardized) == standardized);
    Detector::isInstalledPluginDirectory(text);
    return 0;
}
