#include "VarnetCore/Cloud/CloudAppCollector.h"
#include "VarnetCore/Cloud/CloudExport.h"
#include "VarnetCore/Cloud/CloudOutbox.h"
#include "tests/fakes/FakeClock.h"
#include "tests/fakes/TemporaryFolder.h"
#include "tests/vectors/Operations.h"

#include <algorithm>
#include <map>

namespace varnet::vectors {

VARNET_RECORD(CloudItem, kind, id, at, data, aggregationKey)

namespace {

/// A payload may be written in full: {prefix, fill, count, suffix}.
std::string readData(const Json& json) {
    if (json.is_string()) return json.get<std::string>();
    std::string text = readText(json, "prefix");
    for (std::size_t at = 0; at < read<std::size_t>(json, "count"); ++at)
        text += readText(json, "fill");
    return text + readText(json, "suffix");
}

std::vector<CloudItem> readItems(Json list) {
    for (Json& json : list)
        json["data"] = readData(json["data"]);
    return read<std::vector<CloudItem>>(list);
}

/// One queue and what it gave out by name.
class OutboxRun {
public:
    OutboxRun() { reopen(); }

    void step(const Json& step) {
        const std::string op = readText(step, "op");
        const std::string scope = readText(step, "scope");
        if (op == "capture") {
            require(outbox_->capture(readItems(at(step, "items")), scope).has_value(), "capture");
        } else if (op == "batch") {
            batches_[readText(step, "as")] = outbox_->batch(scope).value();
            checkBatch(batches_[readText(step, "as")], at(step, "expect"));
        } else if (op == "acknowledge") {
            require(outbox_->acknowledge(batches_.at(readText(step, "batch")), scope).has_value(),
                    "acknowledge");
        } else if (op == "discard") {
            require(outbox_->discard(scope).has_value(), "discard");
        } else if (op == "reopen") {
            outbox_.reset();
            reopen();
        } else {
            throw std::runtime_error("unknown op " + op);
        }
        if (!at(step, "tables").is_null()) checkTables(at(step, "tables"));
    }

private:
    static void require(bool holds, const std::string& what) {
        if (!holds) throw std::runtime_error(what);
    }

    static void requireSame(const Json& expected, const Json& got) {
        if (const auto difference = firstDifference(expected, got, {}))
            throw std::runtime_error(difference->path + ": expected " + difference->expected + ", got " +
                                     difference->got);
    }

    void reopen() { outbox_ = CloudOutbox::open(folder_.path() / "cloud/outbox.sqlite", clock_).value(); }

    static void checkBatch(const CloudBatch& batch, const Json& expected) {
        Json got = Json::parse(batch.data);
        require(got.size() == batch.acknowledgements.size(), "as many acknowledgements as records");
        require(got.size() == read<std::size_t>(expected, "count"),
                "a batch of " + std::to_string(got.size()));
        if (at(expected, "partOfDirty").is_boolean() || at(expected, "itemsAnyOrder").is_null()) return;
        const auto keyed = [](const Json& list) {
            std::map<std::string, Json> items;
            for (Json item : list) {
                item.erase("revision");
                if (item.contains("data") && item["data"].is_object() && item["data"].contains("fill"))
                    item["data"] = Json::parse(readData(item["data"]));
                items[item.at("kind").get<std::string>() + "/" + item.at("id").get<std::string>()] = item;
            }
            return Json(items);
        };
        requireSame(keyed(at(expected, "itemsAnyOrder")), keyed(got));
    }

    void checkTables(const Json& expected) {
        auto database = SqliteDatabase::open((folder_.path() / "cloud/outbox.sqlite").string(),
                                             SqliteDatabase::Access::read);
        auto query = SqliteStatement::prepare(
            *database, "SELECT scope,kind,id,at,dirty,revision,payload FROM items ORDER BY scope,kind,id");
        std::map<std::string, Json> got;
        std::map<std::string, std::int64_t> revisions;
        while (query->step().value()) {
            const std::string key = query->text(0) + "/" + query->text(1) + "/" + query->text(2);
            got[key] = {{"scope", query->text(0)}, {"kind", query->text(1)},     {"id", query->text(2)},
                        {"at", query->real(3)},    {"dirty", query->integer(4)}, {"payload", query->text(6)}};
            revisions[key] = query->integer(5);
        }
        if (const auto count = read<std::optional<std::size_t>>(expected, "itemCount")) {
            const auto dirty = std::ranges::count_if(
                got, [](const auto& row) { return row.second.at("dirty").template get<int>() == 1; });
            require(got.size() == *count && dirty == read<std::optional<long>>(expected, "dirtyCount"),
                    std::to_string(got.size()) + " items, " + std::to_string(dirty) + " of them dirty");
            return;
        }
        require(got.size() == at(expected, "items").size(), std::to_string(got.size()) + " items");
        for (Json row : at(expected, "items")) {
            const std::string key =
                readText(row, "scope") + "/" + readText(row, "kind") + "/" + readText(row, "id");
            require(got.contains(key), "no row " + key);
            const auto before = revisions_.find(key);
            const std::string moved = before == revisions_.end()            ? "new"
                                      : revisions.at(key) == before->second ? "same"
                                      : revisions.at(key) > before->second  ? "up"
                                                                            : "down";
            require(moved == readText(row, "revision"), key + ": revision is " + moved);
            row.erase("revision");
            Json& mine = got[key];
            if (row.contains("payloadJSON")) {
                row["payload"] = row["payloadJSON"];
                row.erase("payloadJSON");
                mine["payload"] = Json::parse(mine["payload"].get<std::string>());
            } else {
                row["payload"] = readData(row["payload"]);
            }
            requireSame(row, mine);
        }
        revisions_ = revisions;
        auto windows =
            SqliteStatement::prepare(*database, "SELECT scope,id,at FROM app_windows ORDER BY scope,id");
        Json list = Json::array();
        while (windows->step().value())
            list.push_back({windows->text(0), windows->text(1), windows->real(2)});
        Json wanted = at(expected, "app_windows");
        std::sort(wanted.begin(), wanted.end());
        std::sort(list.begin(), list.end());
        requireSame(wanted, list);
    }

