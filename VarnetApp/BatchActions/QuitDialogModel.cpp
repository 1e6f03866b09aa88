#include "VarnetApp/BatchActions/QuitDialogModel.h"

#include "VarnetApp/AppStore/VarnetStore.h"

namespace varnet {

void QuitDialogModel::begin() {
    connect(&store().stopping(), &StopOperations::quitRequestChanged, this, &QuitDialogModel::refresh);
    refresh();
}

void QuitDialogModel::refresh() {
    const auto& request = store().stopping().quitRequest();
    isOpen_ = request.has_value();
    if (request) {
        message_ = request->message;
        text_ = request->text;
        quitTitle_ = request->quitTitle;
        forceQuitTitle_ = request->forceQuitTitle;
        critical_ = request->force == StopForce::forced;
    }
    emit changed();
}

void QuitDialogModel::quit() {
    store().stopping().answerQuit(QuitAnswer::quit);
}

void QuitDialogModel::forceQuit() {
    store().stopping().answerQuit(QuitAnswer::forceQuit);
}

void QuitDialogModel::cancel() {
    store().stopping().answerQuit(QuitAnswer::cancel);
}

} // namespace varnet
