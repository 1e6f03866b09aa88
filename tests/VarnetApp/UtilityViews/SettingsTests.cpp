#include "VarnetApp/UtilityViews/SettingsTexts.h"
#include "VarnetCore/Monitoring/SessionArchive.h"
#include "tests/VarnetApp/UtilityViews/UtilityStage.h"

#include <QFile>

namespace varnet::test {

using platform::LoginItemStatus;

class SettingsTests : public UtilityStage {
protected:
    static constexpr QSize window{640, 720};

    /// A past of two ignored findings and an action, read by a running store.
    void giveHistory() {
        SessionArchive archive;
        archive.ignored = {{"cpu:app:quill:7", fakes.clock.now() - 90},
                           {"duplicate:vite", fakes.clock.now() - 30}};
        archive.actions = {
            {Uuid::random(), fakes.clock.now() - 60, "Django stopped", "4 of 4 reviewed processes exited."}};
        QFile file(QString::fromStdString(fakes.folder.path("history.json")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QByteArray::fromStdString(archive.encode()));
        file.close();
        renew();
        store().start();
        fakes.queue.run();
        ASSERT_EQ(store().ignored().size(), 2U);
    }

    /// How the settings write this many seconds ago.
    QString knownMoment(double ago) const {
        const Date now = fakes.clock.now();
        return SettingsTexts::moment(now - ago, now, fakes.localization.locale());
    }

    bool sheetIsOpen(const char* name) const { return object(name)->property("visible").toBool(); }

    void openSheet(const QString& button, const char* sheet) {
        focus(knownItem(QAccessible::Button, button));
        key(Qt::Key_Space);
        ASSERT_TRUE(QTest::qWaitFor([&] { return focusedName() == "Cancel"; }))
            << focusedName().toStdString();
        ASSERT_TRUE(sheetIsOpen(sheet));
    }
};

TEST_F(SettingsTests, everyToggleAnswersSpaceAndThePointer) {
    struct Row {
        const char* name;
        std::function<bool()> state;
    };
    const Row rows[] = {
        {"Launch at login", [this] { return store().launchAtLogin(); }},
        {"Show whole Mac CPU in menu bar", [this] { return store().showMenuCPU(); }},
        {"Notify me about sustained issues", [this] { return store().notifications(); }},
        {"React to my Mac’s activity", [this] { return store().settings().dynamicDockFlame(); }},
        {"Keep in Dock when the window closes", [this] { return store().settings().keepInDock(); }},
        {"Automatically check for updates", [this] { return updates.automatic; }},
    };
    open("SettingsView", window);
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const QString name = QString::fromUtf8(row.name);
        QAccessibleInterface* const toggle = known(QAccessible::CheckBox, name);
        ASSERT_NE(toggle, nullptr);
        const bool before = row.state();
        EXPECT_EQ(toggle->state().checked, before);
        focus(knownItem(QAccessible::CheckBox, name));
        key(Qt::Key_Space);
        EXPECT_NE(row.state(), before);
        EXPECT_NE(toggle->state().checked, before);
        // Anywhere on its row.
        clickOn(knownItem(QAccessible::Grouping, name));
        EXPECT_EQ(row.state(), before);
    }
}

TEST_F(SettingsTests, theKeyboardReachesEverythingAndBringsItIntoView) {
    giveHistory();
    open("SettingsView", {480, 400});
    focus(knownItem(QAccessible::PageTab, "English"));
    QStringList reached{focusedName()};
    for (int i = 0; i < 40; ++i) {
        key(Qt::Key_Tab);
        if (focusedName() == "English") break;
        reached.append(focusedName());
        const QQuickItem* const current = view().activeFocusItem();
        const QRectF place = current->mapRectToScene({0, 0, current->width(), current->height()});
        EXPECT_TRUE(QRectF(0, 0, 480, 400).contains(place)) << focusedName().toStdString();
    }
    EXPECT_EQ(reached,
              QStringList({"English", "System", "Launch at login", "Show whole Mac CPU in menu bar",
                           "Notify me about sustained issues", "React to my Mac’s activity",
                           "Keep in Dock when the window closes", "Allow access", "Recent actions",
                           "Restore Similar finding " + knownMoment(30),
                           "Restore High CPU finding " + knownMoment(90), "Clear history", "Open collection",
                           "Reset collection", "Open Cloud backup", "Send feedback", "Check for Updates",
                           "Automatically check for updates"}));
}

TEST_F(SettingsTests, cancellingAnAlertChangesNothingAndConfirmingActs) {
    struct Row {
        const char* button;
        const char* sheet;
        std::function<int()> done;
    };
    const Row rows[] = {
        {"Clear history", "confirmClear", [this] { return store().ignored().empty() ? 1 : 0; }},
        {"Reset collection", "confirmCollectionReset", [this] { return fakes.collectionResets; }},
    };
    giveHistory();
    open("SettingsView", window);
    for (const Row& row : rows) {
        SCOPED_TRACE(row.button);
        const auto closed = [&] { return !sheetIsOpen(row.sheet); };
        for (const Qt::Key cancel : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Space}) {
            openSheet(row.button, row.sheet);
            key(cancel);
            ASSERT_TRUE(QTest::qWaitFor(closed));
            fakes.queue.run();
            EXPECT_EQ(row.done(), 0);
            EXPECT_EQ(focusedName(), row.button) << "the keyboard returns to where it came from";
        }
        openSheet(row.button, row.sheet);
        key(Qt::Key_Tab);
        EXPECT_EQ(focusedName(), row.button);
        key(Qt::Key_Space);
        ASSERT_TRUE(QTest::qWaitFor(closed));
        fakes.queue.run();
        EXPECT_EQ(row.done(), 1);
    }
    EXPECT_TRUE(store().actions().empty());
    EXPECT_NE(known(QAccessible::AlertMessage, "Local history cleared. Live monitoring continues."), nullptr);
    EXPECT_EQ(known(QAccessible::Button, "Recent actions"), nullptr) << "there is nothing to open any more";
}

