#pragma once

#include "VarnetApp/CloudStore/CloudAccount.h"
#include "VarnetApp/Components/KeyedListModel.h"
#include "VarnetApp/Components/ViewContext.h"

#include <QLocale>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace varnet {

/// A machine of the account.
struct CloudDeviceRow {
    std::string key;
    CloudDevice device;
    bool isThis = false; ///< the one that this program runs on
    QLocale locale;

    QVariant value(int role) const;
    static std::vector<QByteArray> roles();
    friend bool operator==(const CloudDeviceRow&, const CloudDeviceRow&) = default;
};

/// Stands behind the cloud's window and its line in the settings.
class CloudModel : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    /// There is a service to talk to.
    Q_PROPERTY(bool configured READ configured NOTIFY changed)
    Q_PROPERTY(bool signedIn READ signedIn NOTIFY changed)
    Q_PROPERTY(bool signingIn READ signingIn NOTIFY changed)
    Q_PROPERTY(bool busy READ busy NOTIFY changed)
    Q_PROPERTY(QString email READ email NOTIFY changed)
    /// Index among the ways of backing up.
    Q_PROPERTY(int mode READ mode NOTIFY changed)
    Q_PROPERTY(QStringList modeTitles READ modeTitles CONSTANT)
    Q_PROPERTY(QStringList modeNotes READ modeNotes CONSTANT)
    Q_PROPERTY(QString message READ message NOTIFY changed)
    Q_PROPERTY(QString state READ state NOTIFY changed)
    Q_PROPERTY(QString lastBackup READ lastBackup NOTIFY changed)
    Q_PROPERTY(bool hasDevices READ hasDevices NOTIFY changed)
    Q_PROPERTY(QAbstractItemModel* devices READ devices CONSTANT)

public:
    using ViewModel::ViewModel;

    bool configured() const { return shown_.configured; }
    bool signedIn() const { return shown_.signedIn; }
    bool signingIn() const { return shown_.signingIn; }
    bool busy() const { return shown_.busy; }
    QString email() const { return shown_.email; }
    int mode() const { return shown_.mode; }
    QStringList modeTitles() const;
    QStringList modeNotes() const;
    QString message() const { return shown_.message; }
    QString state() const { return shown_.state; }
    QString lastBackup() const { return shown_.lastBackup; }
    bool hasDevices() const { return devices_.size() > 0; }
    QAbstractItemModel* devices() { return &devices_; }

    Q_INVOKABLE void signIn();
    Q_INVOKABLE void cancelSignIn();
    /// The user has agreed to what it means.
    Q_INVOKABLE void choose(int mode);
    Q_INVOKABLE void disconnectAccount();
    Q_INVOKABLE void restore();
    Q_INVOKABLE void openAccount();
    /// The message has been read.
    Q_INVOKABLE void dismissMessage();

    // Windows beside this one.
    Q_INVOKABLE void openCloud();
    Q_INVOKABLE void openFeedback();

signals:
    void changed();

protected:
    void begin() override;

private:
    struct Shown {
        bool configured = false;
        bool signedIn = false;
        bool signingIn = false;
        bool busy = false;
        QString email;
        int mode = 0;
        QString message;
        QString state;
        QString lastBackup;

        friend bool operator==(const Shown&, const Shown&) = default;
    };

    void refresh();
    void refreshDevices();

    Shown shown_;
    KeyedListModel<CloudDeviceRow> devices_;
};

} // namespace varnet
