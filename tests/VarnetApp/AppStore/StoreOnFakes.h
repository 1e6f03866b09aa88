#pragma once

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/Platform/LoginItem.h"
#include "VarnetApp/Platform/Notifications.h"
#include "probes/fake/FakeProbes.h"
#include "tests/fakes/HandQueue.h"
#include "tests/fakes/TemporaryFolder.h"

#include <QSettings>

#include <memory>
#include <string>
#include <vector>

namespace varnet {

class FakeNotifications final : public platform::Notifications {
public:
    bool granted = true;
    std::vector<std::string> keys;

    void listen(Handlers) override {}
    void requestAuthorization(std::function<void(bool)> answer) override { answer(granted); }
    void deliver(const std::string& key, const std::string&, const std::string&) override {
        keys.push_back(key);
    }
};

class FakeLoginItem final : public platform::LoginItem {
public:
    platform::LoginItemStatus now = platform::LoginItemStatus::notRegistered;
    platform::LoginItemStatus afterRegistering = platform::LoginItemStatus::enabled;
    std::string error; ///< empty: none

    platform::LoginItemStatus status() const override { return now; }
    std::expected<void, std::string> registerItem() override {
        if (!error.empty()) return std::unexpected(error);
        now = afterRegistering;
        return {};
    }
    std::expected<void, std::string> unregisterItem() override {
        now = platform::LoginItemStatus::notRegistered;
        return {};
    }
    bool openSettings() override { return false; }
};

/// A store on a pretended machine whose time a test turns by hand. Both queues are one.
struct StoreOnFakes {
    TemporaryFolder folder;
    FakeClock clock;
    HandQueue queue{clock};
    FakeProbes probes;
    FakeNotifications notifications;
    FakeLoginItem loginItem;
    QSettings defaults{QString::fromStdString(folder.path("settings.ini")), QSettings::IniFormat};
    AppLocalization localization{nullptr};
    bool visible = true;
    int thermal = 0;
    int collectionResets = 0;
    std::shared_ptr<const MonitorSnapshot> preview; ///< prepared data; null: the pretended machine
    std::unique_ptr<VarnetStore> store;

    StoreOnFakes() {
        FakeProcess& node = probes.processes[10];
        node.start = 1'700'000'100'000'000;
        node.name = "node";
        node.path = "/usr/bin/node";
        probes.ticks = VNCPUTicks{};
        open();
    }

    /// A new run of the program on the same files.
    void open() {
        store.reset();
        store = std::make_unique<VarnetStore>(VarnetStore::Setup{
            .probes = probes,
            .clock = clock,
            .engineQueue = queue,
            .mainQueue = queue,
            .localization = localization,
            .notifications = &notifications,
            .loginItem = &loginItem,
            .defaults = &defaults,
            .storage = folder.path(),
            .preview = preview,
            .collaborators = {.thermalState = [this] { return thermal; },
                              .visibleUI = [this] { return visible; },
                              .resetCollection = [this] { ++collectionResets; }},
        });
    }
};

} // namespace varnet
