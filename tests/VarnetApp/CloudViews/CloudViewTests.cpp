#include "VarnetApp/CloudStore/CloudService.h"
#include "VarnetApp/CloudStore/CloudStore.h"
#include "VarnetCore/Cloud/CloudRecorder.h"
#include "tests/VarnetApp/CloudStore/CloudTestService.h"
#include "tests/VarnetApp/CloudStore/FakeKeychain.h"
#include "tests/VarnetApp/UtilityViews/UtilityStage.h"
#include "tests/fakes/FakeFileOpening.h"
#include "tests/fakes/InlineQueue.h"

#include <QSslConfiguration>

namespace varnet::test {

/// The account's windows over a real connection to a service of the test's own.
class CloudViewTests : public UtilityStage {
protected:
    using Fault = CloudTestService::Fault;

    CloudViewTests() {
        ssl.setCaCertificates({service.authority().certificate});
        files = &browser;
    }
    void TearDown() override {
        UtilityStage::TearDown();
        account.reset();
    }
    /// @param configured this build knows a service
    void connectTo(bool configured) {
        client = std::make_unique<CloudService>(
            CloudService::Setup{.endpoint = configured ? service.endpoint() : QString(),
                                .clock = fakes.clock,
                                .version = "1.2.3",
                                .systemVersion = "Test 1",
                                .ssl = &ssl});
        const std::filesystem::path folder = fakes.folder.path("cloud");
        account = std::make_unique<CloudStore>(CloudStore::Setup{
            .clock = fakes.clock,
            .mainQueue = fakes.queue,
            .recorderQueue = recorderQueue,
            .service = *client,
            .keychain = keychain,
            .keyFile = folder / "installation.json",
            .recorder = std::make_shared<CloudRecorder>(folder / "outbox.sqlite", fakes.clock)});
        cloud = account.get();
    }
    bool eventually(const std::function<bool()>& holds) {
        return QTest::qWaitFor(
            [&] {
                fakes.queue.run();
                return holds();
            },
            20'000);
    }
    void press(const QString& button) {
        focus(knownItem(QAccessible::Button, button));
        key(Qt::Key_Space);
    }
    void signIn() {
        service.authorize();
        press("Sign in");
        ASSERT_TRUE(eventually([&] { return !browser.opened.empty(); }));
        fakes.queue.advance(CloudStore::pollInterval);
        ASSERT_TRUE(eventually([&] { return account->signedIn() && !account->busy(); }));
    }
    bool sheetIsOpen(const char* name) const { return object(name)->property("opened").toBool(); }

    FakeFileOpening browser;
    InlineQueue recorderQueue;
    FakeKeychain keychain;
    CloudTestService service{fakes.clock};
    QSslConfiguration ssl = QSslConfiguration::defaultConfiguration();
    std::unique_ptr<CloudService> client;
    std::unique_ptr<CloudStore> account;
};

TEST_F(CloudViewTests, nothingIsBackedUpWithoutConsent) {
    connectTo(true);
    open("CloudView", {600, 680});
    signIn();
    EXPECT_EQ(object("message")->property("text").toString(),
              "Connected. Choose how to back up your history.");

    const auto choose = [&](const char* mode) {
        focus(knownItem(QAccessible::RadioButton, mode));
        key(Qt::Key_Space);
        ASSERT_TRUE(QTest::qWaitFor([&] { return sheetIsOpen("consent"); }));
    };
    choose("Private backup");
    EXPECT_FALSE(knownItem(QAccessible::Button, "Back up")->isEnabled());
    key(Qt::Key_Escape);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !object("consent")->property("visible").toBool(); }));
    EXPECT_EQ(account->mode(), "off");

    choose("Private backup");
    key(Qt::Key_Space); // the tick box has the keyboard
    ASSERT_TRUE(knownItem(QAccessible::Button, "Back up")->isEnabled());
    press("Back up");
    ASSERT_TRUE(eventually([&] { return account->mode() == "private" && !account->busy(); }))
        << account->message().toStdString();
    EXPECT_TRUE(known(QAccessible::RadioButton, "Private backup")->state().checked);

    // Having agreed to one thing is not having agreed to the other.
    choose("Backup and shared statistics");
    EXPECT_FALSE(knownItem(QAccessible::Button, "Back up")->isEnabled());
    key(Qt::Key_Escape);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !object("consent")->property("visible").toBool(); }));

    press("Disconnect");
    ASSERT_TRUE(QTest::qWaitFor([&] { return focusedName() == "Cancel"; }));
    key(Qt::Key_Space);
    EXPECT_TRUE(account->signedIn());
}

TEST_F(CloudViewTests, whatWasWrittenStaysUntilItArrives) {
    connectTo(true);
    open("FeedbackView", {520, 560});
    const auto write = [&](const QString& field, const QString& text) {
        focus(knownItem(QAccessible::EditableText, field));
        for (const QChar letter : text)
            QTest::keyClick(&view(), letter.toLatin1());
    };
    const auto sendable = [&] { return knownItem(QAccessible::Button, "Send feedback")->isEnabled(); };
    write("Title", "tiles");
    EXPECT_FALSE(sendable());
    write("Tell us more", "too few");
    EXPECT_TRUE(sendable());
    write("Email, if you want an answer", "dana");
    EXPECT_FALSE(sendable());
    write("Email, if you want an answer", "@example.com");
    ASSERT_TRUE(sendable());

    service.fail("feedback", {Fault::serverError});
    press("Send feedback");
    const auto says = [&](const char* text) {
        return [this, text] { return known(QAccessible::AlertMessage, QString::fromUtf8(text)) != nullptr; };
    };
    ASSERT_TRUE(eventually(says("Couldn’t send feedback. Your text is still here. Try again.")));
    EXPECT_EQ(known(QAccessible::EditableText, "Tell us more")->text(QAccessible::Value), "too few");
    ASSERT_TRUE(sendable());

    press("Send feedback");
    ASSERT_TRUE(eventually(says("Thanks. We have your feedback.")));
    EXPECT_EQ(service.feedback.value("body", ""), "too few");
    EXPECT_EQ(service.feedback.value("email", ""), "dana@example.com");
    EXPECT_EQ(known(QAccessible::EditableText, "Tell us more")->text(QAccessible::Value), "");
    EXPECT_FALSE(sendable());
}

TEST_F(CloudViewTests, aBuildWithoutAServiceSaysSo) {
    connectTo(false);
    open("CloudView", {600, 680});
    EXPECT_EQ(known(QAccessible::Button, "Sign in"), nullptr);
    EXPECT_TRUE(object("noService")->property("visible").toBool());
    open("FeedbackView", {520, 560});
    EXPECT_NE(known(QAccessible::AlertMessage, "Feedback is unavailable in this build."), nullptr);
    EXPECT_EQ(service.requests().size(), 0U);
}

} // namespace varnet::test
