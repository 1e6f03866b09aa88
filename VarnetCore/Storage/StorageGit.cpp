#include "VarnetCore/Storage/StorageGit.h"

#include "VarnetCore/Base/Utf8.h"
#include "VarnetCore/Base/Uuid.h"
#include "VarnetCore/Storage/BoundedCommand.h"
#include "VarnetCore/Storage/GitOutput.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <utility>

namespace varnet {

namespace {

constexpr std::size_t outputLimit = 4'000'000; // bytes
constexpr std::array candidates{"/usr/bin/git", "/usr/local/bin/git"};
/// Under these names Git starts itself, for a look into submodules.
constexpr std::array ownNames{"/usr/lib/git-core/git", "/usr/libexec/git-core/git",
                              "/usr/local/libexec/git-core/git", "/usr/local/lib/git-core/git"};

bool isExecutable(const char* path) {
    struct stat status{};
    return ::stat(path, &status) == 0 && S_ISREG(status.st_mode) && ::access(path, X_OK) == 0;
}

/// An empty file of this user's alone, gone with this object.
class OutputFile {
public:
    OutputFile() {
        const char* const folder = std::getenv("TMPDIR"); // nobody sets it while the program runs
        path_ = folder != nullptr && *folder == '/' ? folder : "/tmp";
        path_ += "/varnet-git-" + Uuid::random().text();
        descriptor_ = ::open(path_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600);
    }
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    ~OutputFile() {
        if (descriptor_ < 0) return;
        ::close(descriptor_);
        ::unlink(path_.c_str());
    }

    int descriptor() const noexcept { return descriptor_; }

    /// From its beginning, at most so many bytes; what cannot be read counts as not there.
    std::string read(std::size_t limit) const {
        std::string bytes(std::min(limit, size()), '\0');
        std::size_t at = 0;
        while (at < bytes.size()) {
            const ssize_t got =
                ::pread(descriptor_, bytes.data() + at, bytes.size() - at, static_cast<off_t>(at));
            if (got < 0 && errno == EINTR) continue;
            if (got < 0) return {};
            if (got == 0) break;
            at += static_cast<std::size_t>(got);
        }
        bytes.resize(at);
        return bytes;
    }

private:
    std::size_t size() const {
        struct stat status{};
        return ::fstat(descriptor_, &status) == 0 ? static_cast<std::size_t>(status.st_size) : 0;
    }

    std::string path_;
    int descriptor_ = -1;
};

bool isBlank(char character) noexcept {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

} // namespace

std::string StorageGit::Result::text() const {
    const std::string whole = repairedUtf8(output);
    const auto begin = std::ranges::find_if_not(whole, isBlank);
    const auto end = std::find_if_not(whole.rbegin(), std::make_reverse_iterator(begin), isBlank).base();
    return {begin, end};
}

const std::optional<std::string>& StorageGit::executable() {
    static const std::optional<std::string> found = [] {
        const auto* const path = std::ranges::find_if(candidates, isExecutable);
        return path == candidates.end() ? std::nullopt : std::optional<std::string>(*path);
    }();
    return found;
}

StorageGit::StorageGit(std::string home, std::optional<std::string> program)
    : home_(std::move(home)), program_(std::move(program)) {}

std::optional<StorageGit::Result> StorageGit::run(const std::string& repository,
                                                  const std::vector<std::string>& arguments, double timeout,
                                                  const StorageCancellation* token) const {
    if (!program_) return std::nullopt;
    const OutputFile file;
    if (file.descriptor() < 0) return std::nullopt;
    BoundedCommand command;
    command.program = *program_;
    command.arguments = {"--no-optional-locks",
                         "-c",
                         "core.fsmonitor=false",
                         "-c",
                         "core.untrackedCache=false",
                         "-C",
                         repository};
    command.arguments.insert(command.arguments.end(), arguments.begin(), arguments.end());
    command.environment = {"PATH=/usr/bin:/bin",   "HOME=" + home_,       "GIT_TERMINAL_PROMPT=0",
                           "GIT_OPTIONAL_LOCKS=0", "GIT_NO_LAZY_FETCH=1", "GIT_CONFIG_NOSYSTEM=1"};
    command.helpers.assign(ownNames.begin(), ownNames.end());
    command.output = file.descriptor();
    command.outputLimit = outputLimit + 1;
    command.timeout = timeout;
    const auto code = command.run(token);
    if (!code) return std::nullopt;
    std::string output = file.read(outputLimit + 1);
    if (output.size() > outputLimit) return std::nullopt; // cut short is worse than none
    return Result{*code, std::move(output)};
}

bool StorageGit::ignoredAndUntracked(const std::string& path, const std::string& repository,
                                     const StorageCancellation* token) const {
    if (!path.starts_with(repository + '/')) return false;
    const std::string relative = path.substr(repository.size() + 1);
    const auto ignored = run(repository, {"check-ignore", "-q", "--", relative}, standardTimeout, token);
    if (!ignored || ignored->code != 0) return false;
    // Literal: a folder's name may hold what would match others.
    const auto tracked =
        run(repository, {"ls-files", "-z", "--", ":(literal)" + relative}, standardTimeout, token);
    return tracked && tracked->code == 0 && tracked->output.empty();
}

std::string StorageGit::summary(const std::string& repository, const StorageCancellation* token) const {
    const auto status = run(repository, {"status", "--porcelain=v1", "-z", "--untracked-files=normal"},
                            standardTimeout, token);
    if (!status || status->code != 0) return std::string(unavailable);
    std::string line =
        status->output.empty() ? "No uncommitted files found" : "Uncommitted or untracked files";
    const auto unpushed =
        run(repository, {"rev-list", "--count", "@{upstream}..HEAD"}, standardTimeout, token);
    const auto count = unpushed && unpushed->code == 0 ? GitOutput::count(unpushed->text()) : std::nullopt;
    if (!count) return line + " · upstream not verified";
    if (*count > 0) line += " · " + std::to_string(*count) + " unpushed commit" + (*count == 1 ? "" : "s");
    return line;
}

} // namespace varnet
