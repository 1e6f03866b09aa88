#include "VarnetCore/Base/LexicalPath.h"
#include "VarnetCore/Storage/StorageBucket.h"
#include "VarnetCore/Storage/StorageCandidate.h"
#include "VarnetCore/Storage/StorageFamily.h"
#include "VarnetCore/Storage/StorageProject.h"
#include "VarnetCore/Storage/StorageScan.h"
#include "VarnetCore/Storage/TotalBytes.h"

#include <algorithm>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>

namespace varnet {

namespace {

template <class List, class Bytes>
std::uint64_t total(const List& list, Bytes bytes) noexcept {
    std::uint64_t sum = 0;
    for (const auto& element : list)
        addToTotal(sum, bytes(element));
    return sum;
}

constexpr auto bytesOf = [](const auto& record) { return record.bytes(); };
constexpr auto reviewBytesOf = [](const auto& record) { return record.reviewBytes(); };

const std::string& familyKey(const StorageProject& project) noexcept {
    if (project.container) return *project.container;
    return project.repository ? *project.repository : project.path;
}

} // namespace

std::string_view rawValue(StorageBucket bucket) noexcept {
    switch (bucket) {
    case StorageBucket::dependencies:
        return "Dependencies";
    case StorageBucket::caches:
        return "Build caches";
    case StorageBucket::git:
        return "Git data";
    case StorageBucket::files:
        break;
    }
    return "Project files";
}

std::string StorageCandidate::relativePath() const {
    return path.substr(std::min(projectPath.size() + 1, path.size()));
}

std::uint64_t StorageProject::bytes() const noexcept {
    return total(buckets, [](const auto& bucket) { return bucket.second; });
}

std::uint64_t StorageProject::reviewBytes() const noexcept {
    return total(candidates, [](const StorageCandidate& candidate) { return candidate.bytes; });
}

std::string StorageFamily::name() const {
    if (members.empty()) return std::string(LexicalPath::lastComponent(id));
    const auto member = std::ranges::find_if(members, [](const auto& each) { return !each.isContainer(); });
    return member == members.end() ? members.front().name : member->name;
}

std::uint64_t StorageFamily::bytes() const noexcept {
    return total(members, bytesOf);
}

std::uint64_t StorageFamily::reviewBytes() const noexcept {
    return total(members, reviewBytesOf);
}

bool StorageFamily::partial() const noexcept {
    return std::ranges::any_of(members, &StorageProject::partial);
}

std::size_t StorageFamily::worktreeCount() const noexcept {
    return static_cast<std::size_t>(std::ranges::count(members, true, &StorageProject::worktree));
}

StorageBuckets StorageFamily::buckets() const {
    StorageBuckets sums;
    for (const StorageProject& member : members) {
        for (const auto& [bucket, bytes] : member.buckets)
            addToTotal(sums[bucket], bytes);
    }
    return sums;
}

std::string StorageFamily::sources() const {
    std::set<std::string> distinct;
    for (const StorageProject& member : members)
        distinct.insert(member.source);
    std::string joined;
    for (const std::string& source : distinct) {
        if (!joined.empty()) joined += " · ";
        joined += source;
    }
    return joined;
}

std::uint64_t StorageScan::bytes() const noexcept {
    return total(projects, bytesOf);
}

std::uint64_t StorageScan::reviewBytes() const noexcept {
    return total(projects, reviewBytesOf);
}

std::size_t StorageScan::measuredCount() const noexcept {
    return static_cast<std::size_t>(std::ranges::count(projects, true, &StorageProject::measured));
}

std::vector<StorageFamily> StorageScan::families() const {
    std::vector<StorageFamily> families;
    std::unordered_map<std::string, std::size_t> places;
    for (const StorageProject& project : projects) {
        const std::string& key = familyKey(project);
        const auto [place, isNew] = places.try_emplace(key, families.size());
        if (isNew) families.push_back({key, {}});
        families[place->second].members.push_back(project);
    }
    // Sizes are sums over all members: reckoned once, not at every comparison.
    std::vector<std::pair<std::uint64_t, std::size_t>> order;
    order.reserve(families.size());
    for (std::size_t index = 0; index < families.size(); ++index)
        order.emplace_back(families[index].bytes(), index);
    std::ranges::sort(order, [&families](const auto& a, const auto& b) {
        return a.first != b.first ? a.first > b.first : families[a.second].id < families[b.second].id;
    });
    std::vector<StorageFamily> sorted;
    sorted.reserve(families.size());
    for (const auto& [bytes, index] : order)
        sorted.push_back(std::move(families[index]));
    return sorted;
}

} // namespace varnet
