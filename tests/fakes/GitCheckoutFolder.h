#pragma once

#include "tests/fakes/TemporaryFolder.h"

#include <cstdlib>
#include <stdexcept>
#include <string>
#include <string_view>

namespace varnet {

/// A scratch home with real repositories in it.
class GitCheckoutFolder {
public:
    std::string home() const { return folder_.path().string(); }
    std::string path(std::string_view below) const { return folder_.path(below); }
    std::string write(std::string_view below, std::string_view bytes) const {
        return folder_.write(below, bytes);
    }
    const TemporaryFolder& folder() const noexcept { return folder_; }

    /// Runs a shell command in a folder below the home, as an unguarded user would.
    /// @return its exit status
    int shell(std::string_view below, std::string_view command) const {
        const std::string line = "cd '" + path(below) + "' && export HOME='" + home() +
                                 "' GIT_TERMINAL_PROMPT=0 && { " + std::string(command) +
                                 "\n} >/dev/null 2>&1";
        return std::system(line.c_str());
    }

    /// A repository with one commit: file, .gitignore ("node_modules", ".turbo", ".next") and package.json.
    void makeRepository(std::string_view below) const {
        const std::string prefix = std::string(below) + '/';
        write(prefix + "file", "text");
        write(prefix + "package.json", "{}");
        write(prefix + ".gitignore", "node_modules\n.turbo\n.next\nignored*\nkept\n");
        const int status =
            shell(below, "git init -q -b main . && git config user.name t && git config user.email t@t "
                         "&& git config gc.auto 0 && git add -A && git commit -qm first");
        if (status != 0) throw std::runtime_error("no repository");
    }

private:
    TemporaryFolder folder_;
};

} // namespace varnet
