#include "VarnetCore/Base/Clock.h"
#include "VarnetCore/Storage/StoragePaths.h"
#include "VarnetCore/Storage/StorageScan.h"
#include "VarnetCore/Storage/StorageScanner.h"
#include "probes/fake/FakeProbes.h"
#include "tests/vectors/Operations.h"
#include "tests/vectors/RecordJson.h"
#include "tests/vectors/ScratchTree.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace varnet::vectors {
namespace {

namespace fs = std::filesystem;

StorageBucket readBucket(const std::string& text) {
    const auto* const bucket =
        std::ranges::find_if(allStorageBuckets, [&](StorageBucket each) { return rawValue(each) == text; });
    if (bucket == allStorageBuckets.end()) throw std::runtime_error("unknown bucket " + text);
    return *bucket;
}

std::optional<std::string> readOptionalText(const Json& json, const char* key) {
    return at(json, key).is_null() ? std::nullopt : std::optional(readText(json, key));
}

DiskIdentity readDiskIdentity(const Json& json) {
    return {readInteger<std::int32_t>(json, "device").value_or(0),
            readInteger<std::uint64_t>(json, "inode").value_or(0),
            readInteger<std::uint32_t>(json, "owner").value_or(0)};
}

StorageCandidate readCandidate(const Json& json) {
    StorageCandidate candidate;
    candidate.path = readText(json, "path");
    candidate.projectPath = readText(json, "projectPath");
    if (!at(json, "bucket").is_null()) candidate.bucket = readBucket(readText(json, "bucket"));
    candidate.bytes = readInteger<std::uint64_t>(json, "bytes").value_or(0);
    if (!at(json, "identity").is_null()) candidate.identity = readDiskIdentity(at(json, "identity"));
    return candidate;
}

StorageProject readStorageProject(const Json& json) {
    StorageProject project;
    project.path = readText(json, "path");
    project.source = readText(json, "source");
    project.name = readText(json, "name");
    project.branch = readText(json, "branch");
    project.worktree = readFlag(json, "worktree");
    if (!at(json, "buckets").is_null()) {
        for (const auto& [bucket, bytes] : at(json, "buckets").items())
            project.buckets[readBucket(bucket)] = bytes.get<std::uint64_t>();
    }
    if (!at(json, "candidates").is_null()) {
        for (const Json& candidate : at(json, "candidates"))
            project.candidates.push_back(readCandidate(candidate));
    }
    project.partial = readFlag(json, "partial");
    project.gitSummary = readText(json, "gitSummary");
    project.lastModified = readDate(json, "lastModified");
    project.repository = readOptionalText(json, "repository");
    project.container = readOptionalText(json, "container");
    project.measured = readFlag(json, "measured");
    project.logicalBytes = readInteger<std::uint64_t>(json, "logicalBytes").value_or(0);
    project.entryCount = readInteger<std::uint64_t>(json, "entryCount").value_or(0);
    return project;
}

StorageScan readScan(const Json& json) {
    StorageScan scan;
    for (const Json& project : at(json, "projects"))
        scan.projects.push_back(readStorageProject(project));
    return scan;
}

Json written(const StorageBuckets& buckets) {
    Json json = Json::object();
    for (const auto& [bucket, bytes] : buckets)
        json[std::string(rawValue(bucket))] = bytes;
    return json;
}

Json written(const StorageFamily& family) {
    Json members = Json::array();
    for (const StorageProject& member : family.members)
        members.push_back(member.path);
    return {{"id", family.id},
            {"members", members},
            {"bytes", family.bytes()},
            {"reviewBytes", family.reviewBytes()},
            {"partial", family.partial()},
            {"worktreeCount", family.worktreeCount()},
            {"buckets", written(family.buckets())},
            {"sources", family.sources()},
            {"name", family.name()}};
}

Json families(const Json& input) {
    Json list = Json::array();
    for (const StorageFamily& family : readScan(input).families())
        list.push_back(written(family));
    return list;
}

Json defaults(const Json& input) {
    Json list = Json::array();
    for (const StorageLocation& location : StoragePaths::defaults(readText(input, "home")))
        list.push_back({{"path", location.path}, {"source", location.source}});
    return list;
}

Json container(const Json& input) {
    FakeProbes probes;
    const SystemClock clock;
    const StorageScanner scanner({.token = std::make_shared<StorageCancellation>(),
                                  .probes = probes,
                                  .clock = clock,
                                  .home = readText(input, "home"),
                                  .seconds = {},
                                  .entryLimit = {},
                                  .git = {}});
    return writtenOrNull(scanner.conductorContainer(readText(input, "path")));
}

/// Makes what a vector's "fixture" lists: ["dir", path], ["file", path, {size}], ["symlink", path, target].
void make(const Json& fixture, const fs::path& root) {
    for (const Json& entry : fixture) {
        const fs::path path = root / entry.at(1).get<std::string>();
        const std::string type = entry.at(0);
        fs::create_directories(type == "dir" ? path : path.parent_path());
        if (type == "file") {
            const auto size = entry.size() > 2 ? entry.at(2).value("size", std::size_t{0}) : 0;
            std::ofstream(path, std::ios::binary) << std::string(size, 'x');
        } else if (type == "symlink") {
            fs::create_symlink(entry.at(2).get<std::string>(), path);
        } else if (type != "dir") {
            throw std::runtime_error("unknown entry type: " + type);
        }
    }
}

Json located(const Json& json, const std::string& root) {
    Json result = json;
    if (json.is_string()) {
        std::string text = json.get<std::string>();
        if (text.starts_with("$ROOT")) text.replace(0, std::string("$ROOT").size(), root);
        return text;
    }
    if (json.is_structured()) {
        for (auto& element : result)
            element = located(element, root);
    }
    return result;
}

/// A check whose input and expectation may name a scratch tree's place, "$ROOT".
Check onDisk(std::function<Json(const Json& input)> compute) {
    return [compute = std::move(compute)](const Json& vector) {
        const ScratchTree tree;
        if (vector.contains("fixture")) make(vector["fixture"], tree.path());
        const Json got = compute(located(at(vector, "input"), tree.path()));
        return firstDifference(located(expectationOf(vector), tree.path()), got, {});
    };
}

Json identity(const Json& input) {
    const auto found = DiskIdentity::read(readText(input, "path"));
    if (!found) return nullptr;
    return {{"device", found->device}, {"inode", found->inode}, {"owner", found->owner}};
}

const Room room{
    {"StoragePaths.defaults", answering(defaults)},
    {"StoragePaths.canonical",
     onDisk([](const Json& input) -> Json { return StoragePaths::canonical(readText(input, "path")); })},
    {"StoragePaths.contains", answering([](const Json& input) -> Json {
         return StoragePaths::contains(readText(input, "path"), readText(input, "root"));
     })},
    {"StoragePaths.bucket", answering([](const Json& input) -> Json {
         return std::string(rawValue(StoragePaths::bucket(readText(input, "relativePath"))));
     })},
    {"DiskIdentity.read", onDisk(identity)},
    {"StorageScanner.conductorContainer", answering(container)},
    {"StorageCandidate.relativePath",
     answering([](const Json& input) -> Json { return readCandidate(input).relativePath(); })},
    {"StorageScan.families", answering(families)},
};

} // namespace
} // namespace varnet::vectors
