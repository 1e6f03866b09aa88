#include "VarnetApp/BatchActions/SheetRow.h"

namespace varnet {

QVariant SheetRow::value(int role) const {
    switch (role) {
    case 0:
        return name;
    case 1:
        return note;
    case 2:
        return figure;
    case 3:
        return figure2;
    case 4:
        return outcome;
    case 5:
        return detail;
    case 6:
        return static_cast<int>(tone);
    case 7:
        return tile.icon;
    case 8:
        return tile.tone;
    default:
        return tile.letter;
    }
}

QString outcomeText(StopOutcome outcome, const QString& changed) {
    switch (outcome) {
    case StopOutcome::stopped:
        return "Stopped";
    case StopOutcome::alreadyStopped:
        return "Already stopped";
    case StopOutcome::stillRunning:
        return "Still running";
    case StopOutcome::identityChanged:
        return changed;
    case StopOutcome::denied:
        return "Access denied";
    case StopOutcome::failed:
        break;
    }
    return "Failed";
}

OutcomeTone outcomeTone(StopOutcome outcome) noexcept {
    switch (outcome) {
    case StopOutcome::stopped:
        return OutcomeTone::good;
    case StopOutcome::alreadyStopped:
    case StopOutcome::identityChanged:
        return OutcomeTone::muted;
    case StopOutcome::stillRunning:
        return OutcomeTone::warn;
    case StopOutcome::denied:
    case StopOutcome::failed:
        break;
    }
    return OutcomeTone::bad;
}

} // namespace varnet
