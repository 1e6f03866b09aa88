#include "VarnetApp/Diagnostics/CommandLine.h"

#include <string_view>

#include "packaging/PackageTexts.h"

namespace varnet {

namespace {

/// Plain words for troff: hyphens of switches stay hyphens that can be copied.
std::string escaped(std::string_view words) {
    std::string text;
    for (const char c : words) {
        if (c == '\\') {
            text += "\\e";
        } else if (c == '-') {
            text += "\\-";
        } else {
            text += c;
        }
    }
    return text;
}

/// The operand in italics, what may be left out in brackets.
std::string operand(std::string_view words) {
    if (words.empty()) return {};
    const bool optional = words.starts_with('[');
    std::string_view name = optional ? words.substr(1, words.size() - 2) : words;
    const bool several = name.ends_with("...");
    if (several) name.remove_suffix(3);
    std::string text = optional ? " [" : " ";
    text += "\\fI" + escaped(name) + "\\fR";
    if (several) text += "...";
    return optional ? text + "]" : text;
}

} // namespace

std::string PackageTexts::manualOptions() {
    std::string text;
    for (const CommandLine::Switch& known : CommandLine::knownSwitches()) {
        text += ".TP\n\\fB" + escaped(known.name) + "\\fR" + operand(known.operand()) + "\n";
        std::string sentence = escaped(known.help);
        if (sentence.front() >= 'a' && sentence.front() <= 'z')
            sentence.front() = static_cast<char>(sentence.front() - ('a' - 'A'));
        text += sentence + ".\n";
    }
    return text;
}

} // namespace varnet
