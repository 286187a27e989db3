// The settings file of the program, from one run to the next.
#include "support/program.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

Outcome runScript(const TempFolder& folder, const std::string& options, const std::string& script)
{
    folder.write("script.txt", script);
    return runProgram(folder, "script --locale en_US " + options + " script.txt");
}

TEST(SettingsOption, writesAtTheEndOfTheProgramOnlyIfThatWasClosed)
{
    const struct {
        const char* behaviour;
        const char* script;
        bool written;
    } cases[] = {
        {"a script that ends",        "view\n",                        false},
        {"one that closes",           "command 40024\n",               true },
        {"one that is kept from it",  "put A1 5\ncommand 40024\n",     false},
        {"one that asks for it",      "settings\n",                    true },
        {"one that stops by mistake", "command 40045\nno such verb\n", false},
    };
    for (const auto& c : cases) {
        const TempFolder folder;
        runScript(folder, "--settings settings", c.script);
        EXPECT_EQ(folder.read("settings").empty(), !c.written) << c.behaviour;
    }
}

TEST(SettingsOption, writesAllValuesInTheirOrder)
{
    const TempFolder folder;
    const Outcome outcome = runScript(folder, "--settings a/b/settings", "command 40024\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output + outcome.errors, "");
    EXPECT_EQ(folder.read("a/b/settings"),
              "[Settings]\n"
              "FmlBar=1\n"
              "MvEnter=0\n"
              "DFSZoom=1\n"
              "FSZoom=90\n"
              "DocDir=\\\\C_Drive\\\\C_MyDocs\\\\\n"
              "RecFile1=\n"
              "RecFile2=\n"
              "RecFile3=\n"
              "RecFile4=\n"
              "CLst=January,February,March,April,May,June,July,August,September,October,November,"
              "December,;Jan,Feb,Mar,Apr,May,Jun,Jul,Aug,Sep,Oct,Nov,Dec,;"
              "I,II,III,IV,V,VI,VII,VIII,IX,X,XI,XII,;"
              "Sunday,Monday,Tuesday,Wednesday,Thursday,Friday,Saturday,;"
              "Sun,Mon,Tue,Wed,Thu,Fri,Sat,;\n"
              "UsedFn=030000002500000005000000" +
                  std::string(56, 'f') + "\n");
}

TEST(SettingsOption, readsWhatItWrote)
{
    const TempFolder folder;
    const std::string lines = "[Settings]\nFSZoom=50\nCLst=a,b,;\nUsedFn=0300000063000000"
                              "ffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffff\n";
    folder.write("settings", lines);
    for (int run = 0; run < 2; ++run) {
        const Outcome outcome = runScript(folder, "--settings settings",
                                          "lists\nused\ncommand 40051\nview\ncommand 40024\n");
        EXPECT_EQ(outcome.output, "a,b\nSum\nToday\nzoom=50 left=A top=1 frozencols=- "
                                  "frozenrows=- gridlines=1 titles=1 zeros=1 fullscreen=1\n");
    }
}

TEST(SettingsOption, saysNothingAboutAFileThatCannotBe)
{
    const TempFolder folder;
    folder.write("file", "not a folder");
    for (const char* path : {"file/settings", ".", "/proc/none", "/dev/null", "''"}) {
        const Outcome outcome =
            runScript(folder, std::string("--settings ") + path, "settings\nused\ncommand 40024\n");
        EXPECT_EQ(outcome.status, 0) << path;
        EXPECT_EQ(outcome.output, "Sum\nIf\nAverage\n") << path;
        EXPECT_EQ(outcome.errors, "") << path;
    }
    EXPECT_EQ(folder.read("file"), "not a folder");
}

TEST(SettingsOption, isToldOfInTheHelp)
{
    const TempFolder folder;
    const Outcome outcome = runProgram(folder, "script --help");
    EXPECT_NE(outcome.output.find("one that cannot be read or written"), std::string::npos);
}

} // namespace
} // namespace vorn
