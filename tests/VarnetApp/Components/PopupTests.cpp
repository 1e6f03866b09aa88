#include "tests/VarnetApp/Components/ControlStage.h"

namespace varnet::test {

using PopupTests = ControlStage;

namespace {

constexpr auto sheet = R"(
    Button { objectName: "behind"; text: "Behind"; property int presses: 0; onClicked: presses++ }
    Sheet {
        objectName: "sheet"; title: "Stop Django"; initialFocus: cancel
        Label { text: "Stops only the processes below." }
        foot: Row {
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            Button { id: cancel; objectName: "cancel"; text: "Cancel" }
            Button { objectName: "quit"; text: "Quit" }
        }
    }
)";

const auto codex = QStringLiteral("Codex in a rather long worktree name");

constexpr auto menu = R"(
    MenuButton {
        objectName: "agents"; label: "Agent"; text: "All agents"
        property string chosen: ""
        menu: Menu {
            objectName: "menu"
            MenuRow { objectName: "all"; text: "All agents"; onTriggered: agents.chosen = text }
            MenuRow { objectName: "none"; text: "Nobody"; enabled: false; onTriggered: agents.chosen = text }
            MenuRow { objectName: "codex"; text: "Codex in a rather long worktree name"; onTriggered: agents.chosen = text }
        }
        id: agents
    }
)";

} // namespace

TEST_F(PopupTests, aSheetKeepsTheKeyboardAndEscapeClosesIt) {
    show(sheet);
    item("behind")->forceActiveFocus(Qt::TabFocusReason);
    QMetaObject::invokeMethod(object("sheet"), "open");
    ASSERT_TRUE(QTest::qWaitFor([this] { return focused() == QStringLiteral("cancel"); }))
        << focused().toStdString();
    QStringList visited;
    for (int i = 0; i < 4; ++i) {
        key(Qt::Key_Tab);
        visited.append(focused());
    }
    EXPECT_EQ(visited, QStringList({"quit", "cancel", "quit", "cancel"}));
    QTest::mouseClick(&view(), Qt::LeftButton, Qt::NoModifier, centreOf("behind"));
    EXPECT_EQ(item("behind")->property("presses").toInt(), 0);
    EXPECT_TRUE(object("sheet")->property("visible").toBool()) << "a click beside a question is no answer";
    key(Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !object("sheet")->property("visible").toBool(); }));
    EXPECT_EQ(focused(), QStringLiteral("behind")) << "the keyboard returns to where it came from";
}

TEST_F(PopupTests, aSheetTallerThanTheWindowScrollsAndKeepsItsFoot) {
    show(sheet);
    view().resize(400, 200);
    ASSERT_TRUE(QTest::qWaitFor([this] { return view().rootObject()->width() == 400; }));
    QMetaObject::invokeMethod(object("sheet"), "open");
    ASSERT_TRUE(QTest::qWaitFor([this] { return focused() == QStringLiteral("cancel"); }));
    EXPECT_LE(object("sheet")->property("height").toDouble(), 200 - 48);
    EXPECT_LE(object("sheet")->property("width").toDouble(), 400 - 48);
    EXPECT_LT(centreOf("cancel").y(), 200 - 24);
}

TEST_F(PopupTests, aMenuIsUsedWithoutAPointer) {
    show(menu);
    item("agents")->forceActiveFocus(Qt::TabFocusReason);
    const auto isOpen = [this] { return object("menu")->property("opened").toBool(); };
    const auto isClosed = [this] { return !object("menu")->property("visible").toBool(); };

    key(Qt::Key_Down);
    ASSERT_TRUE(QTest::qWaitFor(isOpen));
    key(Qt::Key_Escape);
    ASSERT_TRUE(QTest::qWaitFor(isClosed));
    EXPECT_EQ(item("agents")->property("chosen").toString(), QString());
    EXPECT_EQ(focused(), QStringLiteral("agents")) << "focus returns to where it came from";

    key(Qt::Key_Space);
    ASSERT_TRUE(QTest::qWaitFor(isOpen));
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    key(Qt::Key_Return);
    ASSERT_TRUE(QTest::qWaitFor(isClosed));
    EXPECT_EQ(item("agents")->property("chosen").toString(), codex) << "disabled rows are passed";
}

TEST_F(PopupTests, aMenuIsUsedWithThePointer) {
    show(menu);
    click("agents");
    ASSERT_TRUE(QTest::qWaitFor([this] { return object("menu")->property("opened").toBool(); }));
    EXPECT_GE(item("codex")->width(), item("codex")->implicitWidth())
        << "a menu is as wide as its widest row";
    click("codex");
    ASSERT_TRUE(QTest::qWaitFor([this] { return !object("menu")->property("visible").toBool(); }));
    EXPECT_EQ(item("agents")->property("chosen").toString(), codex);
    click("agents");
    ASSERT_TRUE(QTest::qWaitFor([this] { return object("menu")->property("opened").toBool(); }));
    click("agents");
    EXPECT_TRUE(QTest::qWaitFor([this] { return !object("menu")->property("visible").toBool(); }))
        << "a second click closes it";
}

TEST_F(PopupTests, aToastGoesByItselfButNotFromUnderThePointer) {
    show(R"(Toast { objectName: "toast"; x: 100; y: 100; lifetime: 40; text: "Django has left the building."
                    closeLabel: "Close"; property int gone: 0; onDismissed: gone++ })");
    const auto gone = [this] { return item("toast")->property("gone").toInt(); };
    EXPECT_TRUE(QTest::qWaitFor([&] { return gone() == 1; }, 2000));
    hover(centreOf("toast"));
    item("toast")->setProperty("text", QStringLiteral("Vite has left the building."));
    QTest::qWait(120);
    EXPECT_EQ(gone(), 1) << "it must stay while it is read";
    hover({5, 5});
    EXPECT_TRUE(QTest::qWaitFor([&] { return gone() == 2; }, 2000));
}

} // namespace varnet::test
