// Arguments with a NUL between them: what is refused says why, everything taken was given, times are times,
// and a call for help is heard wherever it stands.

#include "VarnetApp/Diagnostics/CommandLine.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "fuzz/Require.h"

using namespace varnet;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view text(reinterpret_cast<const char*>(data), size);
    std::vector<std::string_view> arguments;
    while (!text.empty()) {
        arguments.push_back(text.substr(0, text.find('\0')));
        text.remove_prefix(std::min(arguments.back().size() + 1, text.size()));
    }
    using Action = CommandLine::Action;
    const CommandLine line = CommandLine::parse(arguments);
    require((line.action == Action::refuse) == !line.refusal.empty());
    require(std::isfinite(line.seconds) && line.seconds > 0);
    const auto given = [&](std::string_view value) {
        return value.empty() || std::ranges::find(arguments, value) != arguments.end();
    };
    require(given(line.folder) && given(line.language) && given(line.only));
    require(std::ranges::all_of(line.folders, given));
    require(!line.showWindow || given("--show-window"));
    require(line.action != Action::diskDiagnose || line.folders.size() <= 1 || given("--storage-diagnose"));
    if (arguments.empty()) require(line.action == Action::start);

    for (const std::size_t at : {std::size_t{0}, arguments.size()}) {
        std::vector<std::string_view> asking(arguments);
        asking.insert(asking.begin() + static_cast<std::ptrdiff_t>(at), "--help");
        const Action action = CommandLine::parse(asking).action;
        require(action == Action::help || line.action == Action::refuse);
    }
    return 0;
}
