#include "VarnetCore/Disk/DiskUsageIndex.h"
#include "VarnetCore/Disk/DiskUsageIndexWriter.h"
#include "VarnetCore/Disk/StorageMap.h"
#include "VarnetCore/Disk/StorageTreemap.h"
#include "VarnetCore/Disk/WholeDiskContent.h"
#include "tests/fakes/TemporaryFolder.h"
#include "tests/vectors/Operations.h"
#include "tests/vectors/RecordJson.h"

#include <fmt/printf.h>

#include <algorithm>
#include <cmath>

namespace varnet::vectors {
namespace {

std::optional<std::string> readOptionalText(const Json& object, const char* key) {
    return at(object, key).is_null() ? std::nullopt : std::optional(readText(object, key));
}

Json written(const DiskUsageEntry& entry) {
    return {{"path", entry.path},
            {"name", entry.name},
            {"directory", entry.directory},
            {"bytes", entry.bytes},
            {"partial", entry.partial}};
}

DiskUsageEntry readEntry(const Json& json) {
    return {readText(json, "path"), readText(json, "name"), readFlag(json, "directory"),
            readInteger<std::uint64_t>(json, "bytes").value_or(0), readFlag(json, "partial")};
}

DiskUsageScan readScan(const Json& json) {
    DiskUsageScan scan;
    scan.entriesRead = readInteger<std::uint64_t>(json, "entriesRead").value_or(0);
    scan.unreadable = readInteger<std::int64_t>(json, "unreadable").value_or(0);
    scan.skippedVolumes = readInteger<std::int64_t>(json, "skippedVolumes").value_or(0);
    scan.complete = readFlag(json, "complete");
    scan.stopped = readFlag(json, "stopped");
    scan.failure = readOptionalText(json, "failure");
    return scan;
}

Json written(const DiskUsageScan& scan, const Json& expected) {
    Json json{{"entriesRead", scan.entriesRead},
              {"unreadable", scan.unreadable},
              {"skippedVolumes", scan.skippedVolumes},
              {"complete", scan.complete},
              {"stopped", scan.stopped},
              {"failure", scan.failure ? Json(*scan.failure) : Json()},
              {"bytes", scan.bytes()}};
    const auto entries = [&](std::size_t from, std::size_t count) {
        Json list = Json::array();
        for (std::size_t index = from; index < from + count; ++index)
            list.push_back(written(scan.entries[index]));
        return list;
    };
    const std::size_t count = scan.entries.size();
    if (const Json& summary = at(expected, "entriesSummary"); !summary.is_null()) {
        const std::size_t first = std::min(at(summary, "first").size(), count);
        const std::size_t last = std::min(at(summary, "last").size(), count);
        json["entriesSummary"] = {
            {"count", count}, {"first", entries(0, first)}, {"last", entries(count - last, last)}};
    } else {
        json["entries"] = entries(0, count);
    }
    return json;
}

/// One index and its writer, driven step by step.
class IndexRun {
public:
    Json step(const Json& step) {
        const std::string op = readText(step, "op");
        if (op == "open") return open();
        if (op == "folder") {
            const auto answer = index_->folder(readOptionalText(step, "path"));
            if (!answer) return failure(answer.error());
            return *answer ? written(**answer, at(step, "expect")) : Json();
        }
        if (op == "dump") return dump();
        if (op == "recordMany") return recordMany(step);
        DiskIndexResult<> result;
        if (op == "startRoot") {
            result = writer_->startRoot(readText(step, "path"), readFlag(step, "systemOnly"));
        } else if (op == "record") {
            result = writer_->record(readText(step, "path"), readFlag(step, "directory"),
                                     readInteger<std::uint64_t>(step, "bytes").value_or(0),
                                     readFlag(step, "unreadable"));
            if (result) result = writer_->flush();
        } else if (op == "finishRoot") {
            result = writer_->finishRoot(readFlag(step, "finished"), readFlag(step, "readError"));
        } else if (op == "checkpoint") {
            result = writer_->checkpoint(readScan(at(step, "scan")), readFlag(step, "force"));
        } else {
            throw std::runtime_error("unknown op " + op);
        }
        return result ? Json() : failure(result.error());
    }

private:
    static Json failure(const DiskIndexError& error) { return {{"error", error.code}}; }

    Json open() {
        auto index = DiskUsageIndex::make(folder_.path());
        if (!index) return failure(index.error());
        index_ = *index;
        auto writer = DiskUsageIndexWriter::open(index_->database(), clock_);
        if (!writer) return failure(writer.error());
        writer_.emplace(std::move(*writer));
        return {};
    }

    Json recordMany(const Json& step) {
        const auto from = readInteger<int>(step, "from").value_or(0);
        const auto count = readInteger<int>(step, "count").value_or(0);
        const auto bytes = readInteger<std::uint64_t>(step, "bytes").value_or(0);
        for (int index = from; index < from + count; ++index) {
            const std::uint64_t extra = readFlag(step, "addIndex") ? static_cast<std::uint64_t>(index) : 0;
            const auto result =
                writer_->record(fmt::sprintf(readText(step, "format"), index), readFlag(step, "directory"),
                                bytes + extra, readFlag(step, "unreadable"));
            if (!result) return failure(result.error());
        }
        return {};
    }

