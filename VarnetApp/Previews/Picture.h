#pragma once

#include "VarnetApp/Components/ViewContext.h"

#include <QImage>
#include <QSize>
#include <QString>

#include <functional>
#include <memory>

class QQuickItem;

namespace varnet {

struct MonitorSnapshot;
class DiskStorageStore;
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
    /// Sets up what the storage page shows; empty: nothing was ever scanned.
    std::function<void(DiskStorageStore&)> storage = {};
};

enum class Look { dark, light };

/// Paints a picture without a display. Null when the view cannot be made; the reason is printed.
/// @param scale device pixels of a logical one
QImage paint(const Picture& picture, Look look, double scale, const QString& language);

} // namespace varnet
