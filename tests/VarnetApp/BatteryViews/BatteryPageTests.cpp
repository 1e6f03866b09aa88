#include "VarnetApp/BatteryViews/BatteryModel.h"
#include "VarnetApp/BatteryViews/ChargeCurveModel.h"
#include "VarnetApp/BatteryViews/HealthCurveModel.h"
#include "VarnetApp/Previews/PreparedBattery.h"
#include "VarnetCore/Battery/BatteryTracker.h"
#include "tests/VarnetApp/MainViews/MainWindowStage.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

namespace varnet {
namespace {

class BatteryPageTests : public MainWindowStage {
protected:
    static std::shared_ptr<MonitorSnapshot> with(PreparedBattery::Dashboard battery) {
        auto snapshot = std::make_shared<MonitorSnapshot>(*PreparedMachine::calm());
        snapshot->battery = std::move(battery);
        return snapshot;
    }
    void openPage(PreparedBattery::Dashboard battery, QSize size = {1040, 720}) {
        open(with(std::move(battery)), size);
        key(Qt::Key_8, Qt::ControlModifier);
        ASSERT_NE(find<BatteryModel>(), nullptr);
    }
    static QString descriptionOf(QQuickItem* item) {
        return QAccessible::queryAccessibleInterface(item)->text(QAccessible::Description);
    }
    static Date now() { return PreparedMachine::now(); }
};

TEST_F(BatteryPageTests, namesEveryReadingAndRow) {
    openPage(PreparedBattery::onBattery(now()));
    for (const char* const name :
         {"Charge 82%", "Time remaining 3 hr 24 min", "Power 13.0 W", "Health 91%", "Cycles 214",
          "Temperature 31.4 °C", "Full capacity 4,687 mAh", "Condition Normal", "Adapter —", "This session",
          "Meridian Browser 31.6", "Boardroom 9.2", "Yesterday 10:34 – 11:58 1 hr 24 min"})
        EXPECT_NE(called(name), nullptr) << name;
    EXPECT_EQ(descriptionOf(called("Boardroom 9.2")), "Part of the session lacks measurements");
    EXPECT_EQ(descriptionOf(called("Full capacity 4,687 mAh")), "of 5,150 mAh when new");
    EXPECT_TRUE(descriptionOf(item("chargeChart")).startsWith("Last charge: 82% at 14:28. Highest: 100% at "))
        << descriptionOf(item("chargeChart")).toStdString();
    EXPECT_TRUE(descriptionOf(item("healthChart")).endsWith("91% on 21 Nov."))
        << descriptionOf(item("healthChart")).toStdString();
}

TEST_F(BatteryPageTests, opensFromTheOverviewsCard) {
    open(with(PreparedBattery::onBattery(now())));
    ASSERT_NE(called("Battery 82%"), nullptr);
    EXPECT_EQ(descriptionOf(called("Battery 82%")), "3 hr 24 min · 13.0 W");
    clickOn("Battery 82%");
    EXPECT_NE(called("Charge 82%"), nullptr);
}

TEST_F(BatteryPageTests, isWorkedByKeys) {
    openPage(PreparedBattery::onBattery(now()));
    const auto& curve = *find<ChargeCurveModel>();
    EXPECT_EQ(curve.property("timeLabels").toStringList().size(), 5);
    item("chargeSpan")->forceActiveFocus(Qt::TabFocusReason);
    key(Qt::Key_Right);
    EXPECT_TRUE(curve.week());
    EXPECT_EQ(curve.property("timeLabels").toStringList(),
              QStringList({"Sat", "Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Now"}));
    key(Qt::Key_Tab);
    EXPECT_EQ(view->activeFocusItem(), item("chargeChart"));
    key(Qt::Key_End);
    EXPECT_EQ(descriptionOf(item("chargeChart")), "82% · Sat 14:28 · On battery");
    key(Qt::Key_Left);
    EXPECT_EQ(descriptionOf(item("chargeChart")), "82% · Sat 14:27 · On battery");
    key(Qt::Key_Tab);
    EXPECT_EQ(view->activeFocusItem(), item("healthChart"));
    key(Qt::Key_Home);
    EXPECT_EQ(descriptionOf(item("healthChart")), "97% · 22 Nov · 40 cycles");
    key(Qt::Key_Tab);
    EXPECT_EQ(view->activeFocusItem(), called("View all 6"));
    auto& model = *find<BatteryModel>();
    EXPECT_EQ(model.sessions()->rowCount(), 4);
    key(Qt::Key_Return);
    EXPECT_EQ(model.sessions()->rowCount(), 6);
    EXPECT_NE(called("Show fewer"), nullptr);
}

TEST_F(BatteryPageTests, hoverReadsAPointOut) {
    openPage(PreparedBattery::onBattery(now()));
    QQuickItem* const chart = item("chargeChart");
    QTest::mouseMove(view.get(), chart->mapToScene({chart->width() * 0.3, 40}).toPoint());
    EXPECT_TRUE(QTest::qWaitFor([&] { return descriptionOf(chart).endsWith("· On battery"); }, 1000))
        << descriptionOf(chart).toStdString();
}

TEST_F(BatteryPageTests, tellsEachStateApart) {
    struct Row {
        const char* name;
        PreparedBattery::Dashboard battery;
        const char* shown; ///< names with strokes between them
        bool curve;
    };
    const char* const unsaved = "Battery history could not be saved. Live readings still work.";
    for (const Row& row : {
             Row{"before the first reading", nullptr, "Charge —|Power —|Health —|This session", false},
             Row{"does not answer", PreparedBattery::unreadable(now()), "Charge —|Last session", true},
             Row{"a percentage alone", PreparedBattery::sparse(now()), "Charge 82%|Power —|Cycles —", true},
             Row{"minutes after the start", PreparedBattery::fresh(now()), "Charge 82%|This session", false},
             Row{"charging", PreparedBattery::charging(now()), "Time to full 1 hr 12 min|Adapter 65.0 W",
                 true},
             Row{"history not kept", PreparedBattery::unsaved(now()), unsaved, true},
         }) {
        SCOPED_TRACE(row.name);
        openPage(row.battery, {720, 520});
        for (const QString& name : QString(row.shown).split('|'))
            EXPECT_NE(called(name), nullptr) << name.toStdString();
        EXPECT_EQ(find<ChargeCurveModel>()->ready(), row.curve);
    }
    openPage(PreparedBattery::none(now()));
    EXPECT_NE(
        called("No battery to watch. This machine runs on its cord. Nothing to charge, and nothing that "
               "wears out."),
        nullptr);
    EXPECT_EQ(called("Charge —"), nullptr);
}

TEST_F(BatteryPageTests, drawsNothingAnewWhenNothingChanged) {
    const auto first = with(PreparedBattery::onBattery(now()));
    openPage(first->battery);
    QSignalSpy curve(find<ChargeCurveModel>(), &ChargeCurveModel::changed);
    QSignalSpy health(find<HealthCurveModel>(), &HealthCurveModel::changed);
    QSignalSpy rows(find<BatteryModel>()->apps(), &QAbstractItemModel::dataChanged);
    auto next = std::make_shared<MonitorSnapshot>(*first);
    next->date = now() + 2;
    store->setPreview(next);
    EXPECT_EQ(curve.count(), 0) << "a chart moves by its pixels";
    EXPECT_EQ(health.count(), 0);
    EXPECT_EQ(rows.count(), 0);
    next = std::make_shared<MonitorSnapshot>(*next);
    next->date = now() + 90;
    store->setPreview(next);
    EXPECT_EQ(curve.count(), 1);
    EXPECT_EQ(find<ChargeCurveModel>()->points().size(),
              find<ChargeCurveModel>()->property("labels").toStringList().size());
}

TEST_F(BatteryPageTests, aReadingThatGoesLeavesTheHistory) {
    openPage(PreparedBattery::onBattery(now()));
    store->setPreview(with(PreparedBattery::unreadable(now())));
    EXPECT_NE(called("Charge —"), nullptr);
    EXPECT_NE(called("Last session"), nullptr);
    EXPECT_TRUE(find<ChargeCurveModel>()->ready());
    store->setPreview(with(PreparedBattery::none(now())));
    EXPECT_EQ(called("Charge —"), nullptr);
    store->setPreview(with(PreparedBattery::full(now())));
    EXPECT_NE(called("State Fully charged"), nullptr);
}

} // namespace
} // namespace varnet
