#include "VarnetApp/UtilityViews/UpdateTexts.h"

#include "VarnetApp/Localization/DateTexts.h"

namespace varnet::UpdateTexts {

QString available(const std::optional<QString>& version) {
    return version ? "Version " + *version + " available" : QString();
}

QString lastChecked(std::optional<Date> date, const QLocale& locale) {
    return date ? "Last checked " + DateTexts::moment(*date, locale) : QString();
}

QString notNow(bool sessionInProgress, const QString& message) {
    return sessionInProgress ? "Already on it." : message;
}

} // namespace varnet::UpdateTexts
