#include "VarnetApp/AppStore/ServiceFilter.h"

#include <QCollator>

#include <algorithm>
#include <string>
#include <utility>

namespace varnet {

namespace {

/// Services by a key worked out once each; `before` orders the keys.
template <typename KeyOf, typename Before>
void sortBy(std::vector<const Service*>& services, KeyOf keyOf, Before before) {
    struct Keyed {
        decltype(keyOf(*services.front())) key;
        std::string id;
        const Service* service;
    };
    std::vector<Keyed> keyed;
    keyed.reserve(services.size());
    for (const Service* service : services)
        keyed.push_back({keyOf(*service), service->id(), service});
    std::ranges::sort(keyed, [&](const Keyed& a, const Keyed& b) {
        if (before(a.key, b.key)) return true;
        return !before(b.key, a.key) && a.id < b.id;
    });
    std::ranges::transform(keyed, services.begin(), &Keyed::service);
}

} // namespace

bool ServiceFilter::keeps(const Service& service) const {
    if (search.isEmpty()) return true;
    const auto holds = [&](const std::string& text) {
        return QString::fromStdString(text).contains(search, Qt::CaseInsensitive);
    };
    return holds(service.name()) || (service.project() && holds(service.project()->name)) ||
           std::ranges::any_of(service.ports(), [&](int port) { return holds(":" + std::to_string(port)); });
}

std::vector<const Service*> ServiceFilter::apply(std::span<const Service> services) const {
    std::vector<const Service*> kept;
    for (const Service& service : services)
        if (keeps(service)) kept.push_back(&service);
    // An empty figure is less than any other, so it comes last.
    switch (sort) {
    case SortOrder::cpu:
        sortBy(kept, [](const Service& service) { return service.cpu(); }, std::greater{});
        break;
    case SortOrder::memory:
        sortBy(kept, [](const Service& service) { return service.memory(); }, std::greater{});
        break;
    case SortOrder::name: {
        QCollator collator(locale);
        collator.setNumericMode(true);
        collator.setCaseSensitivity(Qt::CaseInsensitive);
        sortBy(
            kept,
            [&](const Service& service) { return collator.sortKey(QString::fromStdString(service.name())); },
            [](const QCollatorSortKey& a, const QCollatorSortKey& b) { return a < b; });
        break;
    }
    }
    return kept;
}

} // namespace varnet
