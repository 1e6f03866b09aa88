#include "VarnetApp/Previews/HallScreens.h"

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/FlameCollectionStore/FlameCollectionStore.h"
#include "VarnetApp/HallOfFlame/HallModel.h"
#include "VarnetApp/HallOfFlame/RoastSheetModel.h"
#include "VarnetApp/Previews/PreparedCollection.h"
#include "VarnetApp/Previews/PreparedMachine.h"

#include <QQuickItem>

namespace varnet {

namespace {

constexpr QSize window{1040, 720};
constexpr QSize leastWindow{720, 520};
constexpr QSize wideWindow{1400, 900};

using Touch = std::function<void(QQuickItem&)>;

void onHall(VarnetStore& store) {
    store.setPage(Page::hall);
}

void reportOpen(VarnetStore& store) {
    store.presentRoast();
}

Picture hall(const char* name, QSize size, Touch touch = {}) {
    Picture picture{name, "MainWindow", size, PreparedMachine::busy, onHall, std::move(touch)};
    return picture;
}

/// Presses whatever bears the name, wherever in the view's objects it is.
Touch pressing(const QString& name) {
    return [name](QQuickItem& root) {
        if (auto* const item = root.findChild<QObject*>(name)) QMetaObject::invokeMethod(item, "clicked");
    };
}

/// Badges are made by a list: they are found among the items.
QQuickItem* itemNamed(QQuickItem& root, const QString& name) {
    if (root.objectName() == name) return &root;
    for (QQuickItem* const child : root.childItems())
        if (QQuickItem* const found = itemNamed(*child, name)) return found;
    return nullptr;
}

Touch tellingOf(const QString& badge) {
    return [badge](QQuickItem& root) {
        if (QQuickItem* const card = itemNamed(root, badge)) QMetaObject::invokeMethod(card, "clicked");
    };
}

void scrollDown(QQuickItem& root) {
    const QQuickItem* const blocks = itemNamed(root, "hallBlocks");
    QQuickItem* const page = blocks ? blocks->parentItem()->parentItem() : nullptr;
    if (page) page->setProperty("contentY", page->property("contentHeight").toDouble() - page->height());
}

void scrollToWeek(QQuickItem& root) {
    const QQuickItem* const blocks = itemNamed(root, "hallBlocks");
    QQuickItem* const page = blocks ? blocks->parentItem()->parentItem() : nullptr;
    const QQuickItem* const choice = itemNamed(root, "weekChoice");
    if (page && choice) page->setProperty("contentY", choice->mapToItem(blocks, QPointF()).y() - 20);
}

void earnedOnly(QQuickItem& root) {
    if (auto* const model = root.findChild<HallModel*>()) model->setFilter(0);
}

void withProjects(QQuickItem& root) {
    if (auto* const model = root.findChild<RoastSheetModel*>()) {
        model->setIncludeProjects(true);
        model->copy();
    }
}

Picture report(const char* name, QSize size, Touch touch = {}) {
    return Picture{name, "MainWindow", size, PreparedMachine::busy, reportOpen, std::move(touch)};
}

} // namespace

Picture smallestHall() {
    return hall("collection-minimum", leastWindow);
}

Picture earnedBadges() {
    return hall("earned-badges", window, earnedOnly);
}

Picture reportSheet() {
    return report("report-sheet", window);
}

std::vector<Picture> hallScreens() {
    Picture none = hall("hall-none-earned", window, earnedOnly);
    none.collection = PreparedCollection::fresh;
    Picture fresh = hall("hall-fresh", window);
    fresh.collection = PreparedCollection::fresh;
    Picture freshLower = hall("hall-fresh-lower", window, scrollDown);
    freshLower.collection = PreparedCollection::fresh;
    Picture unreadable = hall("hall-warning", window);
    // Something of the file's name that is no collection.
    unreadable.collectionFile = "/dev/null";
    Picture announced{"hall-toast", "MainWindow", window, PreparedMachine::busy};
    announced.deed = [](FlameCollectionStore& collection) { collection.cleaned(9, 26'000'000'000); };
    return {
        hall("hall", window),
        hall("hall-fine-print", window, tellingOf("ghost")),
        hall("hall-fine-print-locked", window, tellingOf("resident")),
        hall("hall-lower", window, scrollDown),
        hall("hall-earned", window, earnedOnly),
        hall("hall-least", leastWindow),
        hall("hall-least-week", leastWindow, scrollToWeek),
        hall("hall-least-lower", leastWindow, scrollDown),
        hall("hall-wide", wideWindow),
        std::move(none),
        std::move(fresh),
        std::move(freshLower),
        std::move(unreadable),
        std::move(announced),
        hall("weekly-sheet", window, pressing("shareWeek")),
        hall("weekly-sheet-least", leastWindow, pressing("shareWeek")),
        report("report-sheet", window),
        report("report-sheet-projects", window, withProjects),
        report("report-sheet-least", leastWindow),
    };
}

} // namespace varnet
