#include "VarnetApp/Platform/linux/AutostartEntry.h"

#include "VarnetApp/Platform/linux/DesktopEntryText.h"
#include "VarnetApp/Platform/linux/ExecLine.h"

namespace varnet::platform {

namespace {

constexpr std::string_view quietly = " --login";

/// One word of a command line: quoted for the launcher, which also reads percent signs.
std::string quotedWord(std::string_view word) {
    std::string result = "\"";
    for (const char c : word) {
        if (c == '"' || c == '`' || c == '$' || c == '\\') {
            result.push_back('\\');
        } else if (c == '%') {
            result.push_back('%');
        }
        result.push_back(c);
    }
    result.push_back('"');
    return result;
}

} // namespace

bool AutostartEntry::starts(const std::string& executable) const {
    const auto line = parseExecLine(exec);
    return line && line->program == executable && exec.find(quietly) != std::string::npos;
}

AutostartEntry parseAutostartEntry(std::string_view text) {
    AutostartEntry entry;
    bool hidden = false;
    bool off = false;
    forEachDesktopKey(text, [&](std::string_view key, std::string_view value) {
        if (key == "Exec") {
            entry.exec = unescapedDesktopText(value);
        } else if (key == "Hidden") {
            hidden = isTrueInDesktopEntry(value);
        } else if (key == "X-GNOME-Autostart-enabled") {
            off = !isTrueInDesktopEntry(value);
        }
    });
    entry.masked = hidden || off;
    return entry;
}

std::string autostartEntryText(std::string_view executable) {
    std::string text = "[Desktop Entry]\n"
                       "Type=Application\n"
                       "Name=Varnet\n"
                       "Icon=com.varnet.Varnet\n"
                       "Terminal=false\n"
                       "StartupNotify=false\n"
                       "X-GNOME-Autostart-enabled=true\n";
    // A program that has been removed is passed over in silence.
    text += "TryExec=" + escapedDesktopText(executable) + "\n";
    text += "Exec=" + escapedDesktopText(quotedWord(executable)) + std::string(quietly) + "\n";
    return text;
}

} // namespace varnet::platform
