#include "VarnetApp/Previews/CloudScreens.h"

#include "VarnetApp/Previews/PreparedMachine.h"

#include <QMetaObject>
#include <QQuickItem>
#include <QVariant>

#include <utility>

namespace varnet {

namespace {

constexpr QSize window{600, 680};
constexpr QSize leastWindow{440, 400};
constexpr QSize formWindow{520, 560};

CloudStore::Prepared signedOut() {
    return {};
}

CloudStore::Prepared signingIn() {
    return {.message = "Finish sign-in in your browser. Connecting does not upload history.",
            .busy = true,
            .signingIn = true};
}

CloudCredentials account(const char* mode) {
    return {.token = "token",
            .deviceID = "here",
            .accountID = "account",
            .email = "dana@example.com",
            .generation = "1",
            .mode = mode};
}

CloudStore::Prepared connected() {
    return {.credentials = account("off"), .message = "Connected. Choose how to back up your history."};
}

CloudStore::Prepared backingUp(const char* mode) {
    return {.credentials = account(mode),
            .devices = {{.id = "here",
                         .name = "Dana’s workstation",
                         .platform = "macos",
                         .mode = mode,
                         .archivedAt = {},
                         .lastBackupAt = "2026-11-21T13:24:00Z"},
                        {.id = "laptop",
                         .name = "thinkpad-x-with-a-very-long-host-name.internal.example.com",
                         .platform = "macos",
                         .mode = "community",
                         .archivedAt = {},
                         .lastBackupAt = "2026-11-18T08:02:00Z"},
                        {.id = "old",
                         .name = "Old laptop",
                         .platform = "macos",
                         .mode = "off",
                         .archivedAt = "2026-06-02T10:00:00Z",
                         .lastBackupAt = {}}},
            .lastBackup = PreparedMachine::now() - 420};
}

std::function<void(QQuickItem&)> asking(int mode, bool agreed) {
    return [mode, agreed](QQuickItem& root) {
        if (QObject* const sheet = root.findChild<QObject*>("consent")) {
            QMetaObject::invokeMethod(sheet, "ask", Q_ARG(int, mode));
            sheet->setProperty("agreed", agreed);
        }
    };
}

std::function<void(QQuickItem&)> opening(const char* name) {
    return [name](QQuickItem& root) {
        if (QObject* const sheet = root.findChild<QObject*>(name)) QMetaObject::invokeMethod(sheet, "open");
    };
}

void scrollDown(QQuickItem& root) {
    if (auto* const page = root.findChild<QQuickItem*>("page"))
        page->setProperty("contentY", page->property("contentHeight").toDouble() - page->height());
}

Picture account(const char* name, std::function<CloudStore::Prepared()> cloud,
                std::function<void(QQuickItem&)> touch = {}, QSize size = window) {
    Picture picture{name, "CloudView", size, PreparedMachine::busy, {}, std::move(touch)};
    picture.cloud = std::move(cloud);
    return picture;
}

/// The form as it was filled in.
Picture form(const char* name, bool configured, const char* title, const char* body, const char* email,
             QSize size = formWindow) {
    Picture picture{name, "FeedbackView", size, PreparedMachine::busy};
    picture.cloud = [configured] { return CloudStore::Prepared{.configured = configured}; };
    picture.touch = [title, body, email](QQuickItem& root) {
        if (QObject* const model = root.findChild<QObject*>("feedback")) {
            model->setProperty("title", title);
            model->setProperty("body", body);
            model->setProperty("email", email);
        }
    };
    return picture;
}

} // namespace

std::vector<Picture> cloudScreens() {
    const auto private_ = [] { return backingUp("private"); };
    const auto community = [] { return backingUp("community"); };
    const auto waiting = [] {
        CloudStore::Prepared prepared = backingUp("private");
        prepared.busy = true;
        return prepared;
    };
    const auto restored = [] {
        CloudStore::Prepared prepared = backingUp("private");
        prepared.message = "History restored. A local copy of the previous history was kept.";
        return prepared;
    };
    Picture settings{"cloud-settings", "SettingsView", {640, 420}, PreparedMachine::busy, {}, scrollDown};
    settings.cloud = private_;
    return {
        account("cloud-none", {}),
        account("cloud-signed-out", signedOut),
        account("cloud-signing-in", signingIn),
        account("cloud-connected", connected),
        account("cloud-private", private_),
        account("cloud-community", community, scrollDown),
        account("cloud-busy", waiting),
        account("cloud-restored", restored, scrollDown),
        account("cloud-small", private_, {}, leastWindow),
        account("cloud-consent", connected, asking(1, false)),
        account("cloud-consent-shared", connected, asking(2, true)),
        account("cloud-consent-small", connected, asking(2, true), leastWindow),
        account("cloud-disconnect", private_, opening("confirmDisconnect")),
        account("cloud-restore", private_, opening("confirmRestore")),
        std::move(settings),
        form("feedback-empty", true, "", "", ""),
        form(
            "feedback-written", true, "The flame judged my build",
            "It called my integration tests \"a hobby\". They are a lifestyle.\n\nBesides: could the treemap "
            "remember how far I had zoomed in?",
            "dana@example.com"),
        form("feedback-unavailable", false, "The flame judged my build", "It was right.", "dana"),
        form("feedback-small", false, "", "", "", {400, 440}),
    };
}

} // namespace varnet
