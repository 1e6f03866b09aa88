#include "VarnetApp/Previews/PreparedUpdates.h"

#include "VarnetApp/Previews/PreparedMachine.h"

namespace varnet {

namespace {

constexpr const char* newVersion = "1.4.0";

} // namespace

void PreparedUpdates::checked() {
    lastCheck_ = PreparedMachine::now() - 7'200;
    handlers_.stateChanged();
}

void PreparedUpdates::nothingNew() {
    checked();
    handlers_.didNotFindUpdate();
}

void PreparedUpdates::found() {
    checked();
    handlers_.didFindValidUpdate(newVersion);
}

void PreparedUpdates::downloading() {
    found();
    busy_ = true;
    handlers_.stateChanged();
    handlers_.willDownloadUpdate(newVersion);
}

void PreparedUpdates::ready() {
    found();
    handlers_.didExtractUpdate();
}

void PreparedUpdates::aborted() {
    found();
    handlers_.didAbort();
}

} // namespace varnet
