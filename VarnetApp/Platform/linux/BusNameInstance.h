#pragma once

#include "VarnetApp/Platform/SingleInstance.h"
#include "VarnetApp/Platform/linux/BusConnection.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

#include <memory>

namespace varnet::platform {

/// The object that launchers and later starts of the program speak to.
class ApplicationObject final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public slots:
    void Activate(const QVariantMap& platformData);
    /// The program opens no files: being asked to is being asked for its window.
    void Open(const QStringList& uris, const QVariantMap& platformData);
    void ActivateAction(const QString& action, const QVariantList& parameter,
                        const QVariantMap& platformData);

signals:
    /// @param action empty: none in particular
    void activated(const QString& action, const QString& token);
};

/// The first instance is who owns the program's name on the session's bus.
class BusNameInstance final : public SingleInstance {
public:
    /// @param address of the session's bus; empty: there is none
    /// @param token with which this program was started; may be empty
    BusNameInstance(const QString& address, QString token);
    ~BusNameInstance() override;

    void listen(Handlers handlers) override;
    Claim claim() override;
    bool requestOpen() override;
    bool requestAction(const std::string& action) override;

private:
    /// Calls the first and waits for its answer. @param arguments before the start's own particulars
    bool ask(const QString& member, QVariantList arguments);

    // Constant after construction.
    const QString token_;

    Handlers handlers_;
    ApplicationObject object_;
    std::unique_ptr<BusConnection> bus_;
};

} // namespace varnet::platform
