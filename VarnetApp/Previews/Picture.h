#pragma once

#include "VarnetApp/CloudStore/CloudStore.h"
#include "VarnetApp/Components/ViewContext.h"

#include <QImage>
#include <QSize>
#include <QString>

#include <filesystem>
#include <functional>
#include <memory>

class QQuickItem;

namespace varnet {

class FlameCollectionStore;
struct FlameArchive;
struct MonitorSnapshot;
class DiskStorageStore;
class PreparedUpdates;
class VarnetStore;

/// One picture of a view: which, of what, and how large.
struct Picture {
    QString name; ///< of the file, without theme, scale and suffix
    QString view; ///< name of the QML type
    QSize size;   ///< logical pixels; a height of 0 is as much as the view wants
    std::function<std::shared_ptr<const MonitorSnapshot>()> data;
    /// What the user has done before the picture is taken; empty: nothing.
    std::function<void(VarnetStore&)> prepare = {};
    /// The same, in the finished view.
    std::function<void(QQuickItem&)> touch = {};
    bool onboarded = true;
    ViewActions actions = {};
    /// The collection of badges; empty: one of some weeks.
    std::function<FlameArchive()> collection = {};
    /// What is read of it on a machine that is not prepared; nothing is ever written.
    std::filesystem::path collectionFile = {};
    /// What has just happened to it.
    std::function<void(FlameCollectionStore&)> deed = {};
    /// Sets up what the storage page shows; empty: nothing was ever scanned.
    std::function<void(DiskStorageStore&)> storage = {};
    /// What has come of updates; empty: a copy that there are none for.
    std::function<void(PreparedUpdates&)> updates = {};
    /// The account; empty: a build without a service.
    std::function<CloudStore::Prepared()> cloud = {};
};

enum class Look { dark, light };

/// Paints a picture without a display. Null when the view cannot be made; the reason is printed.
/// @param scale device pixels of a logical one
QImage paint(const Picture& picture, Look look, double scale, const QString& language);

} // namespace varnet
