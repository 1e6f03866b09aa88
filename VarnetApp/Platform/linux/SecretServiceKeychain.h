#pragma once

#include "VarnetApp/Platform/Keychain.h"
#include "VarnetApp/Platform/linux/BusConnection.h"

#include <memory>

namespace varnet::platform {

/// The session's Secret Service. Reached when it is first asked; nothing is ever kept in plain text beside
/// it.
class SecretServiceKeychain final : public Keychain {
public:
    void read(const std::string& service, const std::string& account, QObject* receiver,
              std::function<void(Entry)> then) override;
    void write(const std::string& service, const std::string& account, std::string data, QObject* receiver,
               std::function<void(bool done)> then) override;
    void remove(const std::string& service, const std::string& account, QObject* receiver,
                std::function<void(bool done)> then) override;

private:
    void tellMissingFromLocked(const std::string& service, const std::string& account, QObject* receiver,
                               std::function<void(Entry)> then);

    std::unique_ptr<BusConnection> bus_;
};

} // namespace varnet::platform
