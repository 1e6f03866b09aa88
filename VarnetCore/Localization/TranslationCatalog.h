#pragma once

#include "VarnetCore/Localization/AppLanguage.h"

#include <cstddef>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace re2 {
class RE2;
}

namespace varnet {

/// Pairs of English and Czech texts. A sentence is translated whole, or by a pair with tokens such as
/// "{0} stopped", which recognises sentences that were put together while the program ran. Never changes; may
/// be read from several threads at once.
class TranslationCatalog {
public:
    /// Texts by their English originals.
    using Pairs = std::map<std::string, std::string, std::less<>>;

    /// A pair with tokens.
    struct Template {
        std::string pattern; ///< regular expression of the whole sentence
        std::string replacement;
        std::string anchor;               ///< the longest text of it that always is in the sentence
        std::vector<std::string> indices; ///< names of the tokens, in order; "app" or a number
        std::size_t specificity = 0;      ///< characters that are not tokens
        std::shared_ptr<const re2::RE2> expression;
    };

    explicit TranslationCatalog(Pairs pairs);

    /// One flat JSON object of texts. A file that is missing or is none gives an empty catalogue.
    static TranslationCatalog read(const std::filesystem::path& file);
    static TranslationCatalog parse(std::string_view json);

    /// The text in a language; one that is not known stays as it is.
    std::string text(std::string_view english, AppLanguage language) const;
    /// The same for a piece of a text that was taken apart so often already.
    std::string translate(std::string_view english, int depth) const;

    const Pairs& pairs() const noexcept { return pairs_; }
    /// In the order in which they are tried: the one that says most first.
    const std::vector<Template>& templates() const noexcept { return templates_; }

private:
    /// Pieces of pieces of pieces: deeper a text is left as it is.
    static constexpr int deepest = 3;

    std::string filled(const Template& made, const std::vector<std::string_view>& captures, int depth) const;
    std::string translatedPieces(std::string_view english, std::string_view separator, int depth) const;

    Pairs pairs_;
    std::vector<Template> templates_;
};

} // namespace varnet