    TemporaryFolder folder_;
    FakeClock clock_{Date::fromUnix(1780000000)};
    std::unique_ptr<CloudOutbox> outbox_;
    std::map<std::string, CloudBatch> batches_;
    std::map<std::string, std::int64_t> revisions_;
};

std::optional<Difference> outbox(const Json& vector) {
    OutboxRun run;
    return eachStep(at(vector, "steps"), [&](const Json& step) -> std::optional<Difference> {
        try {
            run.step(step);
        } catch (const std::exception& error) {
            return Difference{"", "as written", error.what()};
        }
        return std::nullopt;
    });
}

std::optional<Difference> openOutbox(const Json& vector) {
    const TemporaryFolder folder;
    for (const Json& entry : at(vector, "fixture"))
        folder.write(entry.at(1).get<std::string>(), readText(entry.at(2), "text"));
    const SystemClock clock;
    const auto opened = CloudOutbox::open(folder.path() / "cloud/outbox.sqlite", clock);
    Json got;
    if (!opened)
        got = {{"error", opened.error() == CloudStorageError::fileReadCorruptFile ? "fileReadCorruptFile"
                                                                                  : "fileWriteUnknown"}};
    return firstDifference(expectationOf(vector), got, {});
}

BatteryArchive readBattery(const Json& json) {
    // Sparse lists: what the file's reader wants and the vectors leave out.
    Json whole = json;
    for (Json& session : whole["sessions"])
        session["apps"] = Json::object();
    return BatteryArchive::decode(whole.dump()).value();
}

Json payload(const CloudItem& item) {
    Json json = written(item);
    json["payload"] = Json::parse(item.data);
    json.erase("data");
    return json;
}

std::optional<Difference> archive(const Json& vector) {
    const Json& input = at(vector, "input");
    const auto collection = FlameArchive::decode(at(input, "collection").dump());
    const auto items =
        CloudExport::archive(collection.value(), readBattery(at(input, "battery")),
                             read<std::optional<Date>>(input, "since"), readDate(input, "now"));
    Json got = Json::array();
    std::map<std::string, int> ids;
    Json expected = expectationOf(vector);
    for (const CloudItem& item : items.value()) {
        Json json = payload(item);
        const std::size_t index = got.size();
        if (index < expected.size() && at(expected[index], "id").is_object()) {
            const bool digest =
                item.id.size() == 64 && item.id.find_first_not_of("0123456789abcdef") == std::string::npos;
            if (!digest || ++ids[item.id] > 1) return Difference{"id", "64 digits, distinct", item.id};
            json["id"] = expected[index]["id"];
        }
        got.push_back(json);
    }
    return firstDifference(expected, got, {});
}

std::optional<Difference> observe(const Json& vector) {
    CloudAppCollector collector(readText(vector, "aggregationKey"));
    return eachStep(at(vector, "steps"), [&](const Json& step) -> std::optional<Difference> {
        Json input = at(step, "input");
        // A group's figures are those of its only process.
        for (Json& group : input["groups"]) {
            const auto memory = read<std::optional<double>>(group, "memory");
            Json process{{"cpu", at(group, "cpu")}, {"averageCPU", at(group, "cpu")}};
            if (memory) process["memory"] = static_cast<std::uint64_t>(*memory);
            group["processes"] = Json::array({process});
        }
        std::vector<CloudItem> items = collector.observe(read<MonitorSnapshot>(input));
        Json expected = at(step, "expectAnyOrder");
        if (items.size() != expected.size())
            return Difference{"", std::to_string(expected.size()), std::to_string(items.size())};
        for (const Json& want : expected) {
            const auto found = std::ranges::find_if(items, [&](const CloudItem& item) {
                return Json::parse(item.data)["name"] == want["payload"]["name"];
            });
            if (found == items.end()) return Difference{"", want.dump(), "none"};
            Json got = Json::parse(found->data);
            for (const char* free : {"appID", "category", "version"})
                got.erase(free);
            if (auto difference = firstDifference(want["payload"], got, {})) return difference;
            const bool inWindow = found->at >= want["atWindow"][0].get<double>() &&
                                  found->at <= want["atWindow"][1].get<double>();
            if (!inWindow || !found->id.starts_with(readText(want, "idPrefix")) ||
                found->aggregationKey != readText(want, "aggregationKey"))
                return Difference{"", want.dump(), payload(*found).dump()};
            items.erase(found);
        }
        return std::nullopt;
    });
}

std::string name(const Json& input) {
    return CloudExport::name(readText(input, "path"));
}

const Room room{
    {"CloudOutbox", outbox},
    {"CloudOutbox.open", openOutbox},
    {"CloudExport.name", answering(name)},
    {"CloudExport.archive", archive},
    {"CloudAppCollector.observe", observe},
};

} // namespace
} // namespace varnet::vectors
