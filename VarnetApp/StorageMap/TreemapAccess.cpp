#include "VarnetApp/StorageMap/TreemapAccess.h"

#include "VarnetApp/StorageMap/TreemapItem.h"

#include <QAccessible>
#include <QAccessibleObject>
#include <QPointer>
#include <QQuickWindow>

#include <unordered_map>

namespace varnet {

namespace {

/// One tile. It is known by its index: a tile that comes to stand at that place is the same list entry.
class TileAccess final : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    TileAccess(TreemapItem* item, int index) : item_(item), index_(index) {}

    bool isValid() const override {
        return item_ && static_cast<std::size_t>(index_) < item_->cells().size();
    }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return item_ ? item_->window() : nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QAccessibleInterface* parent() const override {
        return item_ ? QAccessible::queryAccessibleInterface(item_) : nullptr;
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QString text(QAccessible::Text kind) const override {
        if (!isValid()) return {};
        if (kind == QAccessible::Name) return item_->nameOf(index_);
        return kind == QAccessible::Description ? item_->subtitleOf(index_) : QString();
    }
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override {
        if (!isValid()) return {};
        const QRect frame = item_->cells()[static_cast<std::size_t>(index_)].frame;
        return {item_->mapToGlobal(frame.topLeft()).toPoint(), frame.size()};
    }
    QAccessible::Role role() const override { return QAccessible::ListItem; }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.focusable = true;
        state.invisible = !isValid() || !item_->isVisible();
        state.focused = isValid() && item_->hasActiveFocus() && item_->current() == index_;
        return state;
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }

    QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString& name) override {
        if (isValid() && name == pressAction()) item_->openTile(index_);
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

    int index() const { return index_; }

private:
    const QPointer<TreemapItem> item_;
    const int index_;
};

/// The map: a list whose entries are made when somebody asks for them.
class TreemapAccess final : public QAccessibleObject {
public:
    explicit TreemapAccess(TreemapItem* item) : QAccessibleObject(item) {}
    ~TreemapAccess() override {
        for (const auto& [index, id] : tiles_)
            QAccessible::deleteAccessibleInterface(id);
    }

    QWindow* window() const override { return item() ? item()->window() : nullptr; }
    QAccessibleInterface* parent() const override {
        if (!item()) return nullptr;
        for (QQuickItem* above = item()->parentItem(); above; above = above->parentItem())
            if (QAccessibleInterface* const found = QAccessible::queryAccessibleInterface(above))
                return found;
        return item()->window() ? QAccessible::queryAccessibleInterface(item()->window()) : nullptr;
    }
    int childCount() const override { return item() ? static_cast<int>(item()->cells().size()) : 0; }
    QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= childCount()) return nullptr;
        const auto known = tiles_.find(index);
        if (known != tiles_.end()) return QAccessible::accessibleInterface(known->second);
        auto* const tile = new TileAccess(item(), index); // from now on the registry's
        tiles_.emplace(index, QAccessible::registerAccessibleInterface(tile));
        return tile;
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        return item() ? child(cellAt(item()->cells(), item()->mapFromGlobal(QPointF(x, y)).toPoint()))
                      : nullptr;
    }
    QAccessibleInterface* focusChild() const override {
        return item() && item()->hasActiveFocus() ? child(item()->current()) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        const auto* const tile = dynamic_cast<const TileAccess*>(child);
        return tile ? tile->index() : -1;
    }
    QString text(QAccessible::Text kind) const override {
        return item() && kind == QAccessible::Name ? item()->label() : QString();
    }
    QRect rect() const override {
        if (!item()) return {};
        return {item()->mapToGlobal(QPointF()).toPoint(), item()->size().toSize()};
    }
    QAccessible::Role role() const override { return QAccessible::List; }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.focusable = true;
        state.focused = item() && item()->hasActiveFocus();
        state.invisible = !item() || !item()->isVisible();
        return state;
    }

private:
    TreemapItem* item() const { return static_cast<TreemapItem*>(object()); }

    mutable std::unordered_map<int, QAccessible::Id> tiles_;
};

QAccessibleInterface* makeAccess(const QString& className, QObject* object) {
    if (className != QLatin1String(TreemapItem::staticMetaObject.className())) return nullptr;
    auto* const item = qobject_cast<TreemapItem*>(object);
    return item ? new TreemapAccess(item) : nullptr;
}

} // namespace

void installTreemapAccess() {
    QAccessible::installFactory(makeAccess); // the same one is taken once
}

void announceTiles(TreemapItem& item) {
    if (!QAccessible::isActive()) return;
    QAccessibleEvent event(&item, QAccessible::ObjectReorder);
    QAccessible::updateAccessibility(&event);
}

void announceCurrent(TreemapItem& item) {
    if (!QAccessible::isActive() || item.current() < 0) return;
    QAccessibleEvent event(&item, QAccessible::Focus);
    event.setChild(item.current());
    QAccessible::updateAccessibility(&event);
}

} // namespace varnet
