#pragma once

#include "VarnetApp/Platform/TrayItem.h"
#include "VarnetApp/Platform/linux/BusConnection.h"
#include "VarnetApp/Platform/linux/NotifierObject.h"
#include "VarnetApp/Platform/linux/TrayHost.h"
#include "VarnetApp/Platform/linux/TrayMenu.h"

#include <QObject>
#include <QString>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace varnet::platform {

/// The tray item spoken straight over the bus: ready-made ones have no label, no accessible text and a tool
/// tip of one line.
class StatusNotifierItem final : public QObject, public TrayItem {
    Q_OBJECT

public:
    /// @param address of the session's bus; empty: there is none
    explicit StatusNotifierItem(const QString& address);
    ~StatusNotifierItem() override;

    void listen(Handlers handlers) override;
    bool hosted() const override { return host_ && host_->hosted(); }
    void setIcon(std::vector<TrayImage> images) override;
    void setTitle(const std::string& title) override;
    void setToolTip(const std::string& title, const std::string& text) override;
    void setLabel(const std::string& text, const std::string& guide) override;
    void setAccessibleDescription(const std::string& description) override;
    void setMenu(std::vector<TrayMenuEntry> entries) override;

private:
    Handlers handlers_;

    // The connection goes last, and with it the item from the tray.
    std::unique_ptr<BusConnection> bus_;
    NotifierObject object_;
    TrayMenu menu_;
    std::optional<TrayHost> host_; ///< once it listens
};

} // namespace varnet::platform