TEST_F(SettingsTests, aMessageCanBeSentAway) {
    fakes.notifications.granted = false;
    open("SettingsView", window);
    clickOn(knownItem(QAccessible::Grouping, "Notify me about sustained issues"));
    const QString words = "Notifications were not allowed. You can enable them in System Settings.";
    ASSERT_NE(known(QAccessible::AlertMessage, words), nullptr);
    EXPECT_FALSE(known(QAccessible::CheckBox, "Notify me about sustained issues")->state().checked);
    clickOn(knownItem(QAccessible::Button, "Close"));
    EXPECT_EQ(known(QAccessible::AlertMessage, words), nullptr);
    EXPECT_TRUE(store().settingsMessage().isEmpty()) << "so that the next refusal is told again";
}

TEST_F(SettingsTests, loginSaysWhatTheDesktopMadeOfIt) {
    struct Row {
        const char* name;
        LoginItemStatus after;
        const char* systemError;
        bool turnedOn;
        bool offersToOpen;
        const char* error;
    };
    using enum LoginItemStatus;
    const Row rows[] = {
        {"fine", enabled, "", true, false, ""},
        {"waits for approval", requiresApproval, "", true, true, ""},
        {"refused", notRegistered, "disk full", false, false, "Could not change launch at login: disk full"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        fakes.loginItem.now = notRegistered;
        fakes.loginItem.afterRegistering = row.after;
        fakes.loginItem.error = row.systemError;
        renew();
        open("SettingsView", window);
        clickOn(knownItem(QAccessible::CheckBox, "Launch at login"));
        EXPECT_EQ(known(QAccessible::CheckBox, "Launch at login")->state().checked, row.turnedOn);
        EXPECT_EQ(known(QAccessible::Button, "Open Login Items") != nullptr, row.offersToOpen);
        EXPECT_EQ(known(QAccessible::AlertMessage, row.error) != nullptr, row.error[0] != '\0');
        fakes.loginItem.error.clear();
        if (!row.turnedOn) continue;
        clickOn(knownItem(QAccessible::CheckBox, "Launch at login"));
        EXPECT_EQ(fakes.loginItem.now, notRegistered) << "what waits for approval can be called off";
    }
}

TEST_F(SettingsTests, whatIsRestoredLeavesTheList) {
    giveHistory();
    open("SettingsView", {640, 1700});
    ASSERT_NE(known(QAccessible::Grouping, "Ignored findings (2)"), nullptr);
    clickOn(knownItem(QAccessible::Button, "Restore High CPU finding " + knownMoment(90)));
    fakes.queue.run();
    EXPECT_EQ(store().ignored().size(), 1U);
    EXPECT_TRUE(store().ignored().contains("duplicate:vite"));
    EXPECT_NE(known(QAccessible::Grouping, "Ignored findings (1)"), nullptr);
}

TEST_F(SettingsTests, recentActionsOpenInPlace) {
    giveHistory();
    open("SettingsView", {640, 1700});
    const QString action = "Django stopped " + knownMoment(60);
    EXPECT_EQ(known(QAccessible::ListItem, action), nullptr);
    clickOn(knownItem(QAccessible::Button, "Recent actions"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return known(QAccessible::ListItem, action) != nullptr; }));
    clickOn(knownItem(QAccessible::Button, "Recent actions"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return known(QAccessible::ListItem, action) == nullptr; }));
}

