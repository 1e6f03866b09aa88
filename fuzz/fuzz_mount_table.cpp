// At most one mount a line, a good line is found behind whatever nonsense, a folder's name survives whatever
// bytes it holds, and the roots are mounted places, each once.

#include "VarnetCore/Disk/linux/MountTable.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/Require.h"

using namespace varnet;

namespace {

/// As the kernel writes a name.
std::string escaped(std::string_view name) {
    std::string text;
    for (const char byte : name) {
        if (std::string_view(" \t\n\\#").find(byte) == std::string_view::npos) {
            text += byte;
        } else {
            text += {'\\', static_cast<char>('0' + byte / 64), static_cast<char>('0' + byte / 8 % 8),
                     static_cast<char>('0' + byte % 8)};
        }
    }
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto mounts = parseMountTable(text);
    require(static_cast<std::ptrdiff_t>(mounts.size()) <= 1 + std::ranges::count(text, '\n'));

    const auto roots = furtherRoots(mounts, [](const std::string& device) { return device.ends_with('3'); });
    require(std::ranges::is_sorted(roots));
    require(std::ranges::adjacent_find(roots) == roots.end());
    for (const std::string& root : roots) {
        require(root != "/" && !root.starts_with("/media/") && !root.starts_with("/proc/"));
        require(std::ranges::find(mounts, root, &Mount::point) != mounts.end());
    }

    const Mount named{"8:2", "/", "/" + std::string(text), "ext4", "/dev/sda2"};
    const std::string line = "29 1 8:2 / " + escaped(named.point) + " rw shared:1 - ext4 /dev/sda2 rw\n";
    const auto behind = parseMountTable(std::string(text) + "\n" + line);
    require(behind.size() == mounts.size() + 1 && behind.back() == named);
    require(std::equal(mounts.begin(), mounts.end(), behind.begin()));
    return 0;
}
