#include "VarnetApp/Diagnostics/CommandLine.h"
#include "VarnetCore/Localization/AppLanguage.h"

#include <string_view>

#include "packaging/PackageTexts.h"

namespace varnet {

namespace {

/// Safe in the brackets of a description, within single quotes.
std::string described(std::string_view words) {
    std::string text;
    for (const char c : words) {
        if (c == '\'') {
            text += "'\\''";
            continue;
        }
        if (c == '[' || c == ']' || c == ':' || c == '\\') text += '\\';
        text += c;
    }
    return text;
}

/// What follows a switch, as _arguments writes it.
std::string operand(CommandLine::Takes takes) {
    std::string languages;
    switch (takes) {
    case CommandLine::Takes::nothing:
        return {};
    case CommandLine::Takes::seconds:
        return "::seconds: ";
    case CommandLine::Takes::folder:
        return ":folder:_files -/";
    case CommandLine::Takes::oneFolder:
        return "::folder:_files -/";
    case CommandLine::Takes::folders:
        return ":*-*:folder:_files -/"; // up to the next switch
    case CommandLine::Takes::language:
        for (const AppLanguage language : appLanguages)
            languages += (languages.empty() ? "" : " ") + std::string(rawValue(language));
        return ":language:(" + languages + ")";
    case CommandLine::Takes::name:
        return ":beginning of a name: ";
    }
    return {};
}

} // namespace

std::string PackageTexts::zshCompletion() {
    std::string text = "#compdef varnet\n\n_arguments";
    for (const CommandLine::Switch& known : CommandLine::knownSwitches()) {
        text += " \\\n    '" + std::string(known.name) + "[" + described(known.help) + "]" +
                operand(known.takes) + "'";
    }
    return text + "\n";
}

} // namespace varnet