TEST_F(SettingsTests, anUpdateIsLookedForFoundAndFetched) {
    open("SettingsView", {640, 1700});
    clickOn(knownItem(QAccessible::Button, "Check for Updates"));
    EXPECT_EQ(updates.checks, 1);
    updates.busy = true;
    updates.lastCheck = fakes.clock.now();
    updates.handlers.stateChanged();
    EXPECT_FALSE(item("checkForUpdates")->isEnabled());
    EXPECT_NE(known(QAccessible::Indicator, "Already on it."), nullptr);
    updates.busy = false;
    updates.handlers.stateChanged();
    updates.handlers.didFindValidUpdate("1.4.0");
    QAccessibleInterface* const row = known(QAccessible::Grouping, "Version 1.4.0 is ready to install.");
    ASSERT_NE(row, nullptr);
    EXPECT_TRUE(row->text(QAccessible::Description).startsWith("Last checked "));
    view().grabWindow();
    clickOn(knownItem(QAccessible::Button, "Version 1.4.0 available"));
    EXPECT_EQ(updates.openings, 1);
}

TEST_F(SettingsTests, anAnswerAskedForElsewhereComesIntoView) {
    store().start();
    show("SettingsView { objectName: \"view\"; anchors.fill: parent }");
    updater().checkForUpdates(); // the window has not found its size yet
    view().resize(window);
    const auto seen = [this] {
        const QQuickItem* const button = item("checkForUpdates");
        return QRectF({}, window).contains(button->mapRectToScene({0, 0, button->width(), button->height()}));
    };
    view().grabWindow();
    EXPECT_TRUE(QTest::qWaitFor(seen));
}

TEST_F(SettingsTests, arrowsChooseLanguageAndAppearance) {
    giveHistory();
    open("SettingsView", window);
    const QString before = knownMoment(90);
    focus(knownItem(QAccessible::PageTab, "English"));
    key(Qt::Key_Right);
    EXPECT_EQ(fakes.localization.languageCode(), "cs");
    EXPECT_EQ(focusedName(), "Čeština");
    EXPECT_NE(knownMoment(90), before);
    const auto czech = [this](const char* english) { return fakes.localization.text(english); };
    EXPECT_NE(czech("Restore"), "Restore");
    EXPECT_NE(known(QAccessible::Button,
                    czech("Restore") + " " + czech("High CPU finding") + " " + knownMoment(90)),
              nullptr)
        << "words and dates follow the language";
    key(Qt::Key_Left);
    EXPECT_EQ(fakes.localization.languageCode(), "en");
    key(Qt::Key_Tab);
    key(Qt::Key_Right);
    key(Qt::Key_Right);
    EXPECT_EQ(store().appearance(), "Dark");
    key(Qt::Key_Left);
    EXPECT_EQ(store().appearance(), "Light");
    EXPECT_EQ(focusedName(), "Light");
}

} // namespace varnet::test
