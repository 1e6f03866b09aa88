#include "VarnetCore/Base/LexicalPath.h"

#include <algorithm>
#include <cstddef>

namespace varnet::LexicalPath {

std::string standardized(std::string_view path) {
    const bool absolute = path.starts_with('/');
    std::string result;
    result.reserve(path.size() + 1);
    if (absolute) result += '/';
    const std::size_t top = result.size();
    // Everything up to here is fixed: the leading slash, or the ".." of a relative path.
    std::size_t fixed = top;
    while (!path.empty()) {
        const std::size_t slash = std::min(path.find('/'), path.size());
        const std::string_view piece = path.substr(0, slash);
        path.remove_prefix(std::min(slash + 1, path.size()));
        if (piece.empty() || piece == ".") continue;
        if (piece == "..") {
            if (result.size() > fixed) {
                const std::size_t cut = result.rfind('/');
                result.resize(cut == std::string::npos ? 0 : std::max(cut, fixed));
                continue;
            }
            if (absolute) continue;
        }
        if (result.size() > top) result += '/';
        result += piece;
        if (piece == "..") fixed = result.size();
    }
    return result;
}

std::string resolved(std::string_view path, std::string_view folder) {
    if (path.starts_with('/')) return standardized(path);
    std::string joined;
    joined.reserve(folder.size() + 1 + path.size());
    joined.append(folder).append(1, '/').append(path);
    return standardized(joined);
}

std::string_view parent(std::string_view path) noexcept {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string_view::npos) return path.substr(0, 0);
    return path.substr(0, std::max<std::size_t>(slash, 1));
}

std::string_view lastComponent(std::string_view path) noexcept {
    if (path == "/") return path;
    return path.substr(path.rfind('/') + 1); // npos + 1 is 0
}

} // namespace varnet::LexicalPath
