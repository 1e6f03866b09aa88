#include "VarnetApp/Platform/linux/AutostartEntry.h"
#include "VarnetApp/Platform/linux/DesktopEntry.h"
#include "VarnetApp/Platform/linux/ExecLine.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/Require.h"

/// A .desktop file down to the program that it runs. The first line stands for the locale.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace varnet::platform;
    std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::string_view locale = text.substr(0, text.find('\n'));
    parseExecLine(text);
    parseAutostartEntry(text);
    const std::string program = "/" + std::string(locale) + "/varnet";
    // What is registered must be recognised, whatever the path.
    varnet::require(parseAutostartEntry(autostartEntryText(program)).starts(program));
    const auto entry = parseDesktopEntry(text, localeTags(locale));
    if (!entry) {
        return 0;
    }
    for (const char c : entry->name) {
        varnet::require(static_cast<unsigned char>(c) >= 0x20); // a name is one line
    }
    if (const auto line = parseExecLine(entry->exec)) {
        varnet::require(!line->program.empty());
        runsOtherPrograms(line->program);
    }
    return 0;
}
