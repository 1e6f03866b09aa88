#include "VarnetApp/StorageMap/DiskNames.h"

#include "VarnetCore/Base/Utf8.h"

namespace varnet {

namespace {

/// Begins a key whose characters are bytes. No path and no word of ours begins like this.
constexpr QChar bytesMark(0x0001);

} // namespace

QString shownName(std::string_view bytes) {
    QString name = QString::fromStdString(repairedUtf8(bytes));
    for (QChar& character : name) {
        const char16_t code = character.unicode();
        const bool turns = (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
        const bool breaks = character.category() == QChar::Other_Control || code == 0x2028 || code == 0x2029;
        if (turns || breaks) character = QChar::ReplacementCharacter;
    }
    return name;
}

QString keyInQml(std::string_view path) {
    const auto size = static_cast<qsizetype>(path.size());
    if (isValidUtf8(path)) return QString::fromUtf8(path.data(), size);
    return bytesMark + QString::fromLatin1(path.data(), size);
}

std::string keyFromQml(const QString& key) {
    return key.startsWith(bytesMark) ? key.mid(1).toLatin1().toStdString() : key.toStdString();
}

} // namespace varnet
