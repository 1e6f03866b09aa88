#pragma once

#include "VarnetApp/Components/KeyedListModel.h"
#include "VarnetApp/Components/ViewContext.h"
#include "VarnetApp/UtilityViews/SettingsRows.h"

#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace varnet {

/// Stands behind the settings: what in them is chosen among several, measured or listed. What is simply on or
/// off is the store's own.
class SettingsModel : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    /// Each in its own language.
    Q_PROPERTY(QStringList languages READ languages CONSTANT)
    Q_PROPERTY(int language READ language NOTIFY changed)
    Q_PROPERTY(QStringList appearances READ appearances CONSTANT)
    Q_PROPERTY(int appearance READ appearance NOTIFY changed)
    /// The program starts at login, or will once that is approved.
    Q_PROPERTY(bool login READ login NOTIFY changed)
    Q_PROPERTY(QString fans READ fans NOTIFY changed)
    Q_PROPERTY(bool fansMeasured READ fansMeasured NOTIFY changed)
    Q_PROPERTY(bool hasActions READ hasActions NOTIFY changed)
    /// What was done last, in one line.
    Q_PROPERTY(QString lastAction READ lastAction NOTIFY changed)
    Q_PROPERTY(QString ignoredTitle READ ignoredTitle NOTIFY changed)
    /// Newest first.
    Q_PROPERTY(QAbstractItemModel* actions READ actions CONSTANT)
    Q_PROPERTY(QAbstractItemModel* ignored READ ignored CONSTANT)

public:
    using ViewModel::ViewModel;

    QStringList languages() const;
    int language() const { return shown_.language; }
    Q_INVOKABLE void chooseLanguage(int index);
    QStringList appearances() const;
    int appearance() const { return shown_.appearance; }
    Q_INVOKABLE void chooseAppearance(int index);
    bool login() const { return shown_.login; }
    QString fans() const { return shown_.fans; }
    bool fansMeasured() const { return shown_.fansMeasured; }
    bool hasActions() const { return shown_.hasActions; }
    QString lastAction() const { return shown_.lastAction; }
    QString ignoredTitle() const { return shown_.ignoredTitle; }
    QAbstractItemModel* actions() { return &actions_; }
    QAbstractItemModel* ignored() { return &ignored_; }

    Q_INVOKABLE void openCollection();

signals:
    void changed();

protected:
    void begin() override;

private:
    struct Shown {
        int language = 0;
        int appearance = 0;
        bool login = false;
        QString fans;
        bool fansMeasured = false;
        bool hasActions = false;
        QString lastAction;
        QString ignoredTitle;

        friend bool operator==(const Shown&, const Shown&) = default;
    };

    void refresh();
    void refreshHistory();
    Shown read() const;

    Shown shown_;
    KeyedListModel<ActionEntry> actions_;
    KeyedListModel<IgnoredEntry> ignored_;
};

} // namespace varnet