    Json dump() {
        auto database = DiskIndexDatabase::open(index_->database(), DiskIndexDatabase::Access::read);
        if (!database) return failure(database.error());
        return {
            {"nodes",
             rows(*database,
                  "SELECT id,parent,name,directory,bytes,unreadable,finished FROM nodes ORDER BY id", {2})},
            {"roots", rows(*database, "SELECT path,node,systemOnly FROM roots ORDER BY node", {0})},
            {"progress",
             rows(*database, "SELECT entries,unreadable,skipped,complete,stopped,failure FROM progress",
                  {5})}};
    }

    static Json rows(const DiskIndexDatabase& database, const char* sql, std::set<int> texts) {
        auto query = DiskIndexStatement::prepare(database, sql);
        const std::string_view text(sql);
        const auto columns = std::ranges::count(text.substr(0, text.find(" FROM")), ',') + 1;
        Json list = Json::array();
        while (query && query->step().value_or(false)) {
            Json row = Json::array();
            for (int column = 0; column < columns; ++column)
                row.push_back(query->isNull(column)    ? Json()
                              : texts.contains(column) ? Json(query->text(column))
                                                       : Json(query->integer(column)));
            list.push_back(row);
        }
        return list;
    }

    TemporaryFolder folder_;
    SystemClock clock_;
    std::shared_ptr<DiskUsageIndex> index_;
    std::optional<DiskUsageIndexWriter> writer_;
};

std::optional<Difference> index(const Json& vector) {
    IndexRun run;
    Json got = Json::array();
    for (const Json& step : at(vector, "steps"))
        got.push_back(run.step(step));
    return firstDifference(expectationOf(vector), got, {});
}

std::optional<Difference> rectangles(const Json& vector) {
    const Json& input = at(vector, "input");
    const Json& area = at(input, "rectangle");
    std::vector<double> weights;
    for (const Json& weight : at(input, "weights"))
        weights.push_back(numberOf(weight).value_or(0));
    const auto number = [](const Json& json, const char* key) { return numberOf(at(json, key)).value_or(0); };
    const MapRectangle within{number(area, "x"), number(area, "y"), number(area, "width"),
                              number(area, "height")};
    const std::vector<MapRectangle> got = StorageTreemap::rectangles(weights, within);
    const Json& expected = expectationOf(vector);
    if (got.size() != expected.size())
        return Difference{"", std::to_string(expected.size()), std::to_string(got.size())};
    const double side = std::max({std::abs(within.width), std::abs(within.height), 1.0});
    for (std::size_t at = 0; at < got.size(); ++at) {
        const MapRectangle want{number(expected[at], "x"), number(expected[at], "y"),
                                number(expected[at], "width"), number(expected[at], "height")};
        const auto near = [&](double a, double b) { return std::abs(a - b) <= 1e-9 * side; };
        const bool empty = want.width == 0 || want.height == 0;
        const bool same = near(want.width, got[at].width) && near(want.height, got[at].height) &&
                          (empty || (near(want.x, got[at].x) && near(want.y, got[at].y)));
        if (!same)
            return Difference{
                "[" + std::to_string(at) + "]", expected[at].dump(),
                fmt::format("{} {} {} {}", got[at].x, got[at].y, got[at].width, got[at].height)};
    }
    return std::nullopt;
}

Json ids(const std::vector<DiskMapNode>& nodes) {
    Json list = Json::array();
    for (const DiskMapNode& node : nodes)
        list.push_back(node.id);
    return list;
}

Json grouping(const Json& input) {
    std::vector<DiskMapNode> nodes;
    for (const Json& json : at(input, "nodes")) {
        DiskMapNode node;
        node.id = readText(json, "id");
        node.title = readText(json, "title");
        node.subtitle = readText(json, "subtitle");
        node.bytes = readInteger<std::uint64_t>(json, "bytes").value_or(0);
        node.partial = readFlag(json, "partial");
        nodes.push_back(std::move(node));
    }
    const StorageMap map = StorageMap::group(std::move(nodes), readFlag(input, "familyOpen"));
    Json result{{"sorted", ids(map.sorted)},
                {"primary", ids(map.primary)},
                {"small", ids(map.small)},
                {"displayed", ids(map.displayed())},
                {"smallNode", Json()}};
    if (map.smallNode)
        result["smallNode"] = {{"id", map.smallNode->id},
                               {"title", map.smallNode->title},
                               {"subtitle", map.smallNode->subtitle},
                               {"symbol", map.smallNode->symbol},
                               {"bytes", map.smallNode->bytes},
                               {"partial", map.smallNode->partial}};
    return result;
}

Json contentNodes(const Json& input) {
    std::vector<DiskUsageEntry> entries;
    for (const Json& json : at(input, "entries"))
        entries.push_back(readEntry(json));
    entries = WholeDiskContent::filtered(entries, readText(input, "search"));
    Json filtered = Json::array();
    for (const DiskUsageEntry& entry : entries)
        filtered.push_back(entry.path);
    Json nodes = Json::array();
    for (const DiskMapNode& node : WholeDiskContent::nodes(entries))
        nodes.push_back({{"id", node.id},
                         {"title", node.title},
                         {"subtitle", node.subtitle},
                         {"bytes", node.bytes},
                         {"partial", node.partial}});
    return {{"filtered", filtered}, {"nodes", nodes}};
}

const Room room{
    {"DiskUsageIndex", index},
    {"StorageTreemap.rectangles", rectangles},
    {"StorageMap.grouping", answering(grouping)},
    {"WholeDiskContent.nodes", answering(contentNodes)},
};

} // namespace
} // namespace varnet::vectors
