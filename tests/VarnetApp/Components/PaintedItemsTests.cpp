#include "VarnetApp/Components/Charts/LineChartItem.h"
#include "VarnetApp/Components/Mascot/MascotItem.h"
#include "VarnetApp/Components/Mascot/MascotPainter.h"

#include <QHoverEvent>
#include <QKeyEvent>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlProperty>
#include <QQuickWindow>
#include <gtest/gtest.h>

#include <limits>
#include <memory>

namespace varnet {
namespace {

/// A window with one item written in QML.
class Stage {
public:
    explicit Stage(const QByteArray& item) {
        engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
        QQmlComponent component(&engine);
        component.setData("import QtQuick\nimport Varnet\n" + item, QUrl());
        root.reset(qobject_cast<QQuickItem*>(component.create()));
        EXPECT_TRUE(root) << component.errorString().toStdString();
        if (!root) return;
        window.resize(400, 200);
        root->setParentItem(window.contentItem());
        window.show();
        window.grabWindow();
    }

    QQmlEngine engine;
    QQuickWindow window;
    std::unique_ptr<QQuickItem> root;
};

void hover(QQuickItem& item, QEvent::Type type, double x) {
    QHoverEvent event(type, QPointF(x, 40), QPointF(x, 40), QPointF(x, 40));
    QCoreApplication::sendEvent(&item, &event);
}

bool press(QQuickItem& item, Qt::Key key) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(&item, &event);
    return event.isAccepted();
}

TEST(LineChartItem, picksByPointerAndKeys) {
    Stage stage(
        "LineChart { width: 300; height: 100; label: 'CPU'; summary: 'quiet'; from: 0; to: 40; gap: 10 }");
    auto& chart = *qobject_cast<LineChartItem*>(stage.root.get());
    const double unknown = std::numeric_limits<double>::quiet_NaN();
    chart.setPoints({{0, 10}, {10, 20}, {20, unknown}, {40, 50}});
    chart.setLabels({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"), QStringLiteral("d")});
    const auto spoken = [&] {
        return QQmlProperty::read(&chart, QStringLiteral("Accessible.description"), qmlContext(&chart))
            .toString();
    };

    EXPECT_EQ(spoken(), QStringLiteral("quiet"));
    hover(chart, QEvent::HoverMove, 60);
    EXPECT_EQ(chart.currentIndex(), 1);
    EXPECT_EQ(spoken(), QStringLiteral("b"));
    // Readings go on under a pointer that rests.
    chart.setPoints({{10, 20}, {20, 30}, {40, 50}});
    EXPECT_EQ(chart.currentIndex(), 0);
    hover(chart, QEvent::HoverLeave, 400);
    EXPECT_EQ(chart.currentIndex(), -1);

    chart.setPoints({{0, 10}, {10, 20}, {20, unknown}, {40, 50}});
    chart.forceActiveFocus(Qt::TabFocusReason);
    EXPECT_FALSE(press(chart, Qt::Key_Escape)) << "with nothing picked it is the sheet's to close";
    const std::pair<Qt::Key, int> rows[] = {{Qt::Key_Left, 3}, {Qt::Key_Right, 3}, {Qt::Key_Left, 1},
                                            {Qt::Key_Left, 0}, {Qt::Key_Left, 0},  {Qt::Key_Right, 1},
                                            {Qt::Key_End, 3},  {Qt::Key_Home, 0},  {Qt::Key_Escape, -1}};
    for (const auto& [key, index] : rows) {
        EXPECT_TRUE(press(chart, key));
        EXPECT_EQ(chart.currentIndex(), index) << key;
    }
    EXPECT_TRUE(chart.focusVisible());
    EXPECT_FALSE(press(chart, Qt::Key_A));

    chart.setCurrentIndex(2);
    EXPECT_EQ(chart.currentIndex(), -1) << "a hole is not a point";
    chart.setCurrentIndex(3);
    chart.setPoints({{0, 10}});
    EXPECT_EQ(chart.currentIndex(), -1) << "the point is gone";
    chart.setPoints({});
    EXPECT_TRUE(press(chart, Qt::Key_Left));
    EXPECT_EQ(chart.currentIndex(), -1);
}

TEST(MascotItem, showsTheMoodAtOnceWhenMotionIsOff) {
    Stage stage("Item { width: 200; height: 140; MascotItem { objectName: 'm'; width: 128; height: 128; "
                "animated: false } }");
    stage.window.setColor(Qt::black);
    auto& mascot = *stage.root->findChild<MascotItem*>(QStringLiteral("m"));
    const auto shows = [&](FlameExpression expression) {
        QImage expected(128, 128, QImage::Format_ARGB32_Premultiplied);
        expected.fill(Qt::black);
        QPainter(&expected).drawImage(0, 0, mascotImage(expression, 128, MascotStyle::bare));
        const QImage seen = stage.window.grabWindow().copy(0, 0, 128, 128);
        return seen.convertToFormat(QImage::Format_RGB32) == expected.convertToFormat(QImage::Format_RGB32);
    };
    EXPECT_TRUE(shows(FlameExpression::smug));
    mascot.setExpression(QStringLiteral("panic"));
    EXPECT_TRUE(shows(FlameExpression::panic));
    mascot.setExpression(QStringLiteral("ecstatic"));
    EXPECT_EQ(mascot.expression(), QStringLiteral("confused"));
    EXPECT_TRUE(shows(FlameExpression::confused));

    mascot.setAnimated(true);
    mascot.setExpression(QStringLiteral("love"));
    EXPECT_FALSE(shows(FlameExpression::love)) << "a change has begun";
    mascot.setAnimated(false);
    EXPECT_TRUE(shows(FlameExpression::love)) << "and is cut short";
    mascot.setAnimated(true);
    mascot.setVisible(false);
    mascot.setExpression(QStringLiteral("wink"));
    mascot.setVisible(true);
    EXPECT_TRUE(shows(FlameExpression::wink)) << "nobody saw the old face";
}

TEST(PaintedItems, oddValuesAndSizesPaint) {
    for (const char* item :
         {"RingItem { width: 40; height: 40; value: NaN }", "RingItem { width: 4; height: 4; value: 9 }",
          "BarItem { width: 60; height: 4; value: NaN }", "BarItem { width: 60; height: 4; value: 1e9 }",
          "StackedBarItem { width: 60; height: 16; values: [0.2, NaN, 5]; colors: ['red'] }",
          "GlowItem { width: 60; height: 16; radius: NaN }", "MascotItem { width: 0; height: 40 }",
          "LineChart { width: 20; height: 9; label: ''; gridLabels: ['0%', '100%']; from: 3; to: 3 }"}) {
        SCOPED_TRACE(item);
        Stage stage(item);
        EXPECT_FALSE(stage.window.grabWindow().isNull());
    }
}

} // namespace
} // namespace varnet
