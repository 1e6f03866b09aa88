#include "VarnetApp/Components/Theme.h"
#include "tests/VarnetApp/Components/ControlStage.h"

namespace varnet::test {

using ControlLayoutTests = ControlStage;

namespace {

/// The items in a control that show words or a figure and reach out of it at the left or the right.
QStringList overflowing(const QQuickItem* control) {
    QStringList found;
    for (const QQuickItem* const child : control->findChildren<QQuickItem*>()) {
        const QString words = child->property("text").toString();
        if (words.isEmpty() || !child->isVisible()) continue;
        const QRectF box = child->mapRectToItem(control, QRectF(0, 0, child->width(), child->height()));
        if (box.left() < -0.5 || box.right() > control->width() + 0.5) found.append(words);
    }
    return found;
}

} // namespace

TEST_F(ControlLayoutTests, longWordsStayInsideAndFiguresWhole) {
    const QByteArray words = "\"Nejpravděpodobnější zapomenuté procesy vývojového prostředí\"";
    show("property string words: " + words + R"(
        Column {
            Button { objectName: "button"; width: 90; iconName: "share"; trailingIcon: "right"; text: words }
            SidebarRow { objectName: "sidebar"; width: 184; iconName: "apps"; text: words; count: "1,204" }
            MetricCard { objectName: "metric"; width: 154; iconName: "fan"; label: words; figure: "12,840 RPM"
                         note: words; infoLabel: "?" }
            GroupRowView { objectName: "group"; width: 380; title: words; subtitle: words; primary: "1,109.8%"
                           secondary: "1,014.6 GB"; fraction: 3; ports: "12 ports"; tickLabel: words; stopLabel: words }
            FindingRowView { objectName: "finding"; width: 240; title: words; explanation: words; iconName: "moon"
                             tone: Theme.warn; ignoreLabel: "Ignorovat" }
            SettingRow { objectName: "setting"; width: 300; title: words; note: words; Button { text: "Povolit" } }
            Pill { objectName: "pill"; kind: Pill.Worktree; text: words }
            Toast { objectName: "toast"; widest: 200; text: words; closeLabel: "Close" }
        }
    )");
    for (const char* const name :
         {"button", "sidebar", "metric", "group", "finding", "setting", "pill", "toast"})
        EXPECT_EQ(overflowing(item(name)), QStringList()) << name;
    EXPECT_LE(item("pill")->width(), 140);
    for (const QQuickItem* const child : view().rootObject()->findChildren<QQuickItem*>()) {
        if (child->inherits("varnet::FigureItem")) {
            EXPECT_GE(child->width(), child->implicitWidth() - 1)
                << child->property("text").toString().toStdString();
        }
    }
    EXPECT_GE(item("finding")->height(), 75) << "an explanation is never cut: the row grows";
}

TEST_F(ControlLayoutTests, theGalleryShowsEverythingWithoutAWarning) {
    show("Gallery {}");
    view().resize(1040, 1164);
    const QImage dark = view().grabWindow();
    Theme::shared().setDark(false);
    QCoreApplication::processEvents();
    const QImage light = view().grabWindow();
    EXPECT_EQ(dark.pixelColor(8, 8), QColor(0x15, 0x11, 0x0E));
    EXPECT_EQ(light.pixelColor(8, 8), QColor(0xFA, 0xF6, 0xF2));
    EXPECT_EQ(light.pixelColor(60, 70), QColor(0xC9, 0x48, 0x1A)) << "the primary button";
}

} // namespace varnet::test
