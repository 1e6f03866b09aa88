#include "VarnetApp/Components/IconPaths.h"
#include "VarnetApp/Localization/Figures.h"
#include "VarnetApp/StorageMap/DiskNames.h"
#include "VarnetApp/StorageMap/MapLooks.h"

#include <gtest/gtest.h>

namespace varnet {
namespace {

TEST(DiskNames, areShownInOneLineAndKeptToTheByte) {
    struct Row {
        const char* name;
        std::string bytes;
        QString shown;
    };
    for (const Row& row : {
             Row{"plain", "/home/dana", "/home/dana"},
             Row{"accents", "Žluťoučký", "Žluťoučký"},
             Row{"not UTF-8", "caf\xE9", QString::fromUtf8("caf\uFFFD")},
             Row{"line break", "two\nlines", QString::fromUtf8("two\uFFFDlines")},
             Row{"writing turned round", "exe.\u202Egpj", QString::fromUtf8("exe.\uFFFDgpj")},
             Row{"a key's own mark", "\x01\xE9", QString::fromUtf8("\uFFFD\uFFFD")},
         }) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(shownName(row.bytes), row.shown);
        EXPECT_EQ(keyFromQml(keyInQml(row.bytes)), row.bytes);
    }
    EXPECT_NE(keyInQml("/caf\xE9"), keyInQml("/café"));
}

TEST(DiskSizes, areToldInThousands) {
    const Figures figures(QLocale::c());
    struct Row {
        std::uint64_t bytes;
        const char* text;
    };
    for (const Row& row : {Row{0, "0 KB"}, Row{1, "1 KB"}, Row{4'096, "4 KB"}, Row{999'499, "999 KB"},
                           Row{999'500, "1.0 MB"}, Row{999'949'999, "999.9 MB"}, Row{999'950'000, "1.0 GB"},
                           Row{418'600'000'000, "418.6 GB"}, Row{UINT64_MAX, "18.4 EB"}})
        EXPECT_EQ(figures.diskSize(row.bytes), row.text) << row.bytes;
}

TEST(MapLooks, haveAnIconForEverySymbol) {
    for (const char* const symbol : {"folder.fill", "doc.fill", "cylinder.split.1x2.fill", "tray.full.fill",
                                     "gearshape.2.fill", "archivebox.fill", "no such symbol"})
        EXPECT_FALSE(iconPathData(MapLooks::iconOf(symbol).toStdString()).empty()) << symbol;
    EXPECT_EQ(MapLooks::iconOf("film.fill"), "film");
}

} // namespace
} // namespace varnet
