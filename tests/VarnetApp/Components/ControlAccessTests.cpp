#include "tests/VarnetApp/Components/ControlStage.h"

#include <QAccessible>

namespace varnet::test {

using ControlAccessTests = ControlStage;

namespace {

struct Row {
    const char* name; ///< accessible name
    QAccessible::Role role;
    const char* signal; ///< what one press must emit once; none for what cannot be pressed
    const char* markup;
};

const Row rows[] = {
    {"Quit", QAccessible::Button, SIGNAL(clicked()), R"(Button { text: "Quit" })"},
    {"Stop", QAccessible::Button, SIGNAL(clicked()), R"(IconButton { iconName: "stop"; label: "Stop" })"},
    {"Select all", QAccessible::CheckBox, SIGNAL(wanted(bool)), R"(Tick { label: "Select all" })"},
    {"Launch at login", QAccessible::CheckBox, SIGNAL(wanted(bool)),
     R"(Toggle { label: "Launch at login" })"},
    {"Sort", QAccessible::PageTabList, nullptr, R"(Segmented { label: "Sort"; options: ["CPU"] })"},
    {"CPU", QAccessible::PageTab, SIGNAL(clicked()), R"(Segment { text: "CPU" })"},
    {"Search apps", QAccessible::EditableText, nullptr,
     R"(SearchField { placeholderText: "Search apps"; clearLabel: "Clear" })"},
    {"Agent All agents", QAccessible::Button, SIGNAL(clicked()),
     R"(MenuButton { label: "Agent"; text: "All agents"; menu: Menu {} })"},
    {"Codex", QAccessible::MenuItem, SIGNAL(clicked()), R"(MenuRow { text: "Codex" })"},
    {":3000", QAccessible::StaticText, nullptr, R"(Pill { kind: Pill.Port; text: ":3000" })"},
    {"Gone.", QAccessible::AlertMessage, nullptr, R"(Toast { text: "Gone."; closeLabel: "Close" })"},
    {"Recent actions", QAccessible::Button, SIGNAL(clicked()),
     R"(SettingRow { width: 300; title: "Recent actions"; pressable: true })"},
    {"Apps 37", QAccessible::PageTab, SIGNAL(clicked()),
     R"(SidebarRow { iconName: "apps"; text: "Apps"; count: "37" })"},
    {"Fans 2,840 RPM", QAccessible::Button, SIGNAL(clicked()),
     R"(MetricCard { iconName: "fan"; label: "Fans"; figure: "2,840 RPM" })"},
    {"Quill Editor 7.4%", QAccessible::ListItem, SIGNAL(opened()),
     R"(GroupRowView { title: "Quill Editor"; subtitle: ""; primary: "7.4%"; secondary: "—"; fraction: 0
                       tickLabel: "Select"; stopLabel: "Stop" })"},
    {"Vite may be forgotten Codex left.", QAccessible::ListItem, SIGNAL(opened()),
     R"(FindingRowView { title: "Vite may be forgotten"; explanation: "Codex left."; iconName: "moon"
                         tone: Theme.warn; ignoreLabel: "Ignore" })"},
    {"No matches Try another search.", QAccessible::StaticText, nullptr,
     R"(EmptyState { iconName: "search"; title: "No matches"; note: "Try another search." })"},
    {"Memory", QAccessible::Button, SIGNAL(clicked()), R"(ColumnHead { text: "Memory" })"},
    {"Stopping", QAccessible::Indicator, nullptr, R"(Spinner { label: "Stopping" })"},
};

} // namespace

TEST_F(ControlAccessTests, everyControlHasANameARoleAndOnePress) {
    QByteArray body = "Column {\n";
    int index = 0;
    for (const Row& row : rows) {
        QByteArray markup = row.markup;
        markup.insert(markup.indexOf('{') + 1, " objectName: \"c" + QByteArray::number(index++) + "\";");
        body += markup + "\n";
    }
    show(body + "}");
    index = 0;
    for (const Row& row : rows) {
        QQuickItem* const control = item("c" + QByteArray::number(index++));
        ASSERT_NE(control, nullptr) << row.name;
        QAccessibleInterface* const access = QAccessible::queryAccessibleInterface(control);
        ASSERT_NE(access, nullptr) << row.name;
        EXPECT_EQ(access->text(QAccessible::Name), QString::fromUtf8(row.name));
        EXPECT_EQ(access->role(), row.role) << row.name;
        if (row.signal == nullptr) continue;
        EXPECT_TRUE(control->property("activeFocusOnTab").toBool() || row.role == QAccessible::MenuItem ||
                    row.role == QAccessible::PageTab)
            << row.name << " cannot be reached with Tab";
        QSignalSpy spy(control, row.signal);
        access->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        EXPECT_EQ(spy.count(), 1) << row.name;
        control->setEnabled(false);
        access->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        EXPECT_EQ(spy.count(), 1) << row.name << " is disabled";
    }
}

} // namespace varnet::test
