#include "VarnetApp/Platform/linux/DesktopEntry.h"
#include "VarnetApp/Platform/linux/ExecLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace varnet::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(DesktopEntry, localeTagsGoFromTheExactToTheGeneral) {
    EXPECT_THAT(localeTags("sr_YU.UTF-8@Latn"), ElementsAre("sr_YU@Latn", "sr_YU", "sr@Latn", "sr"));
    EXPECT_THAT(localeTags("cs_CZ.UTF-8"), testing::Contains("cs"));
    EXPECT_THAT(localeTags("C.UTF-8"), IsEmpty());
    EXPECT_THAT(localeTags("POSIX"), IsEmpty());
    EXPECT_THAT(localeTags(""), IsEmpty());
}

TEST(DesktopEntry, nameIsTheBestTranslationThatCanBeShown) {
    struct Row {
        const char* oddity;
        const char* locale;
        std::string lines;
        const char* name;
    };
    const std::vector<Row> rows = {
        {"country before language", "cs_CZ.UTF-8", "Name=A\nName[cs]=B\nName[cs_CZ]=C\nName[cs]=D\n", "C"},
        {"language when the country is missing", "de_AT", "Name[de_DE]=X\nName[de]=B\nName=A\n", "B"},
        {"modifier", "sr_YU@Latn", "Name=A\nName[sr]=B\nName[sr@Latn]=C\n", "C"},
        {"foreign languages only", "fr_FR", "Name=A\nName[de]=B\n", "A"},
        {"locale that is no locale", "[]=\n", "Name=A\nName[]=B\n", "A"},
        {"bracket left open", "de", "Name=A\nName[de=B\n", "A"},
        {"key that comes twice", "", "Name=A\nName=B\n", "B"},
        {"translation that is not UTF-8", "de", "Name=A\nName[de]=\xc3(\n", "A"},
        {"only name is not UTF-8", "", "Name=\xff\n", ""},
        {"empty translation", "de", "Name=A\nName[de]=\n", "A"},
        {"windows line ends", "", "Name=A\r\n", "A"},
        {"blanks around the sign", "", "  Name \t=  A b \n", "A b"},
        {"escapes", "", "Name=\\sA\\tb\\nc\\\\d\\q\n", "A b c\\d\\q"},
        {"escape cut off", "", "Name=A\\\n", "A\\"},
        {"line that would break the row", "", "Name=A\x1b[31mb\n", "A [31mb"},
        {"comment", "", "#Name=B\nName=A\n # Name=C\n", "A"},
        {"name of an action", "", "Name=A\n[Desktop Action x]\nName=B\n", "A"},
        {"other case", "", "name=B\nName=A\n", "A"},
        {"no name", "", "Comment=x\n", ""},
    };
    for (const Row& row : rows) {
        const auto entry =
            parseDesktopEntry("[Desktop Entry]\nType=Application\n" + row.lines, localeTags(row.locale));
        ASSERT_TRUE(entry) << row.oddity;
        EXPECT_EQ(entry->name, row.name) << row.oddity;
    }
}

