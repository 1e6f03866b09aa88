#pragma once

#include "VarnetApp/Platform/Keychain.h"

#include <QTimer>

#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace varnet {

/// A store of one entry that answers a little later, as the real one does, and fails when it is told to.
class FakeKeychain final : public platform::Keychain {
public:
    void read(const std::string& service, const std::string& account, QObject* receiver,
              std::function<void(Entry)> then) override {
        place = service + "/" + account;
        const Entry entry = locked   ? Entry{}
                            : stored ? Entry{Outcome::done, *stored}
                                     : Entry{Outcome::missing};
        ++calls;
        QTimer::singleShot(0, receiver, [entry, then = std::move(then)] { then(entry); });
    }
    void write(const std::string&, const std::string&, std::string data, QObject* receiver,
               std::function<void(bool)> then) override {
        keep(std::move(data), receiver, std::move(then));
    }
    void remove(const std::string&, const std::string&, QObject* receiver,
                std::function<void(bool)> then) override {
        keep(std::nullopt, receiver, std::move(then));
    }

    std::function<void()> changed = [] {}; ///< what is stored is another from now on
    std::optional<std::string> stored;
    std::string place; ///< last asked for
    bool locked = false;
    bool readOnly = false;
    int calls = 0;

private:
    void keep(std::optional<std::string> data, QObject* receiver, std::function<void(bool)> then) {
        const bool done = !locked && !readOnly;
        if (done) stored = std::move(data);
        if (done) changed();
        ++calls;
        QTimer::singleShot(0, receiver, [done, then = std::move(then)] { then(done); });
    }
};

} // namespace varnet
