// Answers of the service, one behind the other with a NUL between: pages lead on or end, what they bring can
// be kept, credentials are what is written of them, and a reason never passes for silence.

#include "VarnetApp/CloudStore/CloudService.h"
#include "VarnetApp/CloudStore/RestorePages.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/Require.h"

using namespace varnet;

namespace {

void requireSmallAnswers(const std::string& body) {
    if (const auto credentials = CloudCredentials::parse(body)) {
        require(CloudCredentials::parse(credentials->json()) == credentials);
        require(CloudCredentials::isMode(credentials->mode));
        require(!credentials->backsUp() || credentials->mode != "off");
    }
    if (const auto error = CloudServiceError::parse(body))
        require(error->isAnswer() && !error->code.empty() && !error->message.empty());
    if (const auto object = CloudService::objectOf(body)) {
        require(object->is_object() && CloudService::objectOf(object->dump()) == object);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view text(reinterpret_cast<const char*>(data), size);
    RestorePages pages;
    std::string cursor;
    bool open = true;
    while (!text.empty()) {
        const std::string body(text.substr(0, text.find('\0')));
        text.remove_prefix(std::min(body.size() + 1, text.size()));
        requireSmallAnswers(body);
        if (!open) continue;
        const auto next = pages.take(body, cursor);
        open = next && !next->empty();
        if (open) {
            require(*next != cursor);
            cursor = *next;
        } else if (next) {
            if (const auto archive = pages.collection()) {
                require(FlameArchive::decode(archive->encode()) == archive);
                require(std::ranges::is_sorted(archive->days, {}, &FlameDay::date));
            }
        }
    }
    return 0;
}
