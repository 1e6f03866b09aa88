#include "VarnetApp/Components/Theme.h"
#include "VarnetApp/StorageMap/TreemapItem.h"

#include <QAccessible>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickView>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>

namespace varnet {
namespace {

class Treemap : public testing::Test {
protected:
    Treemap() {
        Theme::shared().setReducedMotion(true);
        QQmlComponent component(&engine_, QUrl("qrc:/qt/qml/Varnet/Treemap.qml"));
        map.reset(qobject_cast<TreemapItem*>(component.create()));
        map->setParentItem(window.contentItem());
        map->setSize({480, 300});
        map->setProperty("label", "Disk map");
        map->setModel(&model);
        window.resize(480, 300);
        window.show();
        window.requestActivate();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        show({{"/a", 600}, {"/b", 300}, {"/c", 100}});
        (void)window.grabWindow();
    }
    void show(const std::vector<std::pair<std::string, std::uint64_t>>& sizes) {
        std::vector<TreemapTile> tiles;
        for (const auto& [path, bytes] : sizes) {
            DiskMapNode node;
            node.id = path;
            node.title = path.substr(1);
            node.subtitle = "Explore folder";
            node.bytes = bytes * 1'000'000'000;
            tiles.push_back({node});
        }
        model.update(std::move(tiles));
    }
    QPoint middleOf(std::size_t index) const { return map->cells()[index].frame.center(); }

    TreemapModel model;
    QQuickWindow window;
    std::unique_ptr<TreemapItem> map;

private:
    QQmlEngine engine_;
};

TEST_F(Treemap, isWorkedByKeys) {
    QSignalSpy opened(map.get(), &TreemapItem::opened);
    QSignalSpy up(map.get(), &TreemapItem::wentUp);
    map->forceActiveFocus(Qt::TabFocusReason);
    EXPECT_TRUE(map->focusVisible());
    EXPECT_EQ(map->currentKey(), "/a");
    QTest::keyClick(&window, Qt::Key_Right);
    EXPECT_EQ(map->currentKey(), "/b");
    QTest::keyClick(&window, Qt::Key_Return);
    QTest::keyClick(&window, Qt::Key_End);
    QTest::keyClick(&window, Qt::Key_Return);
    QTest::keyClick(&window, Qt::Key_Backspace);
    ASSERT_EQ(opened.count(), 2);
    EXPECT_EQ(opened[0][0], "/b");
    EXPECT_EQ(opened[1][0], "/c");
    EXPECT_EQ(up.count(), 1);
}

TEST_F(Treemap, isWorkedByThePointerAndLitFromOutside) {
    QSignalSpy opened(map.get(), &TreemapItem::opened);
    QTest::mouseMove(&window, middleOf(1));
    EXPECT_TRUE(QTest::qWaitFor([&] { return map->hoveredKey() == "/b"; }, 1000));
    EXPECT_EQ(map->hoveredText(), "b · 300.0 GB · 30% · Explore folder");
    map->setHoveredKey("/c");
    EXPECT_EQ(map->hoveredFrame(), map->cells()[2].frame);
    QTest::mouseClick(&window, Qt::LeftButton, Qt::NoModifier, middleOf(1));
    ASSERT_EQ(opened.count(), 1);
    EXPECT_EQ(opened[0][0], "/b");
    EXPECT_FALSE(map->focusVisible());
    // Let go elsewhere: changed their mind.
    QTest::mousePress(&window, Qt::LeftButton, Qt::NoModifier, middleOf(0));
    QTest::mouseRelease(&window, Qt::LeftButton, Qt::NoModifier, middleOf(2));
    EXPECT_EQ(opened.count(), 1);
}

TEST_F(Treemap, theCurrentTileFollowsItsKey) {
    map->setCurrentKey("/b");
    show({{"/b", 700}, {"/a", 600}});
    EXPECT_EQ(map->currentKey(), "/b");
    EXPECT_EQ(map->currentFrame(), map->cells()[0].frame);
    show({{"/x", 1}});
    EXPECT_EQ(map->currentKey(), "/x") << "a new folder begins with its largest";
    show({});
    EXPECT_EQ(map->currentKey(), "");
}

TEST_F(Treemap, paintsOnlyWhatLooksDifferent) {
    QSignalSpy frames(&window, &QQuickWindow::afterRendering);
    QSignalSpy changes(&model, &TreemapModel::changed);
    (void)QTest::qWaitFor([] { return false; }, 60);
    frames.clear();
    show({{"/a", 600}, {"/b", 300}, {"/c", 100}});
    EXPECT_EQ(changes.count(), 0);
    (void)QTest::qWaitFor([] { return false; }, 60);
    EXPECT_EQ(frames.count(), 0);

    const QImage before = window.grabWindow();
    map->setHoveredKey("/c");
    const QImage after = window.grabWindow();
    EXPECT_NE(before.pixel(middleOf(2) + QPoint(0, 30)), after.pixel(middleOf(2) + QPoint(0, 30)));
    EXPECT_EQ(before.copy(map->cells()[0].frame), after.copy(map->cells()[0].frame));
}

TEST_F(Treemap, isAListToAScreenReader) {
    QAccessibleInterface* const list = QAccessible::queryAccessibleInterface(map.get());
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->role(), QAccessible::List);
    EXPECT_EQ(list->text(QAccessible::Name), "Disk map");
    ASSERT_EQ(list->childCount(), 3);
    QAccessibleInterface* const tile = list->child(1);
    ASSERT_NE(tile, nullptr);
    EXPECT_EQ(tile->text(QAccessible::Name), "b 300.0 GB");
    EXPECT_EQ(tile->text(QAccessible::Description), "Explore folder");
    EXPECT_EQ(tile->parent(), list);
    EXPECT_EQ(list->indexOfChild(tile), 1);
    EXPECT_EQ(list->childAt(tile->rect().center().x(), tile->rect().center().y()), tile);
    QSignalSpy opened(map.get(), &TreemapItem::opened);
    tile->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(opened.count(), 1);
    show({{"/a", 1}});
    EXPECT_FALSE(tile->isValid()) << "kept by a screen reader beyond its tile";
    EXPECT_EQ(list->child(1), nullptr);
    tile->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(opened.count(), 1);
}

} // namespace
} // namespace varnet
