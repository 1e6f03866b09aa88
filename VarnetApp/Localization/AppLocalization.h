#pragma once

#include "VarnetCore/Localization/AppLanguage.h"

#include <QHash>
#include <QLocale>
#include <QObject>
#include <QString>

#include <memory>

class QSettings;

namespace varnet {

class TranslationCatalog;

/// The language of the texts on screen. Views and notifications pass finished English sentences through it;
/// nothing below them knows about languages. Main thread only.
class AppLocalization : public QObject {
    Q_OBJECT
    /// "en" or "cs".
    Q_PROPERTY(QString language READ languageCode WRITE setLanguageCode NOTIFY languageChanged)

public:
    /// Reads the choice of earlier.
    /// @param defaults the user's settings, outlives this; null: the choice is neither read nor kept
    /// @param rendering code of the language that a renderer was asked for; empty: the choice holds
    explicit AppLocalization(QSettings* defaults, const QString& rendering = {}, QObject* parent = nullptr);

    AppLanguage language() const noexcept { return language_; }
    QString languageCode() const;
    void setLanguage(AppLanguage language);
    void setLanguageCode(const QString& code);

    /// What figures and dates are written in.
    const QLocale& locale() const noexcept { return locale_; }

    /// Pairs to translate by instead of the program's own; outlive this.
    void setCatalog(std::shared_ptr<const TranslationCatalog> catalog);

    /// The sentence in the chosen language; one that is not known stays as it is. Cheap for what was asked
    /// for lately.
    Q_INVOKABLE QString text(const QString& english) const;

signals:
    void languageChanged();

private:
    /// Sentences remembered; a fuller cache begins anew.
    static constexpr qsizetype mostCached = 2000;

    QSettings* const defaults_;
    mutable std::shared_ptr<const TranslationCatalog> catalog_; ///< null: not needed so far
    mutable QHash<QString, QString> cache_;                     ///< of the chosen language
    AppLanguage language_ = AppLanguage::english;
    QLocale locale_;
};

} // namespace varnet
