#include "VarnetApp/Diagnostics/CommandLine.h"
#include "VarnetCore/Localization/AppLanguage.h"

#include <string_view>

#include "packaging/PackageTexts.h"

namespace varnet {

namespace {

std::string quoted(std::string_view words) {
    std::string text = "'";
    for (const char c : words) {
        if (c == '\'' || c == '\\') text += '\\';
        text += c;
    }
    return text + "'";
}

std::string operand(CommandLine::Takes takes) {
    std::string languages;
    switch (takes) {
    case CommandLine::Takes::nothing:
    case CommandLine::Takes::seconds: // may be left out, and nothing can be offered
        return {};
    case CommandLine::Takes::folder:
        return " -x -a '(__fish_complete_directories)'";
    case CommandLine::Takes::oneFolder:
    case CommandLine::Takes::folders:
        return " -a '(__fish_complete_directories)'";
    case CommandLine::Takes::language:
        for (const AppLanguage language : appLanguages)
            languages += (languages.empty() ? "" : " ") + std::string(rawValue(language));
        return " -x -a " + quoted(languages);
    case CommandLine::Takes::name:
        return " -x";
    }
    return {};
}

} // namespace

std::string PackageTexts::fishCompletion() {
    std::string text = "# fish completion for varnet\n\ncomplete -c varnet -f\n";
    for (const CommandLine::Switch& known : CommandLine::knownSwitches()) {
        text += "complete -c varnet -l " + std::string(known.name.substr(2)) + operand(known.takes) + " -d " +
                quoted(known.help) + "\n";
    }
    return text;
}

} // namespace varnet
