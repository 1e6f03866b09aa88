// Repaired bytes are text and text is not repaired; folding and composing keep text text, and neither capital
// letters of plain alphabets nor a second pass make a difference.

#include "VarnetCore/Base/Utf8.h"
#include "VarnetCore/Base/Uuid.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/Require.h"

using namespace varnet;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::string repaired = repairedUtf8(bytes);
    require(isValidUtf8(repaired) && repaired.size() <= 3 * bytes.size());
    require((repaired == bytes) == isValidUtf8(bytes));
    if (!isValidUtf8(bytes)) {
        require(composedUtf8(bytes) == bytes);
        (void)caseFoldedUtf8(bytes);
    }

    const std::string composed = composedUtf8(repaired);
    require(isValidUtf8(composed) && composedUtf8(composed) == composed);
    std::string capital = repaired;
    std::string small = repaired;
    for (std::size_t at = 0; at < repaired.size(); ++at) {
        const char byte = repaired[at];
        if (byte >= 'a' && byte <= 'z') capital[at] = static_cast<char>(byte - 'a' + 'A');
        if (byte >= 'A' && byte <= 'Z') small[at] = static_cast<char>(byte - 'A' + 'a');
    }
    const std::string folded = caseFoldedUtf8(repaired);
    require(isValidUtf8(folded) && folded == caseFoldedUtf8(capital) && folded == caseFoldedUtf8(small));

    if (const auto uuid = Uuid::fromText(bytes)) require(Uuid::fromText(uuid->text()) == uuid);
    return 0;
}
