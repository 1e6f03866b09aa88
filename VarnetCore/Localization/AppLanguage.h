#pragma once

#include <array>
#include <string_view>

namespace varnet {

/// Languages of the program's texts.
enum class AppLanguage { english, czech };

inline constexpr std::array appLanguages{AppLanguage::english, AppLanguage::czech};

/// "en" or "cs".
constexpr std::string_view rawValue(AppLanguage language) noexcept {
    return language == AppLanguage::czech ? "cs" : "en";
}

/// Anything but "cs" is English.
constexpr AppLanguage appLanguage(std::string_view code) noexcept {
    return code == "cs" ? AppLanguage::czech : AppLanguage::english;
}

/// The locale that dates and figures are written in: "en_US" or "cs_CZ".
constexpr std::string_view localeOf(AppLanguage language) noexcept {
    return language == AppLanguage::czech ? "cs_CZ" : "en_US";
}

} // namespace varnet
