#pragma once

#include "VarnetApp/Platform/FileOpening.h"
#include "VarnetApp/Platform/linux/BusConnection.h"

#include <QObject>
#include <QString>

#include <memory>
#include <string>
#include <vector>

namespace varnet::platform {

/// Asks the desktop's file manager, then its opening program, then its portal. The bus is connected to when
/// it is first needed.
class DesktopFileOpening final : public QObject, public FileOpening {
    Q_OBJECT

public:
    /// @param address of the session's bus; empty: there is none
    /// @param programs folders in which programs are looked up
    DesktopFileOpening(QString address, std::vector<std::string> programs);
    ~DesktopFileOpening() override;

    bool openUrl(const std::string& url) override;
    bool revealFiles(const std::vector<std::string>& paths) override;
    bool openApplication(const std::vector<std::string>& names) override;

private:
    bool startOpener(const std::string& what) const;
    bool openFolderOf(const std::string& path);
    bool reachable(const QString& service);

    // Constant after construction.
    const QString address_;
    const std::vector<std::string> programs_;

    std::unique_ptr<BusConnection> bus_;
};

} // namespace varnet::platform