TEST(DesktopEntry, onlyApplicationsAreEntries) {
    struct Row {
        const char* oddity;
        std::string text;
        bool accepted;
    };
    const std::vector<Row> rows = {
        {"byte order mark", "\xEF\xBB\xBF[Desktop Entry]\nType=Application", true},
        {"comment before the group", "#!/usr/bin/env xdg-open\n\n[Desktop Entry]\nType=Application\n", true},
        {"another group first", "[X]\nType=Link\n[Desktop Entry]\nType=Application\n", true},
        {"type behind the group", "[Desktop Entry]\nName=A\n[X]\nType=Application\n", false},
        {"link", "[Desktop Entry]\nType=Link\n", false},
        {"no type", "[Desktop Entry]\nName=A\n", false},
        {"group in other case", "[desktop entry]\nType=Application\n", false},
        {"keys without a group", "Type=Application\n", false},
        {"nothing", "", false},
        {"not text", std::string("\0\xff[Desktop Entry]\0=\n=\n[", 24), false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(parseDesktopEntry(row.text, {}).has_value(), row.accepted) << row.oddity;
    }
}

TEST(DesktopEntry, keysAreReadUnescapedAndUntranslated) {
    const auto entry = parseDesktopEntry(
        "[Desktop Entry]\nType=Application\nExec=a\\s\\\\\"b\nExec[de]=x\nTryExec=/t\nIcon=i\n"
        "X-Flatpak=f\nX-SnapInstanceName=s\nX-SnapAppName=p\nHidden=true\nNoDisplay=1\n"
        "Terminal=True\n",
        localeTags("de"));
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->exec, "a \\\"b");
    EXPECT_EQ(entry->tryExec + entry->icon + entry->flatpak + entry->snap + entry->snapApp, "/tifsp");
    EXPECT_TRUE(entry->hidden);
    EXPECT_TRUE(entry->noDisplay);
    EXPECT_FALSE(entry->terminal) << "only \"true\" is true";
}

TEST(ExecLine, programIsWhatWouldRun) {
    struct Row {
        const char* oddity;
        std::string exec;
        std::string program; ///< empty: none
        std::size_t arguments;
    };
    const std::vector<Row> rows = {
        {"place-holder is no argument", "firefox %u", "firefox", 0},
        {"arguments", "/usr/bin/code --new-window %F", "/usr/bin/code", 1},
        {"quoted with a blank", "\"/opt/My App/run it\" \"%f\"", "/opt/My App/run it", 0},
        {"guarded characters", "\"/opt/\\\"a\\$b\\\\\" x", "/opt/\"a$b\\", 1},
        {"single quotes", "'/opt/a b' c", "/opt/a b", 1},
        {"backslash outside quotes", "/opt/a\\ b", "/opt/a b", 0},
        {"quote in the middle", "/opt/\"a b\"/c", "/opt/a b/c", 0},
        {"percent sign", "/opt/100%%/a", "/opt/100%/a", 0},
        {"settings before it", "env A=1 B=\"x y\" gimp %U", "gimp", 0},
        {"env with options", "/usr/bin/env -i -u LANG --chdir=/ A=1 gimp -x", "gimp", 1},
        {"env of env", "env A=1 env B=2 gimp", "gimp", 0},
        {"env that splits itself", "env -S 'A=1 gimp'", "", 0},
        {"env alone", "env A=1", "", 0},
        {"quote left open", "\"/opt/a b", "", 0},
        {"place-holder for a program", "%f", "", 0},
        {"a folder", "/opt/a/", "", 0},
        {"nothing", "  ", "", 0},
        {"a thousand words",
         "a" +
             [] {
                 std::string s;
                 for (int i = 0; i < 1000; ++i)
                     s += " b";
                 return s;
             }(),
         "a", 255},
    };
    for (const Row& row : rows) {
        const auto line = parseExecLine(row.exec);
        ASSERT_EQ(line.has_value(), !row.program.empty()) << row.oddity;
        if (line) {
            EXPECT_EQ(line->program, row.program) << row.oddity;
            EXPECT_EQ(line->arguments, row.arguments) << row.oddity;
        }
    }
}

TEST(ExecLine, programsThatRunProgramsAreKnownInEveryVersion) {
    for (const char* name : {"sh", "python3", "python3.11", "node", "node-18", "java", "Electron",
                             "electron25", "perl5.36", "bwrap", "wine64-preloader", "ld-linux-x86-64.so.2"}) {
        EXPECT_TRUE(runsOtherPrograms(name)) << name;
    }
    for (const char* name : {"", "7", "firefox", "pythonista", "code", "shotwell", "java-monitor"}) {
        EXPECT_FALSE(runsOtherPrograms(name)) << name;
    }
}

} // namespace
} // namespace varnet::platform
