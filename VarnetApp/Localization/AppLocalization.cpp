#include "VarnetApp/Localization/AppLocalization.h"

#include <QSettings>

namespace varnet {

namespace {

constexpr const char* languageKey = "appLanguage";

QString fromView(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace

AppLocalization::AppLocalization(QSettings* defaults, const QString& rendering, QObject* parent)
    : QObject(parent), defaults_(defaults) {
    QString code = rendering;
    if (code.isEmpty() && defaults_) code = defaults_->value(languageKey).toString();
    language_ = appLanguage(code.toStdString());
    locale_ = QLocale(fromView(localeOf(language_)));
}

QString AppLocalization::languageCode() const {
    return fromView(rawValue(language_));
}

void AppLocalization::setLanguageCode(const QString& code) {
    setLanguage(appLanguage(code.toStdString()));
}

void AppLocalization::setLanguage(AppLanguage language) {
    if (language == language_) return;
    language_ = language;
    locale_ = QLocale(fromView(localeOf(language)));
    if (defaults_) defaults_->setValue(languageKey, languageCode());
    emit languageChanged();
}

QString AppLocalization::text(const QString& english) const {
    return english;
}

} // namespace varnet
