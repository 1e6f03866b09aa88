#pragma once

#include <functional>
#include <memory>
#include <string>

class QObject;

namespace varnet::platform {

/// The user's own store of passwords. Main thread only; nothing waits for it, and each answer comes later, on
/// the main thread.
class Keychain {
public:
    enum class Outcome { done, missing, failed };
    struct Entry {
        Outcome outcome = Outcome::failed;
        std::string data = {}; ///< bytes; empty unless done
    };

    virtual ~Keychain() = default;

    /// @param service the program's part of the store
    /// @param receiver ends the question with itself; so for the others
    virtual void read(const std::string& service, const std::string& account, QObject* receiver,
                      std::function<void(Entry)> then) = 0;
    virtual void write(const std::string& service, const std::string& account, std::string data,
                       QObject* receiver, std::function<void(bool done)> then) = 0;
    /// Done also when there was nothing.
    virtual void remove(const std::string& service, const std::string& account, QObject* receiver,
                        std::function<void(bool done)> then) = 0;
};

/// That of this session. The application object must exist.
std::unique_ptr<Keychain> makeKeychain();

} // namespace varnet::platform
