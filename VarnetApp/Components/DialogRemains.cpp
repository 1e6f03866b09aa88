#include "VarnetApp/Components/DialogRemains.h"

#include <QGuiApplication>
#include <QWindow>

namespace varnet {

DialogRemains::~DialogRemains() {
    // The dialog itself may still look at it.
    for (const QPointer<QObject>& one : shown_)
        if (one) one->deleteLater();
}

void DialogRemains::note() {
    for (const QWindow* const window : QGuiApplication::topLevelWindows())
        for (QObject* const child : window->children())
            if (child->inherits("QQuickFileDialogImpl") || child->inherits("QQuickFolderDialogImpl"))
                shown_.append(child);
}

} // namespace varnet
