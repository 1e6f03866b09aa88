#include "VarnetApp/Previews/Picture.h"

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Application/DockFlame.h"
#include "VarnetApp/Components/Theme.h"
#include "VarnetApp/FlameCollectionStore/FlameCollectionStore.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/Previews/PreparedCollection.h"
#include "VarnetApp/Previews/PreparedMachine.h"
#include "VarnetApp/Previews/PreparedUpdates.h"
#include "VarnetApp/StorageStore/DiskStorageStore.h"
#include "VarnetApp/Updates/AppUpdater.h"
#include "probes/SystemProbes.h"

#include <QCoreApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickRenderControl>
#include <QQuickRenderTarget>
#include <QQuickWindow>

#include <cmath>
#include <memory>

namespace varnet {

namespace {

/// Stands still at the moment that the prepared data is of.
class StillClock final : public Clock {
public:
    Date now() const override { return PreparedMachine::now() + 2; }
};

/// Nothing of prepared data is ever measured, so nothing is ever run.
class IdleQueue final : public SerialQueue {
public:
    void postAfter(double, Task) override {}
};

/// What stands behind a view in a picture.
struct Stage {
    Stage(const Picture& picture, const QString& language)
        : localization(nullptr, language),
          collection({.clock = clock,
                      .mainQueue = queue,
                      .writer = queue,
                      .file = picture.collectionFile,
                      .prepared = picture.collection ? picture.collection() : PreparedCollection::started()}),
          store(
              {.probes = probes,
               .clock = clock,
               .engineQueue = queue,
               .mainQueue = queue,
               .localization = localization,
               .storage = {},
               .user = PreparedMachine::user,
               .preview = picture.data(),
               .collaborators = {.unlockedBadges = [this] { return collection.archive().unlocked.size(); }}}),
          wholeDisk({.probes = probes,
                     .clock = clock,
                     .mainQueue = queue,
                     .scans = queue,
                     .questions = queue,
                     .preview = true}),
          storage({.probes = probes,
                   .clock = clock,
                   .mainQueue = queue,
                   .jobs = queue,
                   .home = "/home/dana",
                   .preview = true},
                  wholeDisk),
          flame(store.settings()),
          updater(
              {.version = "1.3.0", .mainQueue = &queue, .framework = picture.updates ? &updates : nullptr}),
          cloud(clock, picture.cloud ? picture.cloud() : CloudStore::Prepared{.configured = false}),
          context{store,   localization, clock,    &flame,   picture.actions,
                  nullptr, &collection,  &storage, &updater, &cloud} {}

    SystemProbes probes;
    StillClock clock;
    IdleQueue queue;
    AppLocalization localization;
    FlameCollectionStore collection;
    VarnetStore store;
    WholeDiskStore wholeDisk;
    DiskStorageStore storage;
    DockFlame flame;
    PreparedUpdates updates;
    AppUpdater updater;
    CloudStore cloud;
    ViewContext context;
};

/// Lets bindings, layouts and posted events come to rest.
void settle() {
    for (int i = 0; i < 4; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
}

} // namespace

QImage paint(const Picture& picture, Look look, double scale, const QString& language) {
    Theme::shared().setDark(look == Look::dark);
    Theme::shared().setReducedMotion(true);
    Stage stage(picture, language);
    stage.store.setPreviewOnboarded(picture.onboarded);
    if (picture.prepare) picture.prepare(stage.store);
    if (picture.storage) picture.storage(stage.storage);
    if (picture.deed) picture.deed(stage.collection);
    stage.updater.start();
    if (picture.updates) picture.updates(stage.updates);

    QQuickRenderControl control;
    QQuickWindow window(&control);
    window.setColor(Theme::shared().bg());
    QQmlEngine engine;
    stage.context.give(engine);
    QQmlComponent component(&engine, QUrl("qrc:/qt/qml/Varnet/" + picture.view + ".qml"));
    const std::unique_ptr<QObject> made(component.create());
    auto* const root = qobject_cast<QQuickItem*>(made.get());
    if (!root) {
        qWarning("%s cannot be shown: %s", qPrintable(picture.view), qPrintable(component.errorString()));
        return {};
    }
    QSize size = picture.size;
    root->setParentItem(window.contentItem());
    root->setWidth(size.width());
    // Words that wrap know their height only once they know their width.
    const auto fit = [&] {
        for (int round = 0; picture.size.height() == 0 && round < 3; ++round) {
            settle();
            control.polishItems();
            size.setHeight(static_cast<int>(std::ceil(root->implicitHeight())));
            root->setSize(size);
        }
        root->setSize(size);
        window.setGeometry(QRect(QPoint(), size));
        window.contentItem()->setSize(size);
    };
    fit();
    if (size.isEmpty()) {
        qWarning("%s has no size of its own", qPrintable(picture.view));
        return {};
    }
    root->forceActiveFocus();
    settle();
    // Whoever scrolls must find everything in its place.
    control.polishItems();
    settle();
    if (picture.touch) picture.touch(*root);
    settle();
    fit();
    settle();

    QImage image(size * scale, QImage::Format_RGB32);
    image.fill(Theme::shared().bg());
    image.setDevicePixelRatio(scale);
    QQuickRenderTarget target = QQuickRenderTarget::fromPaintDevice(&image);
    target.setDevicePixelRatio(scale);
    window.setRenderTarget(target);
    // Painted items learn their pixel size with the first pass.
    for (int pass = 0; pass < 2; ++pass) {
        control.polishItems();
        control.sync();
        control.render();
        settle();
    }
    return image;
}

} // namespace varnet
