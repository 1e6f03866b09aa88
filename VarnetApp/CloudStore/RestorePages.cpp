#include "VarnetApp/CloudStore/RestorePages.h"

#include "VarnetApp/CloudStore/CloudService.h"
#include "VarnetCore/Base/JsonReading.h"
#include "VarnetCore/Cloud/CloudExport.h"

namespace varnet {

using JsonReading::Json;
using JsonReading::readKey;

std::expected<std::string, CloudServiceError> RestorePages::take(const std::string& body,
                                                                 const std::string& cursor) {
    const auto page = CloudService::objectOf(body);
    if (!page) return std::unexpected(page.error());
    std::string generation;
    std::optional<std::string> next;
    const auto records = page->find("records");
    const bool whole = readKey(*page, "generation", generation) && readKey(*page, "nextCursor", next) &&
                       records != page->end() && records->is_array();
    if (pages_++ == 0) generation_ = generation;
    // An archive that changes under the reading, a page that leads back to itself, a book without end.
    if (!whole || generation != generation_ || (next && !next->empty() && *next == cursor) ||
        pages_ > mostPages)
        return std::unexpected(CloudServiceError::noAnswer());
    for (const Json& record : *records) {
        std::string kind;
        std::string id;
        if (!readKey(record, "kind", kind) || !readKey(record, "id", id)) continue;
        if (kind != "collection" && kind != "day") continue;
        double revision = 0;
        (void)readKey(record, "revision", revision); // without one: in the order they come
        Row& row = rows_[{kind, id}];
        if (revision < row.revision) continue;
        row = {revision, record};
        kept_ += record.dump(-1, ' ', false, Json::error_handler_t::replace).size();
        if (kept_ > mostKept) return std::unexpected(CloudServiceError::noAnswer());
    }
    return next.value_or("");
}

std::optional<FlameArchive> RestorePages::collection() const {
    Json records = Json::array();
    for (const auto& [key, row] : rows_)
        records.push_back(row.record);
    const std::string text = JsonReading::dumped(records);
    auto archive = CloudExport::restoreCollection(text);
    if (archive) archive->days = CloudExport::restoreDays(text).value_or(std::vector<FlameDay>{});
    return archive;
}

} // namespace varnet
