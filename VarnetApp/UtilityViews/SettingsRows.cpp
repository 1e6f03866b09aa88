#include "VarnetApp/UtilityViews/SettingsRows.h"

#include "VarnetApp/UtilityViews/SettingsTexts.h"

namespace varnet {

std::vector<QByteArray> ActionEntry::roles() {
    return {"title", "detail", "moment"};
}

QVariant ActionEntry::value(int role) const {
    switch (role) {
    case 0:
        return QString::fromStdString(title);
    case 1:
        return QString::fromStdString(detail);
    case 2:
        return SettingsTexts::moment(date, today, locale);
    default:
        return {};
    }
}

std::vector<QByteArray> IgnoredEntry::roles() {
    return {"key", "name", "moment"};
}

QVariant IgnoredEntry::value(int role) const {
    switch (role) {
    case 0:
        return QString::fromStdString(key);
    case 1:
        return SettingsTexts::ignoredFinding(key);
    case 2:
        return SettingsTexts::moment(date, today, locale);
    default:
        return {};
    }
}

} // namespace varnet
