#include "VarnetApp/Platform/linux/TrayMenu.h"

#include <QDBusError>
#include <QDBusMessage>

#include <set>
#include <utility>

namespace varnet::platform {

namespace {

constexpr int root = 0;

QVariantMap propertiesOf(const TrayMenuEntry& entry) {
    if (entry.separator) {
        return {{QStringLiteral("type"), QStringLiteral("separator")}, {QStringLiteral("visible"), true}};
    }
    // A single underline would mark the letter behind it.
    const QString label = QString::fromStdString(entry.label).replace(u'_', QStringLiteral("__"));
    return {{QStringLiteral("label"), label},
            {QStringLiteral("enabled"), entry.enabled},
            {QStringLiteral("visible"), true}};
}

/// @param names empty: all
QVariantMap selected(const QVariantMap& properties, const QStringList& names) {
    if (names.isEmpty()) {
        return properties;
    }
    QVariantMap some;
    for (auto property = properties.begin(); property != properties.end(); ++property) {
        if (names.contains(property.key())) {
            some.insert(property.key(), property.value());
        }
    }
    return some;
}

} // namespace

const QString& TrayMenu::path() {
    static const QString text = QStringLiteral("/MenuBar");
    return text;
}

TrayMenu::TrayMenu() {
    registerTrayTypes();
}

void TrayMenu::publish(QDBusConnection& bus) {
    bus_ = bus;
    bus_->registerObject(path(), this,
                         QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllProperties);
}

void TrayMenu::set(std::vector<TrayMenuEntry> entries) {
    std::set<int> ids;
    std::erase_if(entries,
                  [&](const TrayMenuEntry& each) { return each.id <= root || !ids.insert(each.id).second; });
    if (entries == entries_) {
        return;
    }
    entries_ = std::move(entries);
    ++revision_;
    if (bus_) {
        QDBusMessage signal = QDBusMessage::createSignal(path(), QStringLiteral("com.canonical.dbusmenu"),
                                                         QStringLiteral("LayoutUpdated"));
        signal.setArguments({revision_, root});
        bus_->send(signal);
    }
}

uint TrayMenu::GetLayout(int parent, int depth, const QStringList& names, TrayMenuNode& layout) {
    const auto found = properties(parent);
    if (!found) {
        refuse(parent);
        return revision_;
    }
    layout = {parent, selected(*found, names), {}};
    if (parent == root && depth != 0) {
        for (const TrayMenuEntry& each : entries_) {
            layout.children.append({each.id, selected(propertiesOf(each), names), {}});
        }
    }
    return revision_;
}

QList<TrayMenuProperties> TrayMenu::GetGroupProperties(const QList<int>& ids, const QStringList& names) {
    QList<TrayMenuProperties> group;
    for (const TrayMenuEntry& each : entries_) {
        if (ids.isEmpty() || ids.contains(each.id)) {
            group.append({each.id, selected(propertiesOf(each), names)});
        }
    }
    if (ids.isEmpty() || ids.contains(root)) {
        group.prepend({root, selected(*properties(root), names)});
    }
    return group;
}

QDBusVariant TrayMenu::GetProperty(int id, const QString& name) {
    const auto found = properties(id);
    if (!found || !found->contains(name)) {
        refuse(id);
        return QDBusVariant(QString());
    }
    return QDBusVariant(found->value(name));
}

void TrayMenu::Event(int id, const QString& event, const QDBusVariant&, uint) {
    const TrayMenuEntry* target = entry(id);
    if (event == QLatin1String("clicked") && target != nullptr && target->enabled && !target->separator) {
        emit chosen(id);
    }
}

QList<int> TrayMenu::EventGroup(const QList<TrayMenuEvent>& events) {
    QList<int> unknown;
    for (const TrayMenuEvent& event : events) {
        if (event.id != root && entry(event.id) == nullptr) {
            unknown.append(event.id);
        }
        Event(event.id, event.event, event.data, event.timestamp);
    }
    return unknown;
}

bool TrayMenu::AboutToShow(int) {
    return false; // what was told last is still so
}

QList<int> TrayMenu::AboutToShowGroup(const QList<int>& ids, QList<int>& unknown) {
    for (const int id : ids) {
        if (id != root && entry(id) == nullptr) {
            unknown.append(id);
        }
    }
    return {};
}

const TrayMenuEntry* TrayMenu::entry(int id) const {
    for (const TrayMenuEntry& each : entries_) {
        if (each.id == id) {
            return &each;
        }
    }
    return nullptr;
}

std::optional<QVariantMap> TrayMenu::properties(int id) const {
    if (id == root) {
        return QVariantMap{{QStringLiteral("children-display"), QStringLiteral("submenu")}};
    }
    const TrayMenuEntry* found = entry(id);
    return found == nullptr ? std::nullopt : std::optional(propertiesOf(*found));
}

void TrayMenu::refuse(int id) const {
    if (calledFromDBus()) {
        sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("no such entry or property: %1").arg(id));
    }
}

} // namespace varnet::platform
