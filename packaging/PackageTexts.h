#pragma once

#include <string>

/// Texts that tell of the program's switches, for a manual and for shells. All of them follow
/// `CommandLine::knownSwitches`.
namespace varnet::PackageTexts {

/// Of bash-completion's kind, to be called "varnet".
std::string bashCompletion();
/// A function of zsh, to be called "_varnet".
std::string zshCompletion();
/// To be called "varnet.fish".
std::string fishCompletion();
/// The entries of the manual page's OPTIONS section.
std::string manualOptions();

} // namespace varnet::PackageTexts
