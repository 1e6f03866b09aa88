#include "VarnetCore/Localization/TranslationCatalog.h"
#include "tests/vectors/Operations.h"

namespace varnet::vectors {

VARNET_RECORD(TranslationCatalog::Template, replacement, anchor, indices, specificity)

namespace {

TranslationCatalog catalogOf(const Json& input) {
    return TranslationCatalog::parse(at(input, "catalog").dump());
}

std::string text(const Json& input) {
    const AppLanguage language =
        readText(input, "language") == "czech" ? AppLanguage::czech : AppLanguage::english;
    return catalogOf(input).text(readText(input, "text"), language);
}

std::string translate(const Json& input) {
    return catalogOf(input).translate(readText(input, "text"), read<int>(input, "depth"));
}

Json templates(const Json& input) {
    return written(catalogOf(input).templates());
}

const Room room{
    {"TranslationCatalog.text", answering(text)},
    {"TranslationCatalog.translate", answering(translate)},
    {"TranslationCatalog.templates", answering(templates)},
};

} // namespace
} // namespace varnet::vectors
