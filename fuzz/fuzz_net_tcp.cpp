#include "probes/linux/ParseSockets.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/Require.h"

using namespace varnet;

/// At most one listener a line, none without a port or a socket; what was there before stays; a good line is
/// found behind whatever nonsense.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const probes::Listener mark{1, 1};
    std::vector<probes::Listener> listeners{mark};
    probes::parseNetTCP(text, listeners);
    require(listeners.front() == mark);
    require(static_cast<std::ptrdiff_t>(listeners.size()) <= 2 + std::ranges::count(text, '\n'));
    require(std::ranges::all_of(listeners,
                                [](const auto& found) { return found.port != 0 && found.inode != 0; }));

    std::vector<probes::Listener> behind{mark};
    probes::parseNetTCP(std::string(text) + "\n  1: 0100007F:0016 00000000:0000 0A 0:0 0:0 0 0 0 77 1\n",
                        behind);
    require(behind.size() == listeners.size() + 1 && behind.back() == probes::Listener{77, 22});
    require(std::equal(listeners.begin(), listeners.end(), behind.begin()));

    if (const auto inode = probes::parseSocketLink(text)) {
        std::string digits = std::to_string(*inode);
        require(text.ends_with(digits + "]"));
    }
    return 0;
}
