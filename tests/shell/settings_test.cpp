#include "shell/settings.h"

#include "core/error.h"
#include "shell/application.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace vorn {
namespace {

using Bytes = std::vector<unsigned char>;
using Lists = std::vector<std::u16string>;

constexpr const char16_t* DefaultLists[] = {
    u"January,February,March,April,May,June,July,August,September,October,November,December,",
    u"Jan,Feb,Mar,Apr,May,Jun,Jul,Aug,Sep,Oct,Nov,Dec,",
    u"I,II,III,IV,V,VI,VII,VIII,IX,X,XI,XII,",
    u"Sunday,Monday,Tuesday,Wednesday,Thursday,Friday,Saturday,",
    u"Sun,Mon,Tue,Wed,Thu,Fri,Sat,",
};
const Lists AllDefaultLists(std::begin(DefaultLists), std::end(DefaultLists));

void expectDefaults(const Application& app)
{
    EXPECT_TRUE(app.formulaBarVisible);
    EXPECT_EQ(app.moveAfterEnter, MoveNowhere);
    EXPECT_TRUE(app.fullScreenZoomOn);
    EXPECT_EQ(app.fullScreenZoom, 90);
    EXPECT_TRUE(app.commandBand.empty());
    EXPECT_EQ(app.documentFolder, u"\\C_Drive\\C_MyDocs\\");
    for (const std::u16string& file : app.recentFiles)
        EXPECT_EQ(file, u"");
    EXPECT_EQ(app.customLists, AllDefaultLists);
    EXPECT_EQ(app.usedFunctions, (std::array{3, 37, 5, -1, -1, -1, -1, -1, -1, -1}));
}

// Changes every field.
void setAll(Application& app)
{
    app.formulaBarVisible = false;
    app.moveAfterEnter = MoveDown;
    app.fullScreenZoomOn = false;
    app.fullScreenZoom = 125;
    app.commandBand = Bytes(40, 7);
    app.documentFolder = u"/home/x/";
    app.recentFiles = {u"/a.vn", u"/b.vn", u"", u"/d.vn"};
    app.customLists = {u"a,b,", u"one,two,three,"};
    app.usedFunctions = {99, 3, 37, 5, -1, -1, -1, -1, -1, -1};
}

void expectAllSet(const Application& app)
{
    EXPECT_FALSE(app.formulaBarVisible);
    EXPECT_EQ(app.moveAfterEnter, MoveDown);
    EXPECT_FALSE(app.fullScreenZoomOn);
    EXPECT_EQ(app.fullScreenZoom, 125);
    EXPECT_EQ(app.commandBand, Bytes(40, 7));
    EXPECT_EQ(app.documentFolder, u"/home/x/");
    EXPECT_EQ(app.recentFiles[1], u"/b.vn");
    EXPECT_EQ(app.recentFiles[2], u"");
    EXPECT_EQ(app.recentFiles[3], u"/d.vn");
    EXPECT_EQ(app.customLists, (Lists{u"a,b,", u"one,two,three,"}));
    EXPECT_EQ(app.usedFunctions, (std::array{99, 3, 37, 5, -1, -1, -1, -1, -1, -1}));
}

TEST(Settings, areTheDefaultsAtTheFirstStart)
{
    TestPlatform machine;
    Application app;
    EXPECT_TRUE(app.customLists.empty()) << "nothing is loaded before somebody asks";
    loadSettings();
    expectDefaults(app);
}

TEST(Settings, areTheDefaultsOnAMachineThatKeepsNone)
{
    TestPlatform machine;
    platform.settingsStore = nullptr;
    Application app;
    setAll(app);
    saveSettings();
    loadSettings();
    expectDefaults(app);
}

TEST(Settings, surviveARestart)
{
    TestPlatform machine;
    {
        Application app;
        loadSettings();
        setAll(app);
        saveSettings();
    }
    Application app;
    loadSettings();
    expectAllSet(app);
}

TEST(Settings, areLostWithoutAnybodySavingThem)
{
    TestPlatform machine;
    {
        Application app;
        loadSettings();
        setAll(app);
    }
    Application app;
    loadSettings();
    expectDefaults(app);
}

TEST(Settings, areLostSilentlyWhereNothingCanBeWritten)
{
    TestPlatform machine;
    machine.settings.refuses = true;
    Application app;
    loadSettings();
    setAll(app);
    saveSettings();
    EXPECT_TRUE(machine.userInterface.boxes.empty());
    EXPECT_EQ(errorState.code, ErrorNone);
    expectAllSet(app);
    loadSettings();
    expectDefaults(app);
}

TEST(Settings, keepTheirNamesAndTypes)
{
    TestPlatform machine;
    Application app;
    setAll(app);
    saveSettings();
    const SettingsStore& store = machine.settings;
    const struct {
        const char* name;
        std::uint32_t value;
    } numbers[] = {
        {"FmlBar",  0  },
        {"MvEnter", 2  },
        {"DFSZoom", 0  },
        {"FSZoom",  125},
    };
    for (const auto& c : numbers) {
        std::uint32_t value = 99;
        EXPECT_TRUE(store.readNumber(c.name, value)) << c.name;
        EXPECT_EQ(value, c.value) << c.name;
    }
    const struct {
        const char* name;
        const char16_t* value;
    } texts[] = {
        {"DocDir",   u"/home/x/"            },
        {"RecFile1", u"/a.vn"               },
        {"RecFile2", u"/b.vn"               },
        {"RecFile3", u""                    },
        {"RecFile4", u"/d.vn"               },
        {"CLst",     u"a,b,;one,two,three,;"},
    };
    for (const auto& c : texts) {
        std::u16string value = u"?";
        EXPECT_TRUE(store.readText(c.name, value)) << c.name;
        EXPECT_EQ(value, c.value) << c.name;
    }
    Bytes band;
    EXPECT_TRUE(store.readBytes("CommandBand", band));
    EXPECT_EQ(band, Bytes(40, 7));
    Bytes used;
    EXPECT_TRUE(store.readBytes("UsedFn", used));
    ASSERT_EQ(used.size(), 40U);
    EXPECT_EQ(Bytes(used.begin(), used.begin() + 8), (Bytes{99, 0, 0, 0, 3, 0, 0, 0}));
    EXPECT_EQ(Bytes(used.begin() + 16, used.begin() + 20), Bytes(4, 255));
}

TEST(Settings, takeNumbersThatMakeSense)
{
    const struct {
        const char* name;
        std::uint32_t value;
        int field; // what FmlBar, MvEnter, DFSZoom or FSZoom then is
    } cases[] = {
        {"FmlBar",  0,          0  },
        {"FmlBar",  1,          1  },
        {"FmlBar",  2,          1  },
        {"MvEnter", 0,          0  },
        {"MvEnter", 1,          1  },
        {"MvEnter", 2,          2  },
        {"MvEnter", 3,          0  },
        {"MvEnter", 0xFFFFFFFF, 0  },
        {"DFSZoom", 0,          0  },
        {"DFSZoom", 0xFFFFFFFF, 1  },
        {"FSZoom",  0,          90 },
        {"FSZoom",  24,         90 },
        {"FSZoom",  25,         25 },
        {"FSZoom",  200,        200},
        {"FSZoom",  201,        90 },
        {"FSZoom",  0x80000019, 90 },
    };
    for (const auto& c : cases) {
        TestPlatform machine;
        machine.settings.setNumber(c.name, c.value);
        machine.settings.keep();
        Application app;
        loadSettings();
        const std::string name = c.name;
        const int field = name == "FmlBar"    ? (app.formulaBarVisible ? 1 : 0)
                          : name == "MvEnter" ? int{app.moveAfterEnter}
                          : name == "DFSZoom" ? (app.fullScreenZoomOn ? 1 : 0)
                                              : app.fullScreenZoom;
        EXPECT_EQ(field, c.field) << c.name << ' ' << c.value;
    }
}

TEST(Settings, areNotReadFromAnotherType)
{
    TestPlatform machine;
    for (const char* name : {"FmlBar", "MvEnter", "DFSZoom", "FSZoom", "CommandBand", "UsedFn"})
        machine.settings.setText(name, u"1");
    for (const char* name : {"DocDir", "RecFile1", "RecFile4", "CLst"})
        machine.settings.setNumber(name, 1);
    machine.settings.keep();
    Application app;
    loadSettings();
    expectDefaults(app);
}

TEST(Settings, takeTextsUpToTheirLength)
{
    const struct {
        const char* name;
        std::size_t most; // with its null the value has 200, 520 or 6,000 bytes
    } cases[] = {
        {"DocDir",   99  },
        {"RecFile1", 259 },
        {"RecFile2", 259 },
        {"RecFile3", 259 },
        {"RecFile4", 259 },
        {"CLst",     2999},
    };
    for (const auto& c : cases) {
        for (const bool tooLong : {false, true}) {
            TestPlatform machine;
            std::u16string value(tooLong ? c.most + 1 : c.most, u'x');
            value.back() = u';';
            machine.settings.setText(c.name, value);
            machine.settings.keep();
            Application app;
            loadSettings();
            if (tooLong) {
                expectDefaults(app);
                continue;
            }
            const std::string name = c.name;
            if (name == "DocDir") {
                EXPECT_EQ(app.documentFolder, value);
            } else if (name == "CLst") {
                EXPECT_EQ(app.customLists, Lists{value.substr(0, value.size() - 1)});
            } else {
                EXPECT_EQ(app.recentFiles[static_cast<std::size_t>(name.back() - '1')], value);
            }
        }
    }
}

TEST(Settings, dropAFolderThatWasTooLongToBeReadAgain)
{
    TestPlatform machine;
    Application app;
    app.documentFolder = std::u16string(100, u'x');
    saveSettings();
    std::u16string written;
    EXPECT_TRUE(machine.settings.readText("DocDir", written));
    EXPECT_EQ(written.size(), 100U);
    loadSettings();
    EXPECT_EQ(app.documentFolder, u"\\C_Drive\\C_MyDocs\\");
}

TEST(Settings, takeTheSizesOfTheBandsWholeOrNotAtAll)
{
    for (const std::size_t size : {0U, 20U, 39U, 40U, 41U, 80U}) {
        TestPlatform machine;
        machine.settings.setBytes("CommandBand", Bytes(size, 1));
        machine.settings.keep();
        Application app;
        loadSettings();
        EXPECT_EQ(app.commandBand.size(), size == 40 ? 40U : 0U) << size;
        saveSettings(); // a shell without bands leaves what others wrote
        Bytes kept;
        machine.settings.open();
        EXPECT_TRUE(machine.settings.readBytes("CommandBand", kept));
        EXPECT_EQ(kept.size(), size);
    }
}

TEST(Settings, takeTheRowsOfFunctionsThatThereAre)
{
    const struct {
        const char* behaviour;
        Bytes first; // of 40 bytes, the others 255
        int row;
    } cases[] = {
        {"the first row",             {0, 0, 0, 0},         0  },
        {"the last row",              {188, 0, 0, 0},       188},
        {"one behind it",             {189, 0, 0, 0},       -1 },
        {"a step of undo programs",   {128, 0, 0, 0},       -1 },
        {"none",                      {255, 255, 255, 255}, -1 },
        {"a negative row is none",    {254, 255, 255, 255}, -1 },
        {"a row that fills the word", {3, 0, 0, 128},       -1 },
    };
    for (const auto& c : cases) {
        TestPlatform machine;
        Bytes value = c.first;
        value.resize(40, 255);
        machine.settings.setBytes("UsedFn", value);
        machine.settings.keep();
        Application app;
        loadSettings();
        EXPECT_EQ(app.usedFunctions[0], c.row) << c.behaviour;
        for (std::size_t index = 1; index < 10; ++index)
            EXPECT_EQ(app.usedFunctions[index], -1) << c.behaviour;
    }
    for (const std::size_t size : {0U, 4U, 39U, 41U, 44U}) {
        TestPlatform machine;
        machine.settings.setBytes("UsedFn", Bytes(size, 0));
        machine.settings.keep();
        Application app;
        loadSettings();
        expectDefaults(app);
    }
}

TEST(Settings, clearTheListsForAnEmptyText)
{
    TestPlatform machine;
    Application app;
    loadSettings();
    app.customLists.clear();
    saveSettings();
    loadSettings();
    EXPECT_EQ(app.customLists, Lists{});
}

TEST(Settings, replaceTheListsThatCameWithTheProgram)
{
    TestPlatform machine;
    machine.settings.setText("CLst", u"a,b,;");
    machine.settings.keep();
    Application app;
    loadSettings();
    EXPECT_EQ(app.customLists, Lists{u"a,b,"});
}

TEST(Settings, leaveTheValuesOfOthersAlone)
{
    TestPlatform machine;
    machine.settings.setNumber("TasksLen", 5);
    machine.settings.keep();
    Application app;
    loadSettings();
    saveSettings();
    machine.settings.open();
    std::uint32_t value = 0;
    EXPECT_TRUE(machine.settings.readNumber("TasksLen", value));
    EXPECT_EQ(value, 5U);
}

// --- Lists as one text

TEST(Settings, splitListsAtTheirEnds)
{
    const struct {
        const char* behaviour;
        const char16_t* text;
        Lists lists;
    } cases[] = {
        {"no list",                    u"",         {}              },
        {"one",                        u"a,b,;",    {u"a,b,"}       },
        {"two",                        u"a,b,;c,;", {u"a,b,", u"c,"}},
        {"a part without its end",     u"a,b,;c,",  {u"a,b,"}       },
        {"only such a part",           u"c,",       {}              },
        {"an empty list",              u";a,;",     {u"", u"a,"}    },
        {"items without a last comma", u"a,b;",     {u"a,b"}        },
    };
    for (const auto& c : cases)
        EXPECT_EQ(splitCustomLists(c.text), c.lists) << c.behaviour;
}

TEST(Settings, joinListsAsLongAsTheyFit)
{
    const std::u16string most(2998, u'x');
    const std::u16string half(1499, u'x');
    const struct {
        const char* behaviour;
        Lists lists;
        std::u16string text;
    } cases[] = {
        {"no list",                       {},                     u""                                },
        {"two",                           {u"a,b,", u"c,"},       u"a,b,;c,;"                        },
        {"one that fills it",             {most},                 most + u";"                        },
        {"one that is too long",          {most + u"x"},          u""                                },
        {"two of which one fits",         {half, half},           half + u";"                        },
        {"none behind one that does not", {u"a,", most, u"b,"},   u"a,;"                             },
        {"two that fill it",              {half, half.substr(1)}, half + u";" + half.substr(1) + u";"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(joinCustomLists(c.lists), c.text) << c.behaviour;
        EXPECT_LE(joinCustomLists(c.lists).size(), CustomListsMax) << c.behaviour;
    }
}

} // namespace
} // namespace vorn
