#pragma once

#include "VarnetApp/Platform/linux/TrayMenu.h"
#include "VarnetApp/Platform/linux/TrayWire.h"

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QObject>
#include <QString>

#include <optional>

namespace varnet::platform {

/// The tray item as the desktop's host reads it.
class NotifierObject final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category CONSTANT)
    Q_PROPERTY(QString Id READ id CONSTANT)
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(int WindowId READ windowId CONSTANT)
    Q_PROPERTY(QString IconThemePath READ none CONSTANT)
    Q_PROPERTY(QString IconName READ none CONSTANT)
    Q_PROPERTY(varnet::platform::TrayPixmaps IconPixmap READ iconPixmap)
    Q_PROPERTY(QString IconAccessibleDesc READ accessibleDescription)
    Q_PROPERTY(QString OverlayIconName READ none CONSTANT)
    Q_PROPERTY(varnet::platform::TrayPixmaps OverlayIconPixmap READ noPixmap CONSTANT)
    Q_PROPERTY(QString AttentionIconName READ none CONSTANT)
    Q_PROPERTY(varnet::platform::TrayPixmaps AttentionIconPixmap READ noPixmap CONSTANT)
    Q_PROPERTY(QString AttentionMovieName READ none CONSTANT)
    Q_PROPERTY(QString AttentionAccessibleDesc READ accessibleDescription)
    Q_PROPERTY(varnet::platform::TrayToolTip ToolTip READ toolTip)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu CONSTANT)
    Q_PROPERTY(QDBusObjectPath Menu READ menu CONSTANT)
    Q_PROPERTY(QString XAyatanaLabel READ label)
    Q_PROPERTY(QString XAyatanaLabelGuide READ labelGuide)
    Q_PROPERTY(uint XAyatanaOrderingIndex READ orderingIndex CONSTANT)

public:
    static const QString& path();

    NotifierObject();
    /// Shows the item on a connection, which outlives it.
    void publish(QDBusConnection& bus);

    // Each tells the hosts, if it changes anything.
    void setTitle(const QString& title);
    void setIcon(TrayPixmaps icon);
    void setToolTip(TrayToolTip toolTip);
    void setLabel(const QString& label, const QString& guide);
    void setAccessibleDescription(const QString& description);

    QString category() const { return QStringLiteral("SystemServices"); }
    QString id() const { return QStringLiteral("com.varnet.Varnet"); }
    QString title() const { return title_; }
    QString status() const { return QStringLiteral("Active"); }
    int windowId() const { return 0; }
    QString none() const { return QStringLiteral(""); }
    TrayPixmaps noPixmap() const { return {}; }
    TrayPixmaps iconPixmap() const { return icon_; }
    TrayToolTip toolTip() const { return toolTip_; }
    QString accessibleDescription() const { return accessibleDescription_; }
    bool itemIsMenu() const { return false; }
    QDBusObjectPath menu() const { return QDBusObjectPath(TrayMenu::path()); }
    QString label() const { return label_; }
    QString labelGuide() const { return labelGuide_; }
    uint orderingIndex() const { return 0; }

public slots:
    void Activate(int x, int y);
    // Hosts that cannot draw the menu ask for one, and the middle button has no meaning of its own: both are
    // clicks.
    void SecondaryActivate(int x, int y);
    void ContextMenu(int x, int y);
    void Scroll(int delta, const QString& orientation);
    void ProvideXdgActivationToken(const QString& token);

signals:
    void activated(int x, int y);
    void activationToken(const QString& token);

private:
    void tell(const QString& signal, const QVariantList& arguments = {});

    QString title_ = QStringLiteral("Varnet");
    TrayPixmaps icon_;
    TrayToolTip toolTip_;
    QString label_;
    QString labelGuide_;
    QString accessibleDescription_;
    std::optional<QDBusConnection> bus_;
};

} // namespace varnet::platform
