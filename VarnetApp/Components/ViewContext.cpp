#include "VarnetApp/Components/ViewContext.h"

#include <QQmlEngine>

namespace varnet {

namespace {

constexpr const char* propertyName = "varnetViewContext";

} // namespace

void ViewContext::give(QQmlEngine& engine) {
    engine.setProperty(propertyName, QVariant::fromValue(static_cast<void*>(this)));
}

ViewContext* ViewContext::of(const QQmlEngine* engine) {
    return engine ? static_cast<ViewContext*>(engine->property(propertyName).value<void*>()) : nullptr;
}

void ViewModel::componentComplete() {
    context_ = ViewContext::of(qmlEngine(this));
    if (context_) {
        begin();
    } else {
        qWarning("%s was made by an engine without a context", metaObject()->className());
    }
}

} // namespace varnet
