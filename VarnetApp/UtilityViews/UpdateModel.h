#pragma once

#include "VarnetApp/Components/ViewContext.h"

#include <QString>
#include <QtQml/qqmlregistration.h>

namespace varnet {

/// Stands behind what the settings and the welcome say of updates.
class UpdateModel : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString message READ message NOTIFY changed)
    /// Empty: never.
    Q_PROPERTY(QString lastChecked READ lastChecked NOTIFY changed)
    /// "Version 1.4.0 available"; empty: there is none.
    Q_PROPERTY(QString available READ available NOTIFY changed)
    Q_PROPERTY(bool automatic READ automatic WRITE setAutomatic NOTIFY changed)
    Q_PROPERTY(bool canCheck READ canCheck NOTIFY changed)
    /// Why it cannot be looked for one now.
    Q_PROPERTY(QString notNow READ notNow NOTIFY changed)
    /// Something is looked for or fetched.
    Q_PROPERTY(bool busy READ busy NOTIFY changed)

public:
    using ViewModel::ViewModel;

    QString message() const { return shown_.message; }
    QString lastChecked() const { return shown_.lastChecked; }
    QString available() const { return shown_.available; }
    bool automatic() const { return shown_.automatic; }
    void setAutomatic(bool automatic);
    bool canCheck() const { return shown_.canCheck; }
    QString notNow() const { return shown_.notNow; }
    bool busy() const { return shown_.busy; }

    Q_INVOKABLE void check();
    Q_INVOKABLE void open();

signals:
    void changed();
    /// The user has asked for something, here or elsewhere.
    void asked();

protected:
    void begin() override;

private:
    struct Shown {
        QString message;
        QString lastChecked;
        QString available;
        bool automatic = false;
        bool canCheck = false;
        QString notNow;
        bool busy = false;

        friend bool operator==(const Shown&, const Shown&) = default;
    };

    void refresh();

    Shown shown_;
};

} // namespace varnet
