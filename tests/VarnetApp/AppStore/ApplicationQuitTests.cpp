#include "tests/VarnetApp/AppStore/StoppingFixture.h"

#include <unistd.h>

#include <functional>

namespace varnet {
namespace {

using Asked = std::vector<std::pair<std::int32_t, bool>>;

class ApplicationQuitTest : public StoppingFixture {
protected:
    /// Leaves no question, no request and no message behind.
    void forget() {
        stopping().answerQuit(QuitAnswer::cancel);
        quitting.asked.clear();
        store->setActionMessage("");
    }
};

TEST_F(ApplicationQuitTest, asksOnlyAboutWhatRunsAndIsTheUsers) {
    constexpr const char* readOnly = "This application is read only for the current user.";
    constexpr const char* notRunning = "This application is no longer running.";
    add(600, "Root", 1).uid = 0;
    add(getpid(), "varnet", 1);
    queue.advance(12);
    ApplicationDescriptor moved = application(0);
    moved.bundlePath = "/elsewhere/Editor.desktop";
    struct Row {
        const char* oddity;
        ApplicationDescriptor application;
        std::string message;
    };
    for (const Row& row : std::vector<Row>{
             {"not in the picture", {"/a.desktop", "a", "A", 999, {}}, readOnly},
             {"another user's", {"/a.desktop", "a", "A", 600, {}}, readOnly},
             {"this program", {"/a.desktop", "a", "A", static_cast<std::int32_t>(getpid()), {}}, notRunning},
             {"a process, but no application", {"/a.desktop", "a", "A", server, {}}, notRunning},
             {"an application from elsewhere", moved, notRunning},
         }) {
        stopping().quit(row.application, StopForce::polite);
        EXPECT_EQ(message(), row.message) << row.oddity;
        EXPECT_FALSE(stopping().quitRequest()) << row.oddity;
        forget();
    }
    EXPECT_TRUE(quitting.asked.empty());
}

TEST_F(ApplicationQuitTest, theQuestionSaysWhatIsLost) {
    stopping().quit(application(0), StopForce::polite);
    ASSERT_TRUE(stopping().quitRequest());
    EXPECT_EQ(stopping().quitRequest()->message, "Quit Editor?");
    EXPECT_EQ(stopping().quitRequest()->quitTitle, "Quit");
    EXPECT_EQ(stopping().quitRequest()->forceQuitTitle, "Force Quit");
    stopping().quit(application(1), StopForce::polite);
    EXPECT_EQ(stopping().quitRequest()->message, "Quit Editor?") << "one question at a time";
    forget();
    stopping().quit(application(0), StopForce::forced);
    EXPECT_EQ(stopping().quitRequest()->message, "Force quit Editor?");
    EXPECT_EQ(stopping().quitRequest()->quitTitle, "Force Quit");
    EXPECT_EQ(stopping().quitRequest()->forceQuitTitle, "") << "there is nothing further to go";
}

TEST_F(ApplicationQuitTest, doesWhatWasAnsweredIfItIsStillTheSame) {
    constexpr const char* changed =
        "The application changed while this dialog was open. Please inspect it again.";
    constexpr const char* left = "Editor has left the building.";
    constexpr const char* deaf = "Editor did not accept the request. Open the app to check its status.";
    using enum StopForce;
    using enum QuitAnswer;
    const Asked politely{{editor, false}};
    const Asked forcibly{{editor, true}};
    auto& process = probes.processes[editor];
    const FakeProcess original = process;
    const std::function<void()> nothing = [] {};
    const auto givenAway = [&] { probes.processes[editor].start += 1; };
    const auto takenOver = [&] { probes.processes[editor].uid = 0; };
    const auto ended = [&] { probes.processes.erase(editor); };
    const auto doesNotListen = [&] { quitting.applications[editor].accepts = false; };
    struct Row {
        const char* oddity;
        StopForce force;
        QuitAnswer answer;
        std::function<void()> meanwhile;
        Asked asked;
        const char* message;
    };
    const std::vector<Row> rows{
        {"cancelled", polite, cancel, nothing, {}, ""},
        {"closed on a forced question", forced, cancel, nothing, {}, ""},
        {"quit", polite, quit, nothing, politely, left},
        {"the third button", polite, forceQuit, nothing, forcibly, left},
        {"forced from the start", forced, quit, nothing, forcibly, left},
        {"its pid was given away", polite, quit, givenAway, {}, changed},
        {"it is another user's now", polite, quit, takenOver, {}, changed},
        {"it ended by itself", forced, quit, ended, {}, changed},
        {"it does not listen", polite, quit, doesNotListen, politely, deaf},
    };
    for (const Row& row : rows) {
        stopping().quit(application(0), row.force);
        ASSERT_TRUE(stopping().quitRequest()) << row.oddity;
        row.meanwhile();
        stopping().answerQuit(row.answer);
        EXPECT_FALSE(stopping().quitRequest()) << row.oddity;
        EXPECT_EQ(quitting.asked, row.asked) << row.oddity;
        EXPECT_EQ(message(), row.message) << row.oddity;
        forget();
        probes.processes[editor] = original;
        quitting.applications[editor].accepts = true;
    }
}

TEST_F(ApplicationQuitTest, waitsForTheConfirmedExit) {
    quitting.applications[editor].goes = false;
    stopping().quit(application(0), StopForce::polite);
    stopping().answerQuit(QuitAnswer::quit);
    EXPECT_EQ(message(), "Quit requested for Editor. Waiting for confirmed exit…");
    queue.advance(9);
    EXPECT_EQ(message(), "Quit requested for Editor. Waiting for confirmed exit…");
    probes.processes.erase(editor);
    queue.advance(0.6);
    EXPECT_EQ(message(), "Editor has left the building.");
    EXPECT_EQ(history(), "Quit Editor | Confirmed exited.");
    EXPECT_TRUE(store->stoppedServices().empty());
    EXPECT_TRUE(told.empty());
}

TEST_F(ApplicationQuitTest, saysSoWhenItStays) {
    quitting.applications[editor].goes = false;
    stopping().quit(application(0), StopForce::forced);
    stopping().answerQuit(QuitAnswer::quit);
    EXPECT_EQ(message(), "Force quit requested for Editor. Waiting for confirmed exit…");
    queue.advance(11);
    EXPECT_EQ(message(), "Editor is still running. Check its windows for a save or confirmation dialog.");
    EXPECT_EQ(history(), "Force quit Editor | Still running; request was not reported as a successful exit.");
}

} // namespace
} // namespace varnet
