#include "VarnetApp/MainViews/RowTile.h"

#include "VarnetCore/Monitoring/ApplicationGroup.h"

namespace varnet {

RowKind rowKindOf(const ApplicationGroup& group) noexcept {
    switch (group.kind) {
    case GroupKind::application:
        return RowKind::application;
    case GroupKind::project:
        return RowKind::project;
    case GroupKind::system:
        return RowKind::system;
    case GroupKind::unassigned:
        break;
    }
    return RowKind::process;
}

QString tileIcon(RowKind kind) {
    switch (kind) {
    case RowKind::application:
        return {};
    case RowKind::project:
        return "projects";
    case RowKind::system:
        return "cpu";
    case RowKind::process:
        return "terminal";
    case RowKind::server:
    case RowKind::forgottenServer:
        break;
    }
    return "servers";
}

QString tileLetter(const QString& name) {
    const QString text = name.trimmed();
    if (text.isEmpty()) return {};
    // A character outside the basic plane is two units, and half of one is nothing.
    return text.left(text.at(0).isHighSurrogate() ? 2 : 1).toUpper();
}

RowTile tileOf(const ApplicationGroup& group) {
    const RowKind kind = rowKindOf(group);
    return {kind, tileIcon(kind),
            kind == RowKind::application ? tileLetter(QString::fromStdString(group.name)) : QString()};
}

RowTile tileOfServer(bool forgotten) {
    const RowKind kind = forgotten ? RowKind::forgottenServer : RowKind::server;
    return {kind, tileIcon(kind), {}};
}

} // namespace varnet
