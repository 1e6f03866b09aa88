#include "VarnetApp/Components/Singletons.h"

#include "VarnetApp/Components/ViewContext.h"

#include <QJSEngine>

namespace varnet {

namespace {

/// An object of the application's own, which no engine may end.
template <typename Object>
Object* lent(Object& object) {
    QJSEngine::setObjectOwnership(&object, QJSEngine::CppOwnership);
    return &object;
}

} // namespace

VarnetStore* StoreInQml::create(QQmlEngine* engine, QJSEngine*) {
    ViewContext* const context = ViewContext::of(engine);
    return context ? lent(context->store) : nullptr;
}

AppLocalization* AppLocalizationInQml::create(QQmlEngine* engine, QJSEngine*) {
    ViewContext* const context = ViewContext::of(engine);
    return context ? lent(context->localization) : nullptr;
}

DockFlame* DockFlameInQml::create(QQmlEngine* engine, QJSEngine*) {
    ViewContext* const context = ViewContext::of(engine);
    return context && context->dockFlame ? lent(*context->dockFlame) : nullptr;
}

} // namespace varnet
