#include "VarnetCore/Localization/TranslationCatalog.h"

#include "VarnetCore/Base/SmallFile.h"

#include <nlohmann/json.hpp>
#include <re2/re2.h>
#include <utf8proc.h>

#include <algorithm>
#include <set>

namespace varnet {

namespace {

constexpr std::size_t mostBytes = 4 << 20;
constexpr std::string_view dot = " · ";

/// "{0}" or "{app}" in a key; in a value also "{0:text}", whose capture is translated itself.
struct Token {
    std::size_t begin = 0; ///< in the text
    std::size_t end = 0;
    std::string name;
    bool translated = false;
};

bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

std::vector<Token> tokensOf(std::string_view text, bool placeholders) {
    std::vector<Token> tokens;
    for (std::size_t begin = 0; (begin = text.find('{', begin)) != std::string_view::npos; ++begin) {
        std::size_t end = begin + 1;
        if (text.substr(end).starts_with("app")) {
            end += 3;
        } else {
            while (end < text.size() && isDigit(text[end]))
                ++end;
        }
        Token token{begin, end, std::string(text.substr(begin + 1, end - begin - 1)), false};
        if (token.name.empty()) continue;
        if (placeholders && text.substr(token.end).starts_with(":text")) {
            token.translated = true;
            token.end += 5;
        }
        if (!text.substr(token.end).starts_with('}')) continue;
        ++token.end;
        begin = token.end - 1;
        tokens.push_back(std::move(token));
    }
    return tokens;
}

std::string escaped(std::string_view literal) {
    std::string result;
    for (const char byte : literal) {
        if (std::string_view("*?+[(){}^$|\\./").find(byte) != std::string_view::npos) result += '\\';
        result += byte;
    }
    return result;
}

std::size_t characters(std::string_view text) {
    return static_cast<std::size_t>(std::ranges::count_if(
        text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80; }));
}

bool hasLetter(std::string_view text) {
    while (!text.empty()) {
        utf8proc_int32_t character = 0;
        const auto length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                             static_cast<utf8proc_ssize_t>(text.size()), &character);
        if (length <= 0) return false;
        const auto category = utf8proc_category(character);
        if (category >= UTF8PROC_CATEGORY_LU && category <= UTF8PROC_CATEGORY_LO) return true;
        text.remove_prefix(static_cast<std::size_t>(length));
    }
    return false;
}

std::optional<TranslationCatalog::Template> templateOf(const std::string& key, const std::string& value) {
    const std::vector<Token> tokens = tokensOf(key, false);
    if (tokens.empty()) return std::nullopt;
    std::set<std::string> used;
    for (const Token& token : tokensOf(value, true))
        used.insert(token.name);

    TranslationCatalog::Template made;
    made.replacement = value;
    made.pattern = "^";
    std::vector<std::string_view> literals;
    std::size_t at = 0;
    for (const Token& token : tokens) {
        literals.push_back(std::string_view(key).substr(at, token.begin - at));
        made.pattern += escaped(literals.back());
        // What the translation drops is a small part of a word, such as the ending of a plural: it must not
        // swallow a sentence.
        made.pattern += used.contains(token.name) ? "(.*?)" : "([A-Za-z]*)";
        made.indices.push_back(token.name);
        at = token.end;
    }
    literals.push_back(std::string_view(key).substr(at));
    made.pattern += escaped(literals.back()) + "$";
    std::size_t longest = 0;
    for (const std::string_view literal : literals) {
        const std::size_t length = characters(literal);
        made.specificity += length;
        if (length > longest) {
            longest = length;
            made.anchor = literal;
        }
    }
    if (!hasLetter(made.anchor)) return std::nullopt;
    RE2::Options options;
    options.set_dot_nl(true);
    options.set_log_errors(false);
    auto expression = std::make_shared<const RE2>(made.pattern, options);
    if (!expression->ok()) return std::nullopt;
    made.expression = std::move(expression);
    return made;
}

