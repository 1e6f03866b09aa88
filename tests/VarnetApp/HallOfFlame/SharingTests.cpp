#include "VarnetApp/HallOfFlame/RoastSheetModel.h"
#include "VarnetApp/HallOfFlame/WeeklyRoastSheetModel.h"
#include "tests/VarnetApp/HallOfFlame/HallStage.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTest>

namespace varnet {

class SharingTests : public HallStage {
protected:
    /// The dialog that asks where to; null: there is none.
    QObject* dialog() const {
        for (QObject* const object : view->rootObject()->findChildren<QObject*>())
            if (object->inherits("QQuickFileDialog")) return object;
        return nullptr;
    }
};

TEST_F(SharingTests, aWeekIsFrozenSavedAndCopied) {
    open(PreparedCollection::started());
    item("shareWeek")->forceActiveFocus(Qt::TabFocusReason); // brings it into view
    clickOn("Share weekly roast");
    auto* const sheet = find<WeeklyRoastSheetModel>();
    const QString shown =
        "Your week. Lightly roasted. 16–22 November 2026. 11 servers stopped. 12.3 GB moved "
        "to Trash. 3 badges earned";
    EXPECT_NE(called(shown), nullptr);
    collection->cleaned(5, 9'000'000'000);
    EXPECT_NE(called(shown), nullptr) << "what is looked at stands still";
    EXPECT_TRUE(sheet->suggestedFile().path().endsWith("/My-week-lightly-roasted.png"));

    sheet->save(QUrl::fromLocalFile(QString::fromStdString(folder.path("week"))));
    const QImage saved(QString::fromStdString(folder.path("week.png")));
    EXPECT_EQ(saved.size(), QSize(1080, 1080));
    EXPECT_TRUE(saved.textKeys().isEmpty()) << "no words travel beside the picture";
    EXPECT_EQ(sheet->message(), "");
    sheet->save(QUrl::fromLocalFile(QString::fromStdString(folder.path("nowhere/week.png"))));
    EXPECT_NE(called("Couldn’t save this image."), nullptr);
    clickOn("Copy image");
    EXPECT_NE(called("Image copied."), nullptr);
    EXPECT_EQ(QGuiApplication::clipboard()->image().size(), QSize(1080, 1080));
    clickOn("Close");
    EXPECT_TRUE(isGone("copyImage"));
    EXPECT_TRUE(sheet->image().isNull()) << "a closed sheet holds no picture";
}

TEST_F(SharingTests, aReportNamesProjectsOnlyWhenAsked) {
    open(PreparedCollection::started(), Page::overview);
    const auto path = [this](const char* name) { return QString::fromStdString(folder.path(name)); };
    auto* const sheet = find<RoastSheetModel>();
    EXPECT_FALSE(sheet->ready());
    key(Qt::Key_R, Qt::ControlModifier);
    ASSERT_NE(called("Your Mac’s report"), nullptr);
    EXPECT_EQ(view->activeFocusItem(), item("savePng"));
    EXPECT_FALSE(sheet->description().contains("storefront"));
    sheet->save(QUrl::fromLocalFile(path("plain.png")));
    EXPECT_EQ(QImage(path("plain.png")).size(), QSize(1200, 675));

    click(item("includeProjects"));
    EXPECT_TRUE(
        sheet->description().endsWith("Projects: api-gateway, billing-worker, design-tokens, storefront"));
    sheet->save(QUrl::fromLocalFile(path("named.png")));
    EXPECT_NE(QImage(path("plain.png")), QImage(path("named.png")));
    const QString shown = sheet->description();
    store->setPreview(PreparedMachine::calm());
    EXPECT_EQ(sheet->description(), shown) << "what is looked at stands still";
    key(Qt::Key_Escape);
    EXPECT_FALSE(store->showRoast());

    store->presentRoast();
    EXPECT_FALSE(sheet->includeProjects()) << "names are asked for each time";
    EXPECT_NE(sheet->description(), shown);
}

TEST_F(SharingTests, theDialogComesEachTimeAndCallingItOffTellsNothing) {
    open(PreparedCollection::started(), Page::overview);
    store->presentRoast();
    for (int time = 0; time < 2; ++time) {
        click(item("savePng"));
        ASSERT_NE(dialog(), nullptr);
        EXPECT_TRUE(dialog()->property("visible").toBool());
        EXPECT_TRUE(dialog()->property("selectedFile").toUrl().path().endsWith("/my-mac-report.png"));
        QMetaObject::invokeMethod(dialog(), "close");
        QMetaObject::invokeMethod(dialog(), "reject");
        EXPECT_TRUE(QTest::qWaitFor([&] { return dialog() == nullptr; }, 1000));
        EXPECT_EQ(find<RoastSheetModel>()->message(), "");
    }
}

} // namespace varnet
