#include "VarnetCore/Disk/DiskUsageIndex.h"
#include "VarnetCore/Disk/DiskUsageIndexWriter.h"
#include "VarnetCore/Disk/StorageMap.h"
#include "VarnetCore/Disk/StorageTreemap.h"
#include "VarnetCore/Disk/WholeDiskContent.h"
#include "tests/fakes/TemporaryFolder.h"
#include "tests/vectors/Operations.h"

#include <fmt/printf.h>

#include <algorithm>
#include <cmath>

namespace varnet::vectors {

VARNET_RECORD(DiskUsageEntry, path, name, directory, bytes, partial)
VARNET_RECORD(DiskUsageScan, entriesRead, unreadable, skippedVolumes, complete, stopped, failure, bytes,
              entries)
VARNET_RECORD(MapRectangle, x, y, width, height)
VARNET_RECORD(DiskMapNode, id, title, subtitle, symbol, bytes, partial)

namespace {

/// Where the expectation sums its entries up, so does the answer.
Json writtenAs(const Json& expected, const DiskUsageScan& scan) {
    Json json = written(scan);
    const Json& summary = at(expected, "entriesSummary");
    if (summary.is_null()) return json;
    const std::span entries(scan.entries);
    const std::size_t first = std::min(at(summary, "first").size(), entries.size());
    const std::size_t last = std::min(at(summary, "last").size(), entries.size());
    json["entriesSummary"] = {{"count", entries.size()},
                              {"first", written(entries.first(first))},
                              {"last", written(entries.last(last))}};
    json.erase("entries");
    return json;
}

/// One index and its writer, driven step by step.
class IndexRun {
public:
    Json step(const Json& step) {
        const std::string op = readText(step, "op");
        if (op == "open") return open();
        if (op == "folder") {
            const auto answer = index_->folder(read<std::optional<std::string>>(step, "path"));
            if (!answer) return failure(answer.error());
            return *answer ? writtenAs(at(step, "expect"), **answer) : Json();
        }
        if (op == "dump") return dump();
        if (op == "recordMany") return recordMany(step);
        DiskIndexResult<> result;
        if (op == "startRoot") {
            result = writer_->startRoot(readText(step, "path"), readFlag(step, "systemOnly"));
        } else if (op == "record") {
            result = writer_->record(readText(step, "path"), readFlag(step, "directory"),
                                     read<std::uint64_t>(step, "bytes"), readFlag(step, "unreadable"));
            if (result) result = writer_->flush();
        } else if (op == "finishRoot") {
            result = writer_->finishRoot(readFlag(step, "finished"), readFlag(step, "readError"));
        } else if (op == "checkpoint") {
            result = writer_->checkpoint(read<DiskUsageScan>(step, "scan"), readFlag(step, "force"));
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
        const auto from = read<int>(step, "from");
        const auto count = read<int>(step, "count");
        const auto bytes = read<std::uint64_t>(step, "bytes");
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
    const Json got = mapped(at(vector, "steps"), [&](const Json& step) { return run.step(step); });
    return firstDifference(expectationOf(vector), got, {});
}

std::optional<Difference> rectangles(const Json& vector) {
    const Json& input = at(vector, "input");
    const auto area = read<MapRectangle>(input, "rectangle");
    auto got = StorageTreemap::rectangles(read<std::vector<double>>(input, "weights"), area);
    Json expected = expectationOf(vector);
    // Of an empty one nobody sees where it lies.
    for (std::size_t number = 0; number < std::min(got.size(), expected.size()); ++number) {
        const auto want = read<MapRectangle>(expected[number]);
        if (want.width == 0 || want.height == 0) got[number].x = got[number].y = 0;
        if (want.width == 0 || want.height == 0) expected[number]["x"] = expected[number]["y"] = 0;
    }
    // A share of the side, whatever the number's own size.
    const double side = std::max({std::abs(area.width), std::abs(area.height), 1.0});
    return firstDifference(expected, written(got), {.relative = 0, .absolute = 1e-9 * side});
}

Json ids(const std::vector<DiskMapNode>& nodes) {
    return mapped(nodes, [](const DiskMapNode& node) { return node.id; });
}

Json grouping(const Json& input) {
    const StorageMap map =
        StorageMap::group(read<std::vector<DiskMapNode>>(input, "nodes"), readFlag(input, "familyOpen"));
    return {{"sorted", ids(map.sorted)},
            {"primary", ids(map.primary)},
            {"small", ids(map.small)},
            {"displayed", ids(map.displayed())},
            {"smallNode", written(map.smallNode)}};
}

Json contentNodes(const Json& input) {
    const auto entries = WholeDiskContent::filtered(read<std::vector<DiskUsageEntry>>(input, "entries"),
                                                    readText(input, "search"));
    Json nodes = written(WholeDiskContent::nodes(entries));
    for (Json& node : nodes)
        node.erase("symbol");
    return {{"filtered", mapped(entries, [](const DiskUsageEntry& entry) { return entry.path; })},
            {"nodes", std::move(nodes)}};
}

const Room room{
    {"DiskUsageIndex", index},
    {"StorageTreemap.rectangles", rectangles},
    {"StorageMap.grouping", answering(grouping)},
    {"WholeDiskContent.nodes", answering(contentNodes)},
};

} // namespace
} // namespace varnet::vectors
