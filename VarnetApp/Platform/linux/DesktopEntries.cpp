#include "VarnetApp/Platform/linux/DesktopEntries.h"

#include "VarnetApp/Platform/linux/ExecLine.h"
#include "VarnetCore/Base/SmallFile.h"

#include <QUtf8StringView>

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <tuple>
#include <utility>

namespace varnet::platform {

namespace {

// Far above any desktop, so that a hostile folder costs bounded time and memory.
constexpr std::size_t longestFile = std::size_t{1} << 20;
constexpr std::size_t mostFiles = 20'000;
constexpr std::size_t mostFolders = 2'000;
constexpr int deepestFolder = 8;

constexpr std::string_view suffix = ".desktop";

std::string_view lastPiece(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

std::string_view folderOf(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string_view::npos ? std::string_view() : path.substr(0, slash);
}

/// Without the mark that tells a program from the script that starts it.
std::string_view stem(std::string_view name) {
    for (const std::string_view mark : {"-bin", ".bin"}) {
        if (name.size() > mark.size() && name.ends_with(mark)) {
            name.remove_suffix(mark.size());
        }
    }
    return name;
}

std::string_view firstWord(std::string_view name) {
    return name.substr(0, name.find('-'));
}

/// Whether a folder holds programs of many applications, so that lying in it says nothing.
bool isShared(std::string_view folder) {
    static constexpr auto shared = std::to_array<std::string_view>(
        {"", "bin", "sbin", "games", "libexec", "lib", "lib32", "lib64", "Applications", "applications"});
    return std::find(shared.begin(), shared.end(), lastPiece(folder)) != shared.end();
}

/// Whether a program's name is one that unrelated programs bear as well.
bool isAnybodysName(std::string_view name) {
    static constexpr auto anybodys = std::to_array<std::string_view>(
        {"", "AppRun", "app", "client", "gui", "launch", "launcher", "main", "run", "server", "start"});
    return std::find(anybodys.begin(), anybodys.end(), name) != anybodys.end();
}

std::string canonical(const std::string& path) {
    const std::unique_ptr<char, decltype(&std::free)> resolved(::realpath(path.c_str(), nullptr), &std::free);
    return resolved ? std::string(resolved.get()) : std::string();
}

bool isValidText(std::string_view text) {
    return QUtf8StringView(text.data(), static_cast<qsizetype>(text.size())).isValidUtf8();
}

/// Names in a folder in a fixed order, so that the same files always give the same index.
std::vector<std::string> namesIn(const std::string& folder) {
    std::vector<std::string> names;
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(::opendir(folder.c_str()), &::closedir);
    while (directory && names.size() < mostFiles) {
        const dirent* entry = ::readdir(directory.get());
        if (entry == nullptr) {
            break;
        }
        if (entry->d_name[0] != '.') {
            names.emplace_back(entry->d_name);
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

/// What an entry runs, until all are known and can be ranked.
struct DesktopEntries::Program {
    std::size_t application = 0;
    std::string written;   ///< as in the command line
    std::string canonical; ///< the file it leads to; empty when there is none
    std::size_t arguments = 0;
};

DesktopEntries::DesktopEntries(DesktopPlaces places)
    : places_(std::move(places)), localeTags_(localeTags(places_.locale)) {}

DesktopEntries::FolderState DesktopEntries::stateOf(const std::string& path) {
    FolderState state;
    state.path = path;
    struct stat status{};
    if (::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode)) {
        state.exists = true;
        state.device = status.st_dev;
        state.inode = status.st_ino;
        state.changed =
            static_cast<std::int64_t>(status.st_mtim.tv_sec) * 1'000'000'000 + status.st_mtim.tv_nsec;
    }
    return state;
}

void DesktopEntries::refresh() {
    if (!folders_.empty() && std::all_of(folders_.begin(), folders_.end(), [](const FolderState& known) {
            return known == stateOf(known.path);
        })) {
        return;
    }
    folders_.clear();
    applications_.clear();
    ids_.clear();
    aliases_.clear();
    paths_.clear();
    names_.clear();
    programFolders_.clear();
    filesSeen_ = 0;

    std::vector<Program> programs;
    Names masked;
    for (const std::string& folder : places_.applications) {
        readFolder(folder, {}, 0, programs, masked);
    }
    indexPrograms(programs);
}

void DesktopEntries::readFolder(const std::string& folder, const std::string& prefix, int depth,
                                std::vector<Program>& programs, Names& masked) {
    const FolderState state = stateOf(folder);
    // A symlink may lead back into a folder that is being read.
    const bool seen =
        state.exists && std::any_of(folders_.begin(), folders_.end(), [&](const FolderState& known) {
            return known.exists && known.device == state.device && known.inode == state.inode;
        });
    if (folders_.size() >= mostFolders) {
        return;
    }
    folders_.push_back(state);
    if (!state.exists || seen) {
        return;
    }
    for (const std::string& name : namesIn(folder)) {
        const std::string path = folder + "/" + name;
        if (name.size() > suffix.size() && name.ends_with(suffix)) {
            readEntry(path, prefix + name.substr(0, name.size() - suffix.size()), programs, masked);
            continue;
        }
        struct stat status{};
        if (depth < deepestFolder && ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode)) {
            readFolder(path, prefix + name + "-", depth + 1, programs, masked);
        }
    }
}

void DesktopEntries::readEntry(const std::string& path, std::string id, std::vector<Program>& programs,
                               Names& masked) {
    if (!isValidText(id) || ids_.contains(id) || masked.contains(id) || ++filesSeen_ > mostFiles) {
        return;
    }
    const auto text = readSmallFile(path, longestFile);
    auto entry = text ? parseDesktopEntry(*text, localeTags_) : std::nullopt;
    if (!entry) {
        return; // and hides nothing: a good file of the same id may follow
    }
    if (entry->hidden) {
        masked.insert(std::move(id));
        return;
    }
    const std::size_t position = applications_.size();
    if (entry->name.empty()) {
        const std::string_view file = lastPiece(path);
        entry->name = file.substr(0, file.size() - suffix.size());
    }
    ids_.emplace(id, position);
    if (!entry->flatpak.empty()) {
        aliases_.emplace(entry->flatpak, position);
    }
    if (!entry->snap.empty() && !entry->snapApp.empty()) {
        aliases_.emplace(entry->snap + "_" + entry->snapApp, position);
    }
    applications_.push_back({std::move(id), path, entry->name});

    if (entry->noDisplay || entry->terminal || (!entry->tryExec.empty() && located(entry->tryExec).empty())) {
        return;
    }
    if (auto line = parseExecLine(entry->exec)) {
        std::string file = located(line->program);
        programs.push_back({position, std::move(line->program), std::move(file), line->arguments});
    }
}

std::string DesktopEntries::located(const std::string& program) const {
    const auto executableFile = [](const std::string& path) {
        std::string file = canonical(path);
        return !file.empty() && ::access(file.c_str(), X_OK) == 0 ? file : std::string();
    };
    if (program.starts_with('/')) {
        return executableFile(program);
    }
    if (program.find('/') == std::string::npos) {
        for (const std::string& folder : places_.programs) {
            if (std::string file = executableFile(folder + "/" + program); !file.empty()) {
                return file;
            }
        }
    }
    return {};
}

void DesktopEntries::indexPrograms(std::vector<Program>& programs) {
    // Of several entries for one program the plainest command line stands for it: the others are its modes.
    std::sort(programs.begin(), programs.end(), [](const Program& a, const Program& b) {
        return std::tie(a.arguments, a.application) < std::tie(b.arguments, b.application);
    });
    for (const Program& program : programs) {
        for (const std::string& path : {program.canonical, program.written}) {
            const std::string_view name = lastPiece(path);
            const std::string_view folder = folderOf(path);
            const bool absolute = path.starts_with('/');
            // One's own copy of an interpreter is as good as a program; the machine's is everybody's.
            if (absolute && (!runsOtherPrograms(name) || !isShared(folder))) {
                paths_.emplace(path, program.application);
            }
            if (runsOtherPrograms(name)) {
                continue;
            }
            if (!isAnybodysName(stem(name))) {
                names_.emplace(stem(name), program.application);
            }
            if (absolute && !isShared(folder)) {
                programFolders_.emplace(folder, InFolder{program.application, std::string(name)});
            }
        }
    }
}

const InstalledApplication* DesktopEntries::at(const ByName<std::size_t>& index, std::string_view key) const {
    const auto found = index.find(key);
    return found == index.end() ? nullptr : &applications_[found->second];
}

const InstalledApplication* DesktopEntries::byID(std::string_view id) const {
    const InstalledApplication* found = at(ids_, id);
    return found != nullptr ? found : at(aliases_, id);
}

const InstalledApplication* DesktopEntries::byExecutable(std::string_view path) const {
    if (const InstalledApplication* found = at(paths_, path)) {
        return found;
    }
    const std::string_view name = stem(lastPiece(path));
    if (name.empty() || runsOtherPrograms(lastPiece(path))) {
        return nullptr;
    }
    const std::string_view folder = folderOf(path);
    if (const auto near = programFolders_.find(folder); near != programFolders_.end()) {
        const std::string_view word = firstWord(name);
        if (word == firstWord(near->second.program) || word == firstWord(lastPiece(folder))) {
            return &applications_[near->second.application];
        }
    }
    return at(names_, name);
}

} // namespace varnet::platform