/// A count of minutes, as durations say it.
bool isMinutes(std::string_view text) {
    return text.size() > 1 && text.back() == 'm' &&
           std::ranges::all_of(text.substr(0, text.size() - 1), isDigit);
}

} // namespace

TranslationCatalog::TranslationCatalog(Pairs pairs) : pairs_(std::move(pairs)) {
    for (const auto& [key, value] : pairs_)
        if (auto made = templateOf(key, value)) templates_.push_back(std::move(*made));
    std::ranges::stable_sort(templates_, [](const Template& a, const Template& b) {
        return a.specificity != b.specificity ? a.specificity > b.specificity : a.pattern < b.pattern;
    });
}

TranslationCatalog TranslationCatalog::read(const std::filesystem::path& file) {
    return parse(readSmallFile(file.string(), mostBytes).value_or(std::string()));
}

TranslationCatalog TranslationCatalog::parse(std::string_view json) {
    const auto object = nlohmann::json::parse(json, nullptr, false);
    Pairs pairs;
    if (object.is_object()) {
        for (const auto& [key, value] : object.items()) {
            if (!value.is_string()) return TranslationCatalog(Pairs{});
            pairs[key] = value.get<std::string>();
        }
    }
    return TranslationCatalog(std::move(pairs));
}

std::string TranslationCatalog::text(std::string_view english, AppLanguage language) const {
    if (language == AppLanguage::english || english.empty()) return std::string(english);
    return translate(english, 0);
}

std::string TranslationCatalog::translate(std::string_view english, int depth) const {
    if (const auto pair = pairs_.find(english); pair != pairs_.end()) return pair->second;
    if (depth > deepest) return std::string(english);
    if (isMinutes(english)) return std::string(english.substr(0, english.size() - 1)) + " min";
    for (const Template& candidate : templates_) {
        if (english.find(candidate.anchor) == std::string_view::npos) continue;
        std::vector<re2::StringPiece> pieces(candidate.indices.size() + 1);
        const re2::StringPiece whole(english.data(), english.size());
        if (!candidate.expression->Match(whole, 0, english.size(), RE2::ANCHOR_BOTH, pieces.data(),
                                         static_cast<int>(pieces.size())))
            continue;
        std::vector<std::string_view> captures;
        for (std::size_t index = 1; index < pieces.size(); ++index)
            captures.emplace_back(pieces[index].data(), pieces[index].size());
        return filled(candidate, captures, depth);
    }
    for (const std::string_view separator : {std::string_view("\n"), dot})
        if (english.find(separator) != std::string_view::npos)
            return translatedPieces(english, separator, depth);
    return std::string(english);
}

std::string TranslationCatalog::filled(const Template& made, const std::vector<std::string_view>& captures,
                                       int depth) const {
    std::string result;
    std::size_t at = 0;
    for (const Token& token : tokensOf(made.replacement, true)) {
        result += std::string_view(made.replacement).substr(at, token.begin - at);
        at = token.end;
        const auto name = std::ranges::find(made.indices, token.name);
        if (name == made.indices.end()) {
            // The key has no such token: the placeholder stays as it is written.
            result += std::string_view(made.replacement).substr(token.begin, token.end - token.begin);
            continue;
        }
        const std::string_view capture = captures[static_cast<std::size_t>(name - made.indices.begin())];
        if (capture.empty()) continue;
        if (token.translated) {
            result += translate(capture, depth + 1);
        } else {
            result += capture;
        }
    }
    result += std::string_view(made.replacement).substr(at);
    return result;
}

std::string TranslationCatalog::translatedPieces(std::string_view english, std::string_view separator,
                                                 int depth) const {
    std::string result;
    for (std::size_t begin = 0;;) {
        const std::size_t end = english.find(separator, begin);
        result += translate(english.substr(begin, end - begin), depth + 1);
        if (end == std::string_view::npos) return result;
        result += separator;
        begin = end + separator.size();
    }
}

} // namespace varnet
