#include "VarnetApp/Localization/AppLocalization.h"

#include "VarnetCore/Localization/TranslationCatalog.h"

#include <QFile>
#include <QSettings>

// Outside any namespace: that is where the resource's own function is.
static void initResource() {
    Q_INIT_RESOURCE(languages);
}

namespace varnet {

namespace {

/// The program's own pairs; read once, when somebody first needs them.
std::shared_ptr<const TranslationCatalog> ownCatalog() {
    static const auto catalog = [] {
        initResource();
        QFile file(":/languages/cs.json");
        const QByteArray json = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        return std::make_shared<const TranslationCatalog>(
            TranslationCatalog::parse({json.constData(), static_cast<std::size_t>(json.size())}));
    }();
    return catalog;
}

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
    cache_.clear();
    if (defaults_) defaults_->setValue(languageKey, languageCode());
    emit languageChanged();
}

void AppLocalization::setCatalog(std::shared_ptr<const TranslationCatalog> catalog) {
    catalog_ = std::move(catalog);
    cache_.clear();
}

QString AppLocalization::text(const QString& english) const {
    if (language_ == AppLanguage::english || english.isEmpty()) return english;
    if (const auto known = cache_.constFind(english); known != cache_.constEnd()) return *known;
    if (!catalog_) catalog_ = ownCatalog();
    if (cache_.size() >= mostCached) cache_.clear();
    return *cache_.insert(english, QString::fromStdString(catalog_->text(english.toStdString(), language_)));
}

} // namespace varnet
