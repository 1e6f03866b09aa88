#include "VarnetCore/Localization/TranslationCatalog.h"
#include "tests/vectors/Operations.h"
#include "tests/vectors/RecordJson.h"

namespace varnet::vectors {
namespace {

TranslationCatalog catalogOf(const Json& input) {
    return TranslationCatalog::parse(at(input, "catalog").dump());
}

Json text(const Json& input) {
    const AppLanguage language =
        readText(input, "language") == "czech" ? AppLanguage::czech : AppLanguage::english;
    return catalogOf(input).text(readText(input, "text"), language);
}

Json translate(const Json& input) {
    return catalogOf(input).translate(readText(input, "text"), readInteger<int>(input, "depth").value_or(0));
}

Json templates(const Json& input) {
    Json list = Json::array();
    const TranslationCatalog catalog = catalogOf(input);
    for (const TranslationCatalog::Template& made : catalog.templates())
        list.push_back({{"replacement", made.replacement},
                        {"anchor", made.anchor},
                        {"indices", made.indices},
                        {"specificity", made.specificity}});
    return list;
}

const Room room{
    {"TranslationCatalog.text", answering(text)},
    {"TranslationCatalog.translate", answering(translate)},
    {"TranslationCatalog.templates", answering(templates)},
};

} // namespace
} // namespace varnet::vectors
