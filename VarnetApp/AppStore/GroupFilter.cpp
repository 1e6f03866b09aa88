#include "VarnetApp/AppStore/GroupFilter.h"

#include <QCollator>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>

namespace varnet {

namespace {

bool contains(const std::vector<std::string>& names, const std::string& name) {
    return std::ranges::find(names, name) != names.end();
}

/// Groups beside what they are ordered by, worked out once.
template <typename Key>
using Keyed = std::vector<std::pair<Key, const ApplicationGroup*>>;

template <typename Key>
std::vector<const ApplicationGroup*> groupsOf(const Keyed<Key>& keyed) {
    std::vector<const ApplicationGroup*> groups;
    groups.reserve(keyed.size());
    for (const auto& [key, group] : keyed)
        groups.push_back(group);
    return groups;
}

std::vector<const ApplicationGroup*> byMemory(const std::vector<const ApplicationGroup*>& groups) {
    Keyed<std::optional<std::uint64_t>> keyed;
    keyed.reserve(groups.size());
    for (const ApplicationGroup* group : groups)
        keyed.emplace_back(group->memory(), group);
    // An empty figure is less than any other, so it comes last.
    std::ranges::sort(keyed, [](const auto& a, const auto& b) {
        return a.first != b.first ? a.first > b.first : a.second->id < b.second->id;
    });
    return groupsOf(keyed);
}

std::vector<const ApplicationGroup*> byName(const std::vector<const ApplicationGroup*>& groups,
                                            const QLocale& locale) {
    QCollator collator(locale);
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    Keyed<QCollatorSortKey> keyed;
    keyed.reserve(groups.size());
    for (const ApplicationGroup* group : groups)
        keyed.emplace_back(collator.sortKey(QString::fromStdString(group->name)), group);
    std::ranges::stable_sort(keyed, [](const auto& a, const auto& b) { return a.first < b.first; });
    return groupsOf(keyed);
}

} // namespace

bool GroupFilter::keeps(const ApplicationGroup& group) const {
    if (page == Page::projects && group.kind != GroupKind::project) return false;
    if (page == Page::apps && group.kind == GroupKind::project) return false;
    if (!search.isEmpty()) {
        const QString text = QString::fromStdString(group.name + " " + group.subtitle);
        if (!text.contains(search, Qt::CaseInsensitive)) return false;
    }
    return agent == QLatin1String(allAgents) || contains(group.agents(), agent.toStdString());
}

std::vector<const ApplicationGroup*> GroupFilter::apply(std::span<const ApplicationGroup> groups) const {
    std::vector<const ApplicationGroup*> kept;
    for (const ApplicationGroup& group : groups)
        if (keeps(group)) kept.push_back(&group);
    switch (sort) {
    case SortOrder::cpu:
        return kept;
    case SortOrder::memory:
        return byMemory(kept);
    case SortOrder::name:
        return byName(kept, locale);
    }
    return kept;
}

} // namespace varnet
