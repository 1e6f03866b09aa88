#pragma once

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Application/DockFlame.h"
#include "VarnetApp/Localization/AppLocalization.h"

#include <QQmlEngine>
#include <QtQml/qqmlregistration.h>

namespace varnet {

/// The store as QML knows it: its simple fields and its operations.
struct StoreInQml {
    Q_GADGET
    QML_FOREIGN(varnet::VarnetStore)
    QML_NAMED_ELEMENT(Store)
    QML_SINGLETON

public:
    static VarnetStore* create(QQmlEngine* engine, QJSEngine*);
};

/// The language of the texts; views use it through Words.
struct AppLocalizationInQml {
    Q_GADGET
    QML_FOREIGN(varnet::AppLocalization)
    QML_NAMED_ELEMENT(AppLocalization)
    QML_SINGLETON

public:
    static AppLocalization* create(QQmlEngine* engine, QJSEngine*);
};

/// The flame in the Dock, for its settings.
struct DockFlameInQml {
    Q_GADGET
    QML_FOREIGN(varnet::DockFlame)
    QML_NAMED_ELEMENT(DockFlame)
    QML_SINGLETON

public:
    static DockFlame* create(QQmlEngine* engine, QJSEngine*);
};

} // namespace varnet
