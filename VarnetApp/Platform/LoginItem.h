#pragma once
#include <expected>
#include <string>
namespace varnet::platform {
class LoginItem {
public:
    enum class Status { notRegistered, enabled, requiresApproval, notFound };
    virtual ~LoginItem() = default;
    virtual Status status() = 0;
    virtual std::expected<void, std::string> registerItem() = 0;
    virtual std::expected<void, std::string> unregisterItem() = 0;
    virtual bool openSettings() = 0;
};
} // namespace varnet::platform
