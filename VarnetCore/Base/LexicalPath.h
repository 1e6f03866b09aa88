#pragma once

#include <string>
#include <string_view>

/// Arithmetic on paths as texts: nothing here looks at the disk, so symbolic links stay as they are.
namespace varnet::LexicalPath {

/// Without empty pieces, "." and "..": "/a//b/./../c/" becomes "/a/c". ".." at the top of an absolute path
/// stays at the top; at the front of a relative one it is kept. A relative path that comes to nothing is "".
std::string standardized(std::string_view path);

/// A path as seen from a folder, standardized. An absolute path does not care about the folder.
std::string resolved(std::string_view path, std::string_view folder);

/// What encloses a standardized absolute path; "/" encloses itself.
std::string_view parent(std::string_view path) noexcept;

/// The last piece of a standardized absolute path; "/" for "/".
std::string_view lastComponent(std::string_view path) noexcept;

} // namespace varnet::LexicalPath
