#pragma once

#include <QString>

namespace varnet {

struct ApplicationGroup;

/// What a row is about; it decides its tile and the tone of its bar.
enum class RowKind { application, project, system, process, server, forgottenServer };

/// The toned square in front of a name.
struct RowTile {
    RowKind kind = RowKind::process;
    QString icon;   ///< empty: the letter
    QString letter; ///< of an application

    friend bool operator==(const RowTile&, const RowTile&) = default;
};

RowKind rowKindOf(const ApplicationGroup& group) noexcept;
QString tileIcon(RowKind kind);
QString tileLetter(const QString& name);
RowTile tileOf(const ApplicationGroup& group);
RowTile tileOfServer(bool forgotten);

} // namespace varnet
