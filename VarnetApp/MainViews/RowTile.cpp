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

namespace {

QString letterOf(const QString& name) {
    const QString text = name.trimmed();
    if (text.isEmpty()) return {};
    // A character outside the basic plane is two units, and half of one is nothing.
    return text.left(text.at(0).isHighSurrogate() ? 2 : 1).toUpper();
}

} // namespace

RowTile tileFor(RowKind kind, const QString& name) {
    switch (kind) {
    case RowKind::application:
        return {{}, letterOf(name), {}};
    case RowKind::project:
        return {"projects", {}, "dev"};
    case RowKind::system:
        return {"cpu", {}, "faint"};
    case RowKind::process:
        return {"terminal", {}, "faint"};
    case RowKind::server:
        return {"servers", {}, "dev"};
    case RowKind::forgottenServer:
        break;
    }
    return {"servers", {}, "warn"};
}

QString barTone(RowKind kind) {
    switch (kind) {
    case RowKind::application:
        return "emberFill";
    case RowKind::project:
    case RowKind::server:
    case RowKind::forgottenServer:
        return "dev";
    case RowKind::system:
    case RowKind::process:
        break;
    }
    return "faint";
}

} // namespace varnet
