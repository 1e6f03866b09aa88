#include "VarnetApp/HallOfFlame/BadgeAnnouncement.h"

#include "VarnetApp/FlameCollectionStore/FlameCollectionStore.h"
#include "VarnetApp/HallOfFlame/BadgeLook.h"
#include "VarnetApp/HallOfFlame/HallRows.h"
#include "VarnetCore/Hall/FlameBadge.h"

namespace varnet {

void BadgeAnnouncement::begin() {
    const FlameCollectionStore* const collection = context().collection;
    if (!collection) return;
    connect(collection, &FlameCollectionStore::latestBadgeChanged, this, &BadgeAnnouncement::refresh);
    refresh();
}

void BadgeAnnouncement::dismiss() {
    if (context().collection) context().collection->dismissBadge();
}

void BadgeAnnouncement::refresh() {
    const FlameBadge* const badge = FlameBadge::named(context().collection->latestBadge().toStdString());
    shown_ = badge != nullptr;
    if (badge) {
        title_ = shownText(badge->title);
        quip_ = shownText(badge->quip);
        icon_ = BadgeLook::icon(*badge);
        tone_ = BadgeLook::tone(*badge);
    }
    emit changed();
}

} // namespace varnet
