#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace varnet {

/// A name from the disk as it can be shown in one line: bytes that are no character, line breaks, other
/// control characters and marks that turn the writing round become replacement characters. For display only:
/// paths and keys keep their bytes.
QString shownName(std::string_view bytes);

/// A path as QML can hand it around, whatever its bytes, and back. Two different ones never become one.
QString keyInQml(std::string_view path);
std::string keyFromQml(const QString& key);

} // namespace varnet
