#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

namespace varnet {

/// Cleans up after a file or folder dialog that the desktop does not draw itself. What stands in for it
/// inside the window belongs to the window, not to the dialog, so that each one would stay, with a thread
/// that watches its folder, for as long as the window does. A dialog that owns one of these takes it along.
class DialogRemains : public QObject {
    Q_OBJECT
    QML_ELEMENT

public:
    using QObject::QObject;
    ~DialogRemains() override;

    /// Remembers what was opened. Call after `open()`.
    Q_INVOKABLE void note();

private:
    QList<QPointer<QObject>> shown_;
};

} // namespace varnet
