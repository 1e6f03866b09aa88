#include "VarnetCore/Base/Clock.h"
#include "VarnetCore/Storage/StoragePaths.h"
#include "VarnetCore/Storage/StorageScan.h"
#include "VarnetCore/Storage/StorageScanner.h"
#include "probes/fake/FakeProbes.h"
#include "tests/vectors/Operations.h"
#include "tests/vectors/ScratchTree.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace varnet::vectors {

/// By name: it is also the key of a project's sums.
template <>
struct Fields<StorageBucket> {
    static void read(StorageBucket& bucket, const Json& json) {
        const auto* const found = std::ranges::find_if(
            allStorageBuckets, [&](StorageBucket each) { return json == rawValue(each); });
        if (found == allStorageBuckets.end()) throw std::runtime_error("unknown bucket " + json.dump());
        bucket = *found;
    }
    static Json write(StorageBucket bucket) { return rawValue(bucket); }
};

template <>
struct Fields<StorageBuckets> {
    static void read(StorageBuckets& buckets, const Json& json) {
        for (const auto& [bucket, bytes] : json.items())
            buckets[vectors::read<StorageBucket>(bucket)] = bytes.get<std::uint64_t>();
    }
    static Json write(const StorageBuckets& buckets) {
        Json json = Json::object();
        for (const auto& [bucket, bytes] : buckets)
            json[std::string(rawValue(bucket))] = bytes;
        return json;
    }
};

VARNET_RECORD(DiskIdentity, device, inode, owner)
VARNET_RECORD(StorageCandidate, path, projectPath, bucket, bytes, identity)
VARNET_RECORD(StorageProject, path, source, name, branch, worktree, buckets, candidates, partial, gitSummary,
              lastModified, repository, container, measured, logicalBytes, entryCount)
VARNET_RECORD(StorageScan, projects)
VARNET_RECORD(StorageLocation, path, source)

template <>
inline void makeSparse(StorageProject& project) {
    project.partial = false;
}

namespace {

Json family(const StorageFamily& family) {
    return {{"id", family.id},
            {"members", mapped(family.members, [](const StorageProject& member) { return member.path; })},
            {"bytes", family.bytes()},
            {"reviewBytes", family.reviewBytes()},
            {"partial", family.partial()},
            {"worktreeCount", family.worktreeCount()},
            {"buckets", written(family.buckets())},
            {"sources", family.sources()},
            {"name", family.name()}};
}

Json families(const Json& input) {
    return mapped(read<StorageScan>(input).families(), family);
}

auto defaults(const Json& input) {
    return StoragePaths::defaults(readText(input, "home"));
}

auto container(const Json& input) {
    FakeProbes probes;
    const SystemClock clock;
    const StorageScanner scanner({.token = std::make_shared<StorageCancellation>(),
                                  .probes = probes,
                                  .clock = clock,
                                  .home = readText(input, "home"),
                                  .seconds = {},
                                  .entryLimit = {},
                                  .git = {}});
    return scanner.conductorContainer(readText(input, "path"));
}

/// Makes what a vector's "fixture" lists: ["dir", path], ["file", path, {size}], ["symlink", path, target].
void make(const Json& fixture, const std::filesystem::path& root) {
    for (const Json& entry : fixture) {
        const std::filesystem::path path = root / entry.at(1).get<std::string>();
        const std::string type = entry.at(0);
        std::filesystem::create_directories(type == "dir" ? path : path.parent_path());
        if (type == "file") {
            const auto size = entry.size() > 2 ? entry.at(2).value("size", std::size_t{0}) : 0;
            std::ofstream(path, std::ios::binary) << std::string(size, 'x');
        } else if (type == "symlink") {
            std::filesystem::create_symlink(entry.at(2).get<std::string>(), path);
        } else if (type != "dir") {
            throw std::runtime_error("unknown entry type: " + type);
        }
    }
}

/// A check whose input and expectation may name a scratch tree's place, "$ROOT".
Check onDisk(std::function<Json(const Json& input)> compute) {
    return [compute = std::move(compute)](const Json& vector) {
        const ScratchTree tree("$ROOT");
        make(at(vector, "fixture"), tree.path());
        const Json got = compute(tree.located(at(vector, "input")));
        return firstDifference(tree.located(expectationOf(vector)), got, {});
    };
}

const Room room{
    {"StoragePaths.defaults", answering(defaults)},
    {"StoragePaths.canonical",
     onDisk([](const Json& input) -> Json { return StoragePaths::canonical(readText(input, "path")); })},
    {"StoragePaths.contains", answering([](const Json& input) {
         return StoragePaths::contains(readText(input, "path"), readText(input, "root"));
     })},
    {"StoragePaths.bucket",
     answering([](const Json& input) { return StoragePaths::bucket(readText(input, "relativePath")); })},
    {"DiskIdentity.read",
     onDisk([](const Json& input) { return written(DiskIdentity::read(readText(input, "path"))); })},
    {"StorageScanner.conductorContainer", answering(container)},
    {"StorageCandidate.relativePath", asking(&StorageCandidate::relativePath)},
    {"StorageScan.families", answering(families)},
};

} // namespace
} // namespace varnet::vectors
