#include "VarnetApp/UtilityViews/PanelRows.h"

#include "VarnetApp/Components/FindingMark.h"
#include "VarnetApp/Components/Theme.h"
#include "VarnetApp/Localization/Figures.h"

namespace varnet {

namespace {

Theme::TileKind tileOf(GroupKind kind) {
    switch (kind) {
    case GroupKind::application:
        return Theme::TileKind::Application;
    case GroupKind::project:
        return Theme::TileKind::Project;
    case GroupKind::system:
    case GroupKind::unassigned:
        break;
    }
    return Theme::TileKind::Other;
}

} // namespace

std::vector<QByteArray> PanelFinding::roles() {
    return {"key", "title", "iconName", "tone"};
}

QVariant PanelFinding::value(int role) const {
    switch (role) {
    case 0:
        return QString::fromStdString(key);
    case 1:
        return QString::fromStdString(title);
    case 2:
        return markOf(kind).icon;
    case 3:
        return markOf(kind).tone;
    default:
        return {};
    }
}

std::vector<QByteArray> PanelGroup::roles() {
    return {"key", "name", "iconName", "letter", "tileKind", "cpu", "memory", "inspectLabel"};
}

QVariant PanelGroup::value(int role) const {
    const QString shown = QString::fromStdString(name);
    switch (role) {
    case 0:
        return QString::fromStdString(key);
    case 1:
        return shown;
    case 2:
        return kind == GroupKind::project ? "projects" : "";
    case 3:
        return shown.left(1).toUpper();
    case 4:
        return QVariant::fromValue(tileOf(kind));
    case 5:
        return Figures(locale).percent(percent);
    case 6:
        return Figures(locale).memory(memory);
    case 7:
        return "Inspect " + shown + " and its processes";
    default:
        return {};
    }
}

} // namespace varnet
