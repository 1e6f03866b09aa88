#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

/// The flame's voice: nine banks of a hundred one-line jokes, kept word for word, in English only.
namespace varnet::RoastLibrary {

using Bank = std::vector<std::string_view>;

/// Bank by key. Built once; the lines live as long as the program.
const std::map<std::string, Bank, std::less<>>& banks();
/// Lines by topic, for each topic that there is.
const std::map<std::string, Bank, std::less<>>& topics();

/// Key of the bank that a topic draws from; "calm" for a topic that is not known.
std::string_view bankFor(std::string_view topic) noexcept;

/// What stands for the subject in a line.
inline constexpr std::string_view placeholder = "{app}";

} // namespace varnet::RoastLibrary
