#include "VarnetCore/Monitoring/GitCheckout.h"

#include "VarnetCore/Base/LexicalPath.h"

#include <array>
#include <cstddef>

namespace varnet::GitCheckout {
namespace {

using namespace std::string_view_literals;

/// White space and line breaks of Unicode, each as its UTF-8 bytes.
constexpr std::array whiteSpace{
    " "sv,
    "\t"sv,
    "\n"sv,
    "\v"sv,
    "\f"sv,
    "\r"sv,
    "\xC2\x85"sv,
    "\xC2\xA0"sv,
    "\xE1\x9A\x80"sv,
    "\xE2\x80\x80"sv,
    "\xE2\x80\x81"sv,
    "\xE2\x80\x82"sv,
    "\xE2\x80\x83"sv,
    "\xE2\x80\x84"sv,
    "\xE2\x80\x85"sv,
    "\xE2\x80\x86"sv,
    "\xE2\x80\x87"sv,
    "\xE2\x80\x88"sv,
    "\xE2\x80\x89"sv,
    "\xE2\x80\x8A"sv,
    "\xE2\x80\xA8"sv,
    "\xE2\x80\xA9"sv,
    "\xE2\x80\xAF"sv,
    "\xE2\x81\x9F"sv,
    "\xE3\x80\x80"sv,
};

constexpr std::string_view trimmed(std::string_view text) noexcept {
    for (bool cut = true; cut;) {
        cut = false;
        for (const std::string_view space : whiteSpace) {
            if (text.starts_with(space)) {
                text.remove_prefix(space.size());
                cut = true;
            }
            if (text.ends_with(space)) {
                text.remove_suffix(space.size());
                cut = true;
            }
        }
    }
    return text;
}

/// The first characters of UTF-8 text; never cuts through one.
constexpr std::string_view firstCharacters(std::string_view text, std::size_t count) noexcept {
    std::size_t at = 0;
    for (; at < text.size(); ++at) {
        const bool continues = (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U;
        if (!continues && count-- == 0) break;
    }
    return text.substr(0, at);
}

} // namespace

std::optional<std::string> gitDirectory(std::string_view gitFile, std::string_view checkout) {
    constexpr std::string_view prefix = "gitdir:";
    if (!gitFile.starts_with(prefix)) return std::nullopt;
    return LexicalPath::resolved(trimmed(gitFile.substr(prefix.size())), checkout);
}

std::string commonDirectory(std::string_view commondirFile, std::string_view gitDirectory) {
    return LexicalPath::resolved(trimmed(commondirFile), gitDirectory);
}

std::string label(std::string_view headFile) {
    constexpr std::string_view branchPrefix = "ref: refs/heads/";
    const std::string_view head = trimmed(headFile);
    if (head.starts_with(branchPrefix)) return std::string(head.substr(branchPrefix.size()));
    return head.empty() ? "worktree" : std::string(firstCharacters(head, 8));
}

} // namespace varnet::GitCheckout
