#pragma once

#include <QObject>
#include <QQmlParserStatus>
#include <QString>

#include <functional>

class QQmlEngine;

namespace varnet {

class AppLocalization;
class AppUpdater;
class Clock;
class CloudStore;
class DiskStorageStore;
class DockFlame;
class FlameCollectionStore;
class VarnetStore;

namespace platform {
class FileOpening;
}

/// What views ask of the process. An empty function: nobody is there to do it.
struct ViewActions {
    std::function<void()> quit = {};
    std::function<void()> closePanel = {};
    std::function<void()> openCloud = {};
    std::function<void()> openFeedback = {};
};

/// What views reach outside their own files. One lives as long as the application, or as a test; every engine
/// that shows views is given it.
struct ViewContext {
    VarnetStore& store;
    AppLocalization& localization;
    const Clock& clock;
    DockFlame* dockFlame = nullptr; ///< null: no flame to set up
    ViewActions actions = {};
    platform::FileOpening* files = nullptr;     ///< null: nobody opens addresses and shows files
    FlameCollectionStore* collection = nullptr; ///< null: no badges are kept
    DiskStorageStore* storage = nullptr;        ///< null: no page measures disks
    AppUpdater* updater = nullptr;              ///< null: nothing is said of updates
    CloudStore* cloud = nullptr;                ///< null: no account

    /// Makes the context known to an engine before it loads anything.
    void give(QQmlEngine& engine);
    /// The one that the engine was given; null when there is none.
    static ViewContext* of(const QQmlEngine* engine);
};

/// Stands behind one view: turns what the store publishes into what the view shows. Made in QML; begins when
/// its view is complete and ends with it.
class ViewModel : public QObject, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)

public:
    using QObject::QObject;

    void classBegin() final {}
    void componentComplete() final;

protected:
    /// The context is there: connect to the store and show what it has.
    virtual void begin() = 0;

    ViewContext& context() const { return *context_; }
    VarnetStore& store() const { return context_->store; }

private:
    ViewContext* context_ = nullptr;
};

} // namespace varnet
