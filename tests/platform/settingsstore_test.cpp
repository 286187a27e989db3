// Both forms of the settings: what they have in common, and what a file is in for.
#include "platform/settingsstore.h"

#include "platform/glib/settingsfile.h"
#include "platform/headless/settingsstore.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace vorn {
namespace {

using Bytes = std::vector<unsigned char>;

std::u16string textOf(const SettingsStore& store, std::string_view name)
{
    std::u16string text = u"(none)";
    store.readText(name, text);
    return text;
}

std::int64_t numberOf(const SettingsStore& store, std::string_view name)
{
    std::uint32_t number = 0;
    return store.readNumber(name, number) ? std::int64_t{number} : -1;
}

// Runs the check on a store in memory and on one in a file. What is kept, is kept by `again`.
template <typename Check>
void onBoth(Check check)
{
    MemorySettings memory;
    check(memory, memory);
    const TempFolder folder;
    SettingsFile file(folder.file("settings"));
    SettingsFile again(folder.file("settings"));
    check(file, again);
}

TEST(SettingsStore, hasNoValuesBeforeTheFirst)
{
    onBoth([](SettingsStore& store, SettingsStore&) {
        store.open();
        std::uint32_t number = 7;
        std::u16string text = u"x";
        Bytes bytes = {1};
        EXPECT_FALSE(store.readNumber("A", number));
        EXPECT_FALSE(store.readText("A", text));
        EXPECT_FALSE(store.readBytes("A", bytes));
        EXPECT_EQ(number, 7U);
        EXPECT_EQ(text, u"x");
        EXPECT_EQ(bytes, Bytes{1});
    });
}

TEST(SettingsStore, keepsNumbers)
{
    for (const std::uint32_t number : {0U, 1U, 90U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
        onBoth([number](SettingsStore& store, SettingsStore& again) {
            store.setNumber("A", number);
            EXPECT_EQ(numberOf(store, "A"), number);
            EXPECT_TRUE(store.keep());
            again.open();
            EXPECT_EQ(numberOf(again, "A"), number);
        });
    }
}

TEST(SettingsStore, keepsTexts)
{
    const std::u16string withNull(u"ab\0cd", 5);
    const std::u16string longText(2999, u'x');
    const struct {
        const char* behaviour;
        std::u16string text;
        std::u16string kept;
    } cases[] = {
        {"none",                      u"",               u""              },
        {"a path",                    u"\\C_Drive\\X\\", u"\\C_Drive\\X\\"},
        {"blanks at both ends",       u"  a b  ",        u"  a b  "       },
        {"a line end and a tab",      u"a\nb\tc\rd",     u"a\nb\tc\rd"    },
        {"what looks like a comment", u"#a;[b]=c",       u"#a;[b]=c"      },
        {"letters beyond ASCII",      u"\u00FC\u4E2D",   u"\u00FC\u4E2D"  },
        {"a pair",                    u"\U0001F600",     u"\U0001F600"    },
        {"it ends at a null",         withNull,          u"ab"            },
        {"a long one",                longText,          longText         },
    };
    for (const auto& c : cases) {
        onBoth([&c](SettingsStore& store, SettingsStore& again) {
            store.setText("A", c.text);
            EXPECT_EQ(textOf(store, "A"), c.kept) << c.behaviour;
            EXPECT_TRUE(store.keep());
            again.open();
            EXPECT_EQ(textOf(again, "A"), c.kept) << c.behaviour;
        });
    }
}

TEST(SettingsStore, keepsBytes)
{
    Bytes all(256);
    for (std::size_t at = 0; at < all.size(); ++at)
        all[at] = static_cast<unsigned char>(at);
    for (const Bytes& bytes : {
             Bytes{},
             Bytes{    0},
             Bytes{ 255, 16},
             all
    }) {
        onBoth([&bytes](SettingsStore& store, SettingsStore& again) {
            store.setBytes("A", bytes);
            EXPECT_TRUE(store.keep());
            again.open();
            Bytes kept = {99};
            EXPECT_TRUE(again.readBytes("A", kept));
            EXPECT_EQ(kept, bytes);
        });
    }
}

TEST(SettingsStore, replacesAValue)
{
    onBoth([](SettingsStore& store, SettingsStore& again) {
        store.setNumber("A", 1);
        store.setText("B", u"old");
        store.keep();
        store.setNumber("A", 2);
        store.setText("B", u"new");
        store.keep();
        again.open();
        EXPECT_EQ(numberOf(again, "A"), 2);
        EXPECT_EQ(textOf(again, "B"), u"new");
    });
}

TEST(SettingsStore, dropsWhatWasNotKept)
{
    onBoth([](SettingsStore& store, SettingsStore&) {
        store.setNumber("A", 1);
        store.keep();
        store.setNumber("A", 2);
        store.setNumber("B", 3);
        store.open();
        EXPECT_EQ(numberOf(store, "A"), 1);
        EXPECT_EQ(numberOf(store, "B"), -1);
    });
}

TEST(SettingsStore, tellsTypesApart)
{
    onBoth([](SettingsStore& store, SettingsStore&) {
        store.setText("A", u"text");
        EXPECT_EQ(numberOf(store, "A"), -1);
        Bytes bytes;
        EXPECT_FALSE(store.readBytes("A", bytes));
    });
}

// --- A file

TEST(SettingsStore, isAFileThatPeopleCanRead)
{
    const TempFolder folder;
    SettingsFile store(folder.file("settings"));
    store.setNumber("FSZoom", 90);
    store.setText("DocDir", u"\\C_Drive\\C_MyDocs\\");
    store.setBytes("UsedFn", {3, 0, 255});
    EXPECT_TRUE(store.keep());
    EXPECT_EQ(folder.read("settings"),
              "[Settings]\nFSZoom=90\nDocDir=\\\\C_Drive\\\\C_MyDocs\\\\\nUsedFn=0300ff\n");
}

TEST(SettingsStore, takesDamageForNothing)
{
    const std::string nulls("\0\0\0\0[Settings]\nA=1", 19);
    const struct {
        const char* behaviour;
        std::string bytes;
    } cases[] = {
        {"an empty file",           ""                                     },
        {"no group",                "A=1\n"                                },
        {"another group",           "[Other]\nA=1\n"                       },
        {"a line that is none",     "[Settings]\nA=1\nwhat is this\n"      },
        {"bytes that are no text",  "[Settings]\nA=1\nB=\xFF\xFE\n\x01\x02"},
        {"a group that never ends", "[Settings\nA=1\n"                     },
        {"nulls",                   nulls                                  },
        {"no number",               "[Settings]\nA=one\n"                  },
        {"a number and more",       "[Settings]\nA=1x\n"                   },
        {"a number below none",     "[Settings]\nA=-1\n"                   },
        {"a number of 33 bits",     "[Settings]\nA=4294967296\n"           },
        {"no number at all",        "[Settings]\nA=\n"                     },
    };
    for (const auto& c : cases) {
        const TempFolder folder;
        folder.write("settings", c.bytes);
        SettingsFile store(folder.file("settings"));
        store.open();
        EXPECT_EQ(numberOf(store, "A"), -1) << c.behaviour;
        store.setNumber("A", 5);
        EXPECT_TRUE(store.keep()) << c.behaviour << ": it is written anew";
        store.open();
        EXPECT_EQ(numberOf(store, "A"), 5) << c.behaviour;
    }
}

TEST(SettingsStore, survivesAFileCutAnywhereOrFlipped)
{
    const TempFolder folder;
    SettingsFile whole(folder.file("whole"));
    whole.setNumber("FSZoom", 90);
    whole.setText("DocDir", u"\\x\u00FC\n");
    whole.setBytes("UsedFn", {3, 0, 255});
    whole.keep();
    const std::string bytes = folder.read("whole");
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        for (const bool flip : {false, true}) {
            std::string damaged = flip ? bytes : bytes.substr(0, at);
            if (flip)
                damaged[at] = static_cast<char>(damaged[at] ^ 0x80);
            folder.write("damaged", damaged);
            SettingsFile store(folder.file("damaged"));
            store.open();
            std::uint32_t number = 0;
            std::u16string text;
            Bytes read;
            store.readNumber("FSZoom", number);
            EXPECT_TRUE(number == 90 || number == 9 || number == 0) << at;
            store.readText("DocDir", text);
            store.readBytes("UsedFn", read);
            EXPECT_LE(text.size(), 4U) << at;
            EXPECT_LE(read.size(), 3U) << at;
        }
    }
}

TEST(SettingsStore, refusesBytesThatAreNone)
{
    for (const char* line : {"A=0", "A=0g", "A=0 ", "A=012", "A= 01 2"}) {
        const TempFolder folder;
        folder.write("settings", std::string("[Settings]\n") + line + "\n");
        SettingsFile store(folder.file("settings"));
        store.open();
        Bytes bytes;
        EXPECT_FALSE(store.readBytes("A", bytes)) << line;
    }
}

TEST(SettingsStore, readsPastBlanksAtTheEndOfALine)
{
    const TempFolder folder;
    folder.write("settings", "[Settings]\nA=50 \nB=03ff\t\n");
    SettingsFile store(folder.file("settings"));
    store.open();
    std::uint32_t number = 0;
    EXPECT_TRUE(store.readNumber("A", number));
    EXPECT_EQ(number, 50u);
    Bytes bytes;
    EXPECT_TRUE(store.readBytes("B", bytes));
    EXPECT_EQ(bytes, (Bytes{3, 255}));
}

TEST(SettingsStore, keepsTheLinesOfOthers)
{
    const TempFolder folder;
    folder.write("settings", "# mine\n[Other]\nX=1\n\n[Settings]\n# why\nY=2\nA=3\n");
    SettingsFile store(folder.file("settings"));
    store.open();
    store.setNumber("A", 4);
    store.keep();
    const std::string bytes = folder.read("settings");
    for (const char* part : {"# mine", "[Other]\nX=1", "# why", "Y=2", "A=4"})
        EXPECT_NE(bytes.find(part), std::string::npos) << part;
}

TEST(SettingsStore, makesTheFolderOfItsFile)
{
    const TempFolder folder;
    SettingsFile store(folder.file("config/vorn/settings"));
    store.open();
    store.setNumber("A", 1);
    EXPECT_TRUE(store.keep());
    SettingsFile again(folder.file("config/vorn/settings"));
    again.open();
    EXPECT_EQ(numberOf(again, "A"), 1);
}

TEST(SettingsStore, saysNothingWhereNothingCanBe)
{
    const TempFolder folder;
    folder.write("file", "x");
    for (const std::string& path : {folder.file(""), folder.file("file/settings"),
                                    std::string("/proc/no/such"), std::string()}) {
        SettingsFile store(path);
        store.open();
        store.setNumber("A", 1);
        EXPECT_FALSE(store.keep()) << path;
        store.open();
        EXPECT_EQ(numberOf(store, "A"), -1) << path;
    }
    EXPECT_EQ(folder.read("file"), "x");
}

TEST(SettingsStore, doesNotWaitForWhatIsNoFile)
{
    const TempFolder folder;
    ASSERT_EQ(::mkfifo(folder.file("pipe").c_str(), S_IRUSR | S_IWUSR), 0);
    for (const std::string& path : {folder.file("pipe"), std::string("/dev/zero")}) {
        SettingsFile store(path);
        store.open();
        EXPECT_EQ(numberOf(store, "A"), -1) << path;
    }
}

TEST(SettingsStore, takesNoDevicesPlace)
{
    const TempFolder folder;
    ASSERT_EQ(::mkfifo(folder.file("pipe").c_str(), S_IRUSR | S_IWUSR), 0);
    for (const std::string& path : {folder.file("pipe"), std::string("/dev/null")}) {
        SettingsFile store(path);
        store.setNumber("A", 1);
        EXPECT_FALSE(store.keep()) << path;
        EXPECT_FALSE(std::filesystem::is_regular_file(path)) << path;
    }
}

TEST(SettingsStore, leavesAFileThatNobodyMayWrite)
{
    const TempFolder folder;
    folder.write("settings", "[Settings]\nA=1\n");
    ASSERT_EQ(::chmod(folder.file("settings").c_str(), S_IRUSR), 0);
    SettingsFile store(folder.file("settings"));
    store.open();
    EXPECT_EQ(numberOf(store, "A"), 1);
    store.setNumber("A", 2);
    EXPECT_FALSE(store.keep());
    store.open();
    EXPECT_EQ(numberOf(store, "A"), 1);
}

TEST(SettingsStore, writesBehindALinkAndKeepsTheMode)
{
    const TempFolder folder;
    folder.write("real", "[Settings]\nA=1\n");
    ASSERT_EQ(::chmod(folder.file("real").c_str(), S_IRUSR | S_IWUSR), 0);
    std::filesystem::create_symlink("real", folder.file("settings"));
    SettingsFile store(folder.file("settings"));
    store.open();
    store.setNumber("A", 2);
    EXPECT_TRUE(store.keep());
    EXPECT_TRUE(std::filesystem::is_symlink(folder.file("settings")));
    EXPECT_EQ(folder.read("real"), "[Settings]\nA=2\n");
    EXPECT_EQ(std::filesystem::status(folder.file("real")).permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
}

TEST(SettingsStore, leavesNothingBesideItsFile)
{
    const TempFolder folder;
    SettingsFile store(folder.file("settings"));
    store.setNumber("A", 1);
    store.keep();
    store.keep();
    int files = 0;
    for ([[maybe_unused]] const auto& entry :
         std::filesystem::directory_iterator(std::filesystem::path(folder.file(""))))
        ++files;
    EXPECT_EQ(files, 1);
}

TEST(SettingsStore, keepsNothingInMemoryThatRefuses)
{
    MemorySettings store;
    store.setNumber("A", 1);
    store.keep();
    store.refuses = true;
    store.setNumber("A", 2);
    EXPECT_FALSE(store.keep());
    store.open();
    EXPECT_EQ(numberOf(store, "A"), 1);
}

} // namespace
} // namespace vorn
