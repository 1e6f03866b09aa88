#include "VarnetApp/Diagnostics/CommandLine.h"
#include "VarnetCore/Localization/AppLanguage.h"

#include <initializer_list>

#include "packaging/PackageTexts.h"

namespace varnet {

namespace {

using Takes = CommandLine::Takes;

/// The names of the switches that take one of these, apart by `separator`.
std::string namesTaking(std::initializer_list<Takes> kinds, const char* separator) {
    std::string names;
    for (const CommandLine::Switch& known : CommandLine::knownSwitches()) {
        for (const Takes kind : kinds) {
            if (known.takes != kind) continue;
            if (!names.empty()) names += separator;
            names += known.name;
        }
    }
    return names;
}

std::string everyName() {
    using enum Takes;
    return namesTaking({nothing, seconds, folder, oneFolder, folders, language, name}, " ");
}

} // namespace

std::string PackageTexts::bashCompletion() {
    std::string languages;
    for (const AppLanguage language : appLanguages)
        languages += (languages.empty() ? "" : " ") + std::string(rawValue(language));

    std::string text = "# bash completion for varnet\n"
                       "\n"
                       "_varnet() {\n"
                       "    local cur=${COMP_WORDS[COMP_CWORD]} governing=$COMP_CWORD\n"
                       "    COMPREPLY=()\n"
                       "    # The switch that the word under the cursor may belong to.\n"
                       "    while ((--governing > 0)) && [[ ${COMP_WORDS[governing]} != --* ]]; do :; done\n"
                       "    local distance=$((COMP_CWORD - governing)) kind=''\n"
                       "    ((governing > 0)) && case ${COMP_WORDS[governing]} in\n";
    text += "    " + namesTaking({Takes::folder, Takes::oneFolder}, " | ") + ") kind=folder ;;\n";
    text += "    " + namesTaking({Takes::folders}, " | ") + ") kind=folder distance=1 ;;\n";
    text += "    " + namesTaking({Takes::language}, " | ") + ") kind=language ;;\n";
    text += "    " + namesTaking({Takes::name, Takes::seconds}, " | ") + ") kind=word ;;\n";
    text += "    esac\n"
            "    ((distance == 1)) && [[ $cur != -* ]] && case $kind in\n"
            "    folder)\n"
            "        compopt -o filenames 2>/dev/null\n"
            "        mapfile -t COMPREPLY < <(compgen -d -- \"$cur\")\n"
            "        return\n"
            "        ;;\n"
            "    language)\n"
            "        mapfile -t COMPREPLY < <(compgen -W '" +
            languages +
            "' -- \"$cur\")\n"
            "        return\n"
            "        ;;\n"
            "    word) return ;;\n"
            "    esac\n"
            "    mapfile -t COMPREPLY < <(compgen -W '" +
            everyName() +
            "' -- \"$cur\")\n"
            "}\n"
            "\n"
            "complete -F _varnet varnet\n";
    return text;
}

} // namespace varnet
