#pragma once

#include "VarnetApp/Platform/Keychain.h"
#include "VarnetCore/Base/AtomicFile.h"
#include "VarnetCore/Base/SmallFile.h"

#include <QTimer>

#include <filesystem>
#include <string>
#include <utility>

namespace varnet {

/// A keychain that outlives a killed program, in a file of the test's.
class FileKeychain final : public platform::Keychain {
public:
    explicit FileKeychain(std::filesystem::path file) : file_(std::move(file)) {}

    void read(const std::string&, const std::string&, QObject* receiver,
              std::function<void(Entry)> then) override {
        const auto text = readSmallFile(file_.string(), 10'000);
        const Entry entry = text ? Entry{Outcome::done, *text} : Entry{Outcome::missing};
        QTimer::singleShot(0, receiver, [entry, then = std::move(then)] { then(entry); });
    }
    void write(const std::string&, const std::string&, std::string data, QObject* receiver,
               std::function<void(bool)> then) override {
        const bool done = !AtomicFile::write(file_, data);
        QTimer::singleShot(0, receiver, [done, then = std::move(then)] { then(done); });
    }
    void remove(const std::string&, const std::string&, QObject* receiver,
                std::function<void(bool)> then) override {
        std::error_code ignored;
        std::filesystem::remove(file_, ignored);
        QTimer::singleShot(0, receiver, [then = std::move(then)] { then(true); });
    }

private:
    const std::filesystem::path file_;
};

} // namespace varnet
