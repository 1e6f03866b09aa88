#include "tests/VarnetApp/Components/ControlStage.h"

namespace varnet::test {

using ControlInputTests = ControlStage;

TEST_F(ControlInputTests, aToggleAsksAndItsOwnerDecides) {
    show(R"(
        property int asked: 0
        Toggle { objectName: "free"; label: "Launch at login"; onWanted: (on) => { turnedOn = on; parent.asked++ } }
        Toggle { objectName: "stubborn"; y: 60; label: "Launch at login"; onWanted: parent.asked++ }
    )");
    click("free");
    EXPECT_TRUE(item("free")->property("turnedOn").toBool());
    item("free")->forceActiveFocus(Qt::TabFocusReason);
    key(Qt::Key_Space);
    EXPECT_FALSE(item("free")->property("turnedOn").toBool());
    key(Qt::Key_Return);
    EXPECT_TRUE(item("free")->property("turnedOn").toBool());
    click("stubborn");
    EXPECT_FALSE(item("stubborn")->property("turnedOn").toBool())
        << "a refused change must not stay on screen";
    EXPECT_EQ(view().rootObject()->property("asked").toInt(), 4);
}

TEST_F(ControlInputTests, aTickInPartAsksForAll) {
    show(
        R"(Tick { objectName: "tick"; label: "Select all"; property var asked: []; onWanted: (t) => asked.push(t) })");
    struct Row {
        const char* name;
        bool ticked;
        bool partial;
        bool wanted;
    };
    item("tick")->forceActiveFocus(Qt::TabFocusReason);
    for (const Row& row : {Row{"empty", false, false, true}, Row{"in part", false, true, true},
                           Row{"full", true, false, false}, Row{"full and in part", true, true, false}}) {
        item("tick")->setProperty("ticked", row.ticked);
        item("tick")->setProperty("partial", row.partial);
        item("tick")->setProperty("asked", QVariantList());
        click("tick");
        key(Qt::Key_Space);
        EXPECT_EQ(item("tick")->property("asked").toList(), QVariantList({row.wanted, row.wanted}))
            << row.name;
    }
}

TEST_F(ControlInputTests, segmentsAreOneTabStopWithArrows) {
    show(R"(
        Button { objectName: "before"; text: "Before" }
        Segmented { objectName: "sort"; y: 50; label: "Sort"; options: ["CPU", "Memory", "Name"]; currentIndex: 1
                    onChosen: (index) => currentIndex = index }
        Button { objectName: "after"; y: 100; text: "After" }
    )");
    item("before")->forceActiveFocus(Qt::TabFocusReason);
    key(Qt::Key_Tab);
    EXPECT_TRUE(item("sort")->hasActiveFocus());
    struct Row {
        Qt::Key key;
        int expected;
    };
    for (const Row& row : {Row{Qt::Key_Left, 0}, Row{Qt::Key_Left, 0}, Row{Qt::Key_Right, 1},
                           Row{Qt::Key_Down, 2}, Row{Qt::Key_Right, 2}, Row{Qt::Key_Up, 1}}) {
        key(row.key);
        EXPECT_EQ(item("sort")->property("currentIndex").toInt(), row.expected) << row.key;
    }
    EXPECT_TRUE(item("sort")->hasActiveFocus()) << "arrows must not lose the focus";
    key(Qt::Key_Tab);
    EXPECT_EQ(focused(), QStringLiteral("after"));
    key(Qt::Key_Backtab);
    key(Qt::Key_Right);
    EXPECT_EQ(item("sort")->property("currentIndex").toInt(), 2);
}

TEST_F(ControlInputTests, aDisabledButtonIsSilentButTellsWhy) {
    show(R"(
        property int presses: 0
        Button { objectName: "quit"; x: 100; y: 100; text: "Quit"; enabled: false; disabledReason: "Nothing is ticked"
                 onClicked: parent.presses++ }
        IconButton { objectName: "stop"; x: 300; y: 100; iconName: "stop"; label: "Stop"; enabled: false
                     disabledReason: "Managed by the system"; onClicked: parent.presses++ }
    )");
    for (const char* const name : {"quit", "stop"}) {
        click(name);
        item(name)->forceActiveFocus(Qt::TabFocusReason);
        key(Qt::Key_Space);
        key(Qt::Key_Return);
        hover({5, 5});
        hover(centreOf(name));
        bool told = false;
        for (const QObject* const child : item(name)->findChildren<QObject*>())
            told = told || child->property("text") == item(name)->property("disabledReason");
        EXPECT_TRUE(told) << name << " has no tooltip under the pointer";
    }
    EXPECT_EQ(view().rootObject()->property("presses").toInt(), 0);
}

TEST_F(ControlInputTests, aButtonAnswersEachKeyOnce) {
    show(R"(Button { objectName: "quit"; text: "Quit"; property int presses: 0; onClicked: presses++ })");
    item("quit")->forceActiveFocus(Qt::TabFocusReason);
    int expected = 0;
    for (const Qt::Key each : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        key(each);
        EXPECT_EQ(item("quit")->property("presses").toInt(), ++expected) << each;
    }
}

TEST_F(ControlInputTests, theRingIsForTheKeyboardOnly) {
    show(R"(
        Button { objectName: "cancel"; text: "Cancel" }
        Button { objectName: "quit"; y: 50; text: "Quit" }
    )");
    click("quit");
    EXPECT_TRUE(item("quit")->hasActiveFocus());
    EXPECT_FALSE(item("quit")->property("visualFocus").toBool());
    key(Qt::Key_Backtab);
    EXPECT_TRUE(item("cancel")->property("visualFocus").toBool());
}

TEST_F(ControlInputTests, escapeEmptiesTheSearchThenPasses) {
    show(R"(
        focus: true
        property int closed: 0
        Keys.onEscapePressed: closed++
        SearchField { objectName: "search"; placeholderText: "Search apps"; clearLabel: "Clear" }
    )");
    item("search")->forceActiveFocus(Qt::TabFocusReason);
    key(Qt::Key_V);
    EXPECT_EQ(item("search")->property("text").toString(), QStringLiteral("v"));
    key(Qt::Key_Escape);
    EXPECT_EQ(item("search")->property("text").toString(), QString());
    EXPECT_EQ(view().rootObject()->property("closed").toInt(), 0);
    key(Qt::Key_Escape);
    EXPECT_EQ(view().rootObject()->property("closed").toInt(), 1);
}

TEST_F(ControlInputTests, aRowAndWhatStandsInItAreThreeTargets) {
    show(R"(
        property var heard: []
        GroupRowView { objectName: "row"; width: 456; title: "Quill Editor"; subtitle: "11 processes"; primary: "7.4%"
            secondary: "3.1 GB"; fraction: 0.6; tickLabel: "Select Quill Editor"; stopLabel: "Stop Quill Editor"
            onOpened: parent.heard.push("open"); onTickWanted: (t) => parent.heard.push("tick")
            onStopRequested: parent.heard.push("stop") }
    )");
    const auto heard = [this] {
        const QStringList list = view().rootObject()->property("heard").toStringList();
        view().rootObject()->setProperty("heard", QVariantList());
        return list;
    };
    const auto clickAt = [this](int x) {
        QTest::mouseClick(&view(), Qt::LeftButton, Qt::NoModifier, {x, 26});
    };
    clickAt(200);
    EXPECT_EQ(heard(), QStringList({"open"}));
    clickAt(19);
    EXPECT_EQ(heard(), QStringList({"tick"}));
    clickAt(438);
    EXPECT_EQ(heard(), QStringList({"stop"}));

    item("row")->forceActiveFocus(Qt::TabFocusReason);
    key(Qt::Key_Space);
    key(Qt::Key_Return);
    EXPECT_EQ(heard(), QStringList({"tick", "open"}));
    key(Qt::Key_Tab);
    key(Qt::Key_Space);
    EXPECT_EQ(heard(), QStringList({"tick"}));
    key(Qt::Key_Tab);
    key(Qt::Key_Return);
    EXPECT_EQ(heard(), QStringList({"stop"}));

    hover({438, 26});
    EXPECT_TRUE(item("row")->property("hovered").toBool()) << "the row stays lit under its stop button";
}

} // namespace varnet::test
