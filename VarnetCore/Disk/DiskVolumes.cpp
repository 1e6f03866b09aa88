#include "VarnetCore/Disk/DiskVolumes.h"

#include "VarnetCore/Base/SmallFile.h"
#include "VarnetCore/Base/Utf8.h"
#include "VarnetCore/Disk/FurtherVolumes.h"

#include <sys/stat.h>

#include <algorithm>

namespace varnet {

namespace {

bool liesBelow(std::string_view path, std::string_view folder) {
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

/// Whether a walk from here can meet the data volume's folders a second time.
bool firmlinksMatter(const std::string& root, const DiskVolumes& volumes) {
    if (!volumes.dataVolume || liesBelow(root, dataVolumePath)) return false;
    return root == "/" || liesBelow(root, "/System") || liesBelow(root, "/usr");
}

bool isUpward(std::string_view path) {
    for (std::size_t begin = 0; begin <= path.size();) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        if (path.substr(begin, end - begin) == "..") return true;
        begin = end + 1;
    }
    return false;
}

std::vector<std::string_view> fields(std::string_view line) {
    std::vector<std::string_view> result;
    for (std::size_t begin = 0; (begin = line.find_first_not_of("\t ", begin)) != std::string_view::npos;) {
        const std::size_t end = std::min(line.find_first_of("\t ", begin), line.size());
        result.push_back(line.substr(begin, end - begin));
        begin = end;
    }
    return result;
}

} // namespace

DiskVolumes DiskVolumes::read() {
    DiskVolumes volumes;
    struct stat status{};
    volumes.dataVolume = stat(std::string(dataVolumePath).c_str(), &status) == 0;
    if (volumes.dataVolume) volumes.firmlinks = readSmallFile("/usr/share/firmlinks", 1 << 20);
    volumes.further = furtherVolumes();
    return volumes;
}

std::vector<DiskRoot> diskRoots(const std::optional<std::string>& path, const DiskVolumes& volumes) {
    if (path) return {{*path, false}};
    if (volumes.dataVolume) return {{std::string(dataVolumePath), false}, {"/", true}};
    std::vector<DiskRoot> roots{{"/", false}};
    for (const std::string& further : volumes.further)
        roots.push_back({further, false});
    return roots;
}

std::string displayPath(std::string_view path) {
    if (path == dataVolumePath) return "/";
    if (liesBelow(path, dataVolumePath)) path.remove_prefix(dataVolumePath.size());
    return std::string(path);
}

std::set<std::string, std::less<>> systemExclusions(std::string_view firmlinks) {
    std::set<std::string, std::less<>> excluded{"/System/Volumes", "/Volumes", "/dev"};
    while (!firmlinks.empty()) {
        const std::size_t end = std::min(firmlinks.find('\n'), firmlinks.size());
        const std::vector<std::string_view> words = fields(firmlinks.substr(0, end));
        firmlinks.remove_prefix(std::min(end + 1, firmlinks.size()));
        if (words.size() == 2 && words[0].starts_with('/') && words[0] != "/" && !isUpward(words[0]))
            excluded.emplace(words[0]);
    }
    return excluded;
}

std::optional<std::set<std::string, std::less<>>> exclusionsOf(const DiskRoot& root,
                                                               const DiskVolumes& volumes) {
    if (firmlinksMatter(root.path, volumes)) {
        if (!volumes.firmlinks || volumes.firmlinks->empty() || !isValidUtf8(*volumes.firmlinks))
            return std::nullopt;
        return systemExclusions(*volumes.firmlinks);
    }
    std::set<std::string, std::less<>> excluded;
    for (const std::string& further : volumes.further)
        if (further != root.path) excluded.insert(further);
    return excluded;
}

} // namespace varnet
