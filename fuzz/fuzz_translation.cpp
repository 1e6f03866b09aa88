// A sentence, with names of programs in it, comes out of the program's own catalogue as text and no longer
// than its words explain; behind a NUL follows a catalogue of somebody else.

#include "VarnetCore/Base/Utf8.h"
#include "VarnetCore/Localization/TranslationCatalog.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/Require.h"

using namespace varnet;

namespace {

/// Larger ones may multiply a text by their placeholders: nobody but the program itself brings one.
constexpr std::size_t mostTried = 128;
constexpr std::size_t longestWord = 256; ///< of a translation, for each byte that may call for it

void requireOwn(std::string_view sentence) {
    static const auto catalog = TranslationCatalog::read(VARNET_CATALOG);
    require(catalog.pairs().size() > 100 && catalog.templates().size() > 10);
    require(catalog.text(sentence, AppLanguage::english) == sentence);
    const std::string text = catalog.text(sentence, AppLanguage::czech);
    require(text.empty() == sentence.empty());
    require(text.size() <= sentence.size() * longestWord);
    if (isValidUtf8(sentence)) require(isValidUtf8(text));
}

void requireForeign(std::string_view sentence, std::string_view json) {
    const auto catalog = TranslationCatalog::parse(json);
    for (const auto& [key, value] : catalog.pairs())
        require(catalog.translate(key, 0) == value);
    require(catalog.templates().size() <= catalog.pairs().size());
    require(std::ranges::is_sorted(catalog.templates(), std::ranges::greater(),
                                   &TranslationCatalog::Template::specificity));
    for (const auto& made : catalog.templates())
        require(made.expression && !made.indices.empty() && !made.anchor.empty());
    if (json.size() > mostTried || sentence.size() > mostTried) return;
    const std::string text = catalog.translate(sentence, 0);
    if (isValidUtf8(sentence)) require(isValidUtf8(text));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::string_view sentence = text.substr(0, text.find('\0'));
    requireOwn(sentence);
    if (sentence.size() < text.size()) requireForeign(sentence, text.substr(sentence.size() + 1));
    return 0;
}
