// vorn-cli from outside: calls, exit statuses, and what goes to which stream.
#include "platform/posix/files.h"
#include "support/filesizelimit.h"
#include "support/program.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace vorn {
namespace {

namespace fs = std::filesystem;

constexpr const char* SampleCsv = "1,x\n2,\"y,z\"\n";

TEST(Program, refusesOptionsThatSayNothing)
{
    const TempFolder folder;
    folder.write("a.csv", SampleCsv);
    for (const char* arguments : {"eval 1+1 --now ''", "eval 1+1 --code-page 0",
                                  "show a.csv --sheet ''", "show a.csv --range ''"}) {
        const Outcome outcome = runProgram(folder, arguments);
        EXPECT_EQ(outcome.status, 2) << arguments;
        EXPECT_EQ(outcome.output, "") << arguments;
    }
}

TEST(Program, evaluatesExpressions)
{
    const TempFolder folder;
    const struct {
        const char* behaviour;
        const char* arguments;
        int status;
        const char* output;
        const char* errors;
    } cases[] = {
        {"an expression",                                        "eval 1+1",                            0, "2\n",        ""                              },
        {"or several",                                           "eval 1+1 =2*3 '\"a\"&\"b\"'",         0, "2\n6\nab\n", ""                              },
        {"one leading equals sign is the command's",             "eval ==1",                            1, "",
         "error 4 Unexpected token\n"                                                                                                                    },
        {"a minus is no option",                                 "eval -1+2",                           0, "1\n",        ""                              },
        {"nor with an equals sign before it",                    "eval =-A1",                           0, "0\n",        ""                              },
        {"nor before a letter or another sign",                  "eval -A1 --5 '-(2)'",                 0, "0\n5\n-2\n", ""                              },
        {"brackets make no list",                                "eval '[1,2]'",                        1, "",           "error 2 Unexpected character\n"},
        {"each in a new workbook",                               "eval A1+1 A1+1",                      0, "1\n1\n",     ""                              },
        {"a calculation's error is a result",                    "eval 1/0",                            0, "!!Div0\n",   ""                              },
        {"a compile error goes to stderr, and the others go on", "eval 1+ 2 foo",                       1, "2\n",
         "error 1 Unexpected end of formula\nerror 29 Unknown name\n"                                                                                    },
        {"nothing is an expression without an end",              "eval ''",                             1, "",
         "error 1 Unexpected end of formula\n"                                                                                                           },
        {"dates show as General shows them",                     "eval --locale en_US 1/2/2000",        0, "1/2/00\n",   ""                              },
        {"in the locale that is asked for",                      "eval --locale de_DE 1,5+1",           0, "2,5\n",      ""                              },
        {"options may stand first",                              "--locale de_DE eval 1,5+1",           0, "2,5\n",      ""                              },
        {"and the clock may be fixed",                           "eval --now 2001-03-04T05:06:07 3/4/", 0, "3/4/01\n",   ""                              },
        {"bytes that are no UTF-8 are replaced",                 "eval \"\\\"$(printf '\\351')\\\"\"",  0,
         "\xef\xbf\xbd\n",                                                                                               ""                              },
    };
    for (const auto& c : cases) {
        const Outcome outcome = runProgram(folder, c.arguments);
        EXPECT_EQ(outcome.status, c.status) << c.behaviour;
        EXPECT_EQ(outcome.output, c.output) << c.behaviour;
        EXPECT_EQ(outcome.errors, c.errors) << c.behaviour;
    }
}

TEST(Program, refusesWrongCalls)
{
    const TempFolder folder;
    const char* calls[] = {
        "",
        "nonsense",
        "eval",
        "eval --nonsense 1",
        "eval --now yesterday 1",
        "eval --now 2001-02-29T00:00:00 1",
        "eval --code-page 12345 1",
        "eval --code-page x 1",
        "show",
        "show a.csv --as picture",
        "script a b",
    };
    for (const char* call : calls) {
        const Outcome outcome = runProgram(folder, call);
        EXPECT_EQ(outcome.status, 2) << call;
        EXPECT_EQ(outcome.output, "") << call;
        EXPECT_EQ(std::count(outcome.errors.begin(), outcome.errors.end(), '\n'), 1)
            << call << ": " << outcome.errors;
    }
}

TEST(Program, explainsItself)
{
    const TempFolder folder;
    const struct {
        const char* arguments;
        const char* contained;
    } cases[] = {
        {"--help",           "script" },
        {"eval --help",      "EXPR"   },
        {"show --help",      "--range"},
        {"script --help",    "--now"  },
        {"--version",        "0.1.0"  },
        {"eval --version",   "0.1.0"  },
        {"functions --help", "NAME"   },
    };
    for (const auto& c : cases) {
        const Outcome outcome = runProgram(folder, c.arguments);
        EXPECT_EQ(outcome.status, 0) << c.arguments;
        EXPECT_NE(outcome.output.find(c.contained), std::string::npos)
            << c.arguments << ": " << outcome.output;
        EXPECT_EQ(outcome.errors, "") << c.arguments;
    }
}

TEST(Program, saysWhatDoesNotExistYet)
{
    const TempFolder folder;
    for (const char* call : {"task a.csv x -o b", "task"}) {
        const Outcome outcome = runProgram(folder, call);
        EXPECT_EQ(outcome.status, 1) << call;
        EXPECT_NE(outcome.errors.find("does not exist yet"), std::string::npos) << call;
    }
}

TEST(Program, showsAFile)
{
    const TempFolder folder;
    folder.write("a.csv", SampleCsv);
    folder.write("empty.csv", "");
    const struct {
        const char* behaviour;
        const char* arguments;
        int status;
        const char* output;
    } cases[] = {
        {"all that is used",            "show a.csv",                           0, "1\tx\n2\ty,z\n"},
        {"or a range",                  "show a.csv --range A1:C1",             0, "1\tx\t\n"      },
        {"its corners in any order",    "show a.csv --range B2:A1",             0, "1\tx\n2\ty,z\n"},
        {"as input",                    "show a.csv --as input",                0, "1\tx\n2\ty,z\n"},
        {"as values",                   "show a.csv --as value",                0,
         "A1 number 1\nB1 text x\nA2 number 2\nB2 text y,z\n"                                      },
        {"a sheet by its name",         "show a.csv --sheet sheet1 --range A1", 0, "1\n"           },
        {"or its number",               "show a.csv --sheet 1 --range A1",      0, "1\n"           },
        {"an empty file shows nothing", "show empty.csv",                       0, ""              },
        {"no such sheet",               "show a.csv --sheet 2",                 1, ""              },
        {"sheet 0",                     "show a.csv --sheet 0",                 1, ""              },
        {"no such range",               "show a.csv --range A0",                2, ""              },
        {"no such file",                "show b.csv",                           1, ""              },
        {"a folder",                    "show .",                               1, ""              },
    };
    for (const auto& c : cases) {
        const Outcome outcome = runProgram(folder, c.arguments);
        EXPECT_EQ(outcome.status, c.status) << c.behaviour << ": " << outcome.errors;
        EXPECT_EQ(outcome.output, c.output) << c.behaviour;
        EXPECT_EQ(outcome.errors.empty(), c.status == 0) << c.behaviour;
    }
    EXPECT_EQ(runProgram(folder, "show b.csv").errors, "error 11 File open error: b.csv\n");
}

TEST(Program, convertsFiles)
{
    const TempFolder folder;
    folder.write("a.csv", SampleCsv);
    folder.write("old.vn", "old");
    folder.write("old.xls", "old");
    const struct {
        const char* behaviour;
        const char* arguments;
        int status;
        const char* errors;
    } cases[] = {
        {"text to our own format",      "convert a.csv a.vn",        0, ""                                       },
        {"over whatever is there",      "convert a.csv old.vn",      0, ""                                       },
        {"our own to itself",           "convert a.vn a.vn",         0, ""                                       },
        {"any other extension is ours", "convert a.vn b.doc",        0, ""                                       },
        {"and none at all",             "convert a.vn b",            0, ""                                       },
        {"into a folder that is gone",  "convert a.vn new/c.vn",     0, ""                                       },
        {"but not into two",            "convert a.vn no/such/c.vn", 1,
         "error 10 File creation error: no/such/c.vn\n"                                                          },
        {"text is not written",         "convert a.vn c.csv",        1, "error 10 File creation error: c.csv\n"  },
        {"nor Pocket Excel",            "convert a.vn c.pxl",        1, "error 10 File creation error: c.pxl\n"  },
        {"nor Excel",                   "convert a.vn old.xls",      1, "error 10 File creation error: old.xls\n"},
        {"a file that is not there",    "convert c.vn d.vn",         1, "error 11 File open error: c.vn\n"       },
        {"a file of another format",    "convert old.xls d.vn",      1,
         "error 40 File open error. Vorn supports only documents created in Microsoft Excel 5.0, "
         "95, 97 or 2000.: old.xls\n"                                                                            },
    };
    for (const auto& c : cases) {
        const Outcome outcome = runProgram(folder, c.arguments);
        EXPECT_EQ(outcome.status, c.status) << c.behaviour;
        EXPECT_EQ(outcome.output, "") << c.behaviour;
        EXPECT_EQ(outcome.errors, c.errors) << c.behaviour;
    }
    for (const char* name : {"a.vn", "old.vn", "b.doc", "b", "new/c.vn"})
        EXPECT_EQ(runProgram(folder, std::string("show ") + name).output, "1\tx\n2\ty,z\n") << name;
    EXPECT_EQ(folder.read("old.xls"), "old") << "what cannot be written is not touched";
    for (const char* name : {"c.csv", "c.pxl", "d.vn", "no"})
        EXPECT_FALSE(fs::exists(folder.file(name))) << name;
}

TEST(Program, keepsOutOfAFileThatIsOpenElsewhere)
{
    const TempFolder folder;
    folder.write("a.csv", SampleCsv);
    folder.write("open.vn", "old");
    ASSERT_EQ(runProgram(folder, "convert a.csv a.vn").status, 0);
    PosixFiles files;
    const auto read = files.openToRead(folder.path("a.vn"));
    const auto written = files.openToWrite(folder.path("open.vn"));
    EXPECT_EQ(runProgram(folder, "show a.vn").errors, "error 11 File open error: a.vn\n");
    EXPECT_EQ(runProgram(folder, "convert a.csv open.vn").errors,
              "error 10 File creation error: open.vn\n");
    EXPECT_EQ(folder.read("open.vn"), "old");
}

TEST(Program, survivesTheLimitOfTheProcess)
{
    const TempFolder folder;
    folder.write("a.csv", SampleCsv);
    folder.write("old.vn", "old");
    folder.write("s.txt", "open a.csv\nanswer box yes\nsaveas old.vn\ntext A1\n");
    Outcome outcome;
    {
        const FileSizeLimit limit(512); // which the program inherits
        outcome = runProgram(folder, "script s.txt");
    }
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "box \"Vorn\" \"old.vn already exists. Do you want to replace it?\" "
                              "answered yes\n"
                              "box \"Vorn\" \"File write error\"\n1\n");
    EXPECT_EQ(folder.read("old.vn"), "old");
}

TEST(Program, cannotOpenWhatNobodyMayRead)
{
    const TempFolder folder;
    fs::permissions(folder.write("secret.csv", SampleCsv), fs::perms::none);
    const Outcome outcome = runProgram(folder, "show secret.csv");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors, "error 11 File open error: secret.csv\n");
}

TEST(Program, tellsWhereAScriptStops)
{
    const TempFolder folder;
    const struct {
        const char* behaviour;
        const char* script;
        const char* output;
        const char* errors;
    } cases[] = {
        {"an unknown verb",                      "text A1\nnonsense 1\ntext A1\n",        "\n",
         "s.txt:2: unknown verb: 'nonsense'\n"                                                                                   },
        {"a verb that is still to come",         "\n# x\nchart\n",                        "",
         "s.txt:3: this verb does not exist yet: 'chart'\n"                                                                      },
        {"a line that begins with a blank",      " text A1\n",                            "",    "s.txt:1: unknown verb: ''\n"   },
        {"a reference that is none",             "text A0\n",                             "",    "s.txt:1: no reference: 'A0'\n" },
        {"no reference at all",                  "select\n",                              "",    "s.txt:1: no reference: ''\n"   },
        {"a reference with something behind it", "select A1 B2\n",                        "",
         "s.txt:1: no reference: 'A1 B2'\n"                                                                                      },
        {"a sheet that is not there",            "select Sheet4!A1\n",                    "",
         "s.txt:1: no reference: 'Sheet4!A1'\n"                                                                                  },
        {"nor by name",                          "sheet Sheet4\n",                        "",    "s.txt:1: no sheet: 'Sheet4'\n" },
        {"nor by number",                        "sheet 4\n",                             "",    "s.txt:1: no sheet: '4'\n"      },
        {"row 0",                                "row 0\n",                               "",    "s.txt:1: no row: '0'\n"        },
        {"a row beyond the last",                "row 16385\n",                           "",    "s.txt:1: no row: '16385'\n"    },
        {"an answer that no box knows",          "answer box maybe\n",                    "",
         "s.txt:1: no answer of a box: 'box maybe'\n"                                                                            },
        {"open without a path",                  "open\n",                                "",    "s.txt:1: open needs a path\n"  },
        {"saveas without one",                   "saveas\n",                              "",    "s.txt:1: saveas needs a path\n"},
        {"nor an answer without one",            "answer file\n",                         "",
         "s.txt:1: answer file needs a path, or cancel\n"                                                                        },
        {"an answer to no dialog",               "answer 99\n",                           "",    "s.txt:1: no dialog: '99'\n"    },
        {"a control that it does not have",      "answer 126 1020=x\n",                   "",
         "s.txt:1: no control of this dialog: '1020'\n"                                                                          },
        {"an entry that its list does not have", "answer 129 1056=X\ncommand 40027\nx\n", "",
         "s.txt:2: dialog 129: no entry of control 1056: 'X'\n"                                                                  },
        {"what was printed stays",               "put A1 5\r\ntext A1\r\nx\r\n",          "5\n",
         "s.txt:3: unknown verb: 'x'\n"                                                                                          },
    };
    for (const auto& c : cases) {
        folder.write("s.txt", c.script);
        const Outcome outcome = runProgram(folder, "script s.txt");
        EXPECT_EQ(outcome.status, 2) << c.behaviour;
        EXPECT_EQ(outcome.output, c.output) << c.behaviour;
        EXPECT_EQ(outcome.errors, c.errors) << c.behaviour;
    }
}

TEST(Program, stopsAScriptWhosePenHitsNothing)
{
    const TempFolder folder;
    const struct {
        const char* script;
        const char* reason;
    } cases[] = {
        {"tap 10",                               "no place: '10'"                              },
        {"tap",                                  "no place: ''"                                },
        {"tap 10 20 30 40",                      "no place: '10 20 30 40'"                     },
        {"tap 10 x",                             "no place: '10 x'"                            },
        {"tap 10 1e2",                           "no place: '10 1e2'"                          },
        {"doubletap 10 ",                        "no place: '10 '"                             },
        {"tap 240 0",                            "outside of the window: '240 0'"              },
        {"doubletap 0 -1",                       "outside of the window: '0 -1'"               },
        {"drag 10 20",                           "no places: '10 20'"                          },
        {"drag 10 20 30",                        "no places: '10 20 30'"                       },
        {"drag -1 20 30 40",                     "outside of the window: '-1 20'"              },
        {"tapcell A1:B2",                        "no cell: 'A1:B2'"                            },
        {"tapcell x",                            "no cell: 'x'"                                },
        {"tapcell A18",                          "not in view: 'A18'"                          },
        {"tapcell Sheet2!A1",                    "not in view: 'Sheet2!A1'"                    },
        {"select B1\ncommand 40054\ntapcell B1", "not in view: 'B1'"                           },
        {"filterbutton A1",                      "this verb does not exist yet: 'filterbutton'"},
    };
    for (const auto& c : cases) {
        folder.write("s.txt", c.script);
        const Outcome outcome = runProgram(folder, "script s.txt");
        EXPECT_EQ(outcome.status, 2) << c.script;
        EXPECT_TRUE(outcome.errors.ends_with(std::string(": ") + c.reason + '\n'))
            << c.script << ": " << outcome.errors;
    }
}

TEST(Program, readsScriptsFromAnywhere)
{
    const TempFolder folder;
    folder.write("s.txt", "put A1 =1+1\ntext A1"); // without a line end
    EXPECT_EQ(runProgram(folder, "script s.txt").output, "2\n");
    EXPECT_EQ(runProgram(folder, "script - < s.txt").output, "2\n");
    EXPECT_EQ(runProgram(folder, "script < s.txt").output, "2\n");
    EXPECT_EQ(runProgram(folder, "script < /dev/null").status, 0);
    const Outcome missing = runProgram(folder, "script t.txt");
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.errors, "cannot read the script 't.txt'\n");
    EXPECT_EQ(runProgram(folder, "script .").status, 1);
}

TEST(Program, failsWhenItsOutputCannotBeWritten)
{
    const TempFolder folder;
    const Outcome outcome = runProgram(folder, "eval 1 > /dev/full");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors, "cannot write the output\n");
}

TEST(Program, describesFunctions)
{
    const TempFolder folder;
    const Outcome all = runProgram(folder, "functions");
    EXPECT_EQ(all.status, 0);
    EXPECT_EQ(std::count(all.output.begin(), all.output.end(), '\n'), 128);
    const Outcome one = runProgram(folder, "functions sum");
    EXPECT_EQ(one.status, 0);
    EXPECT_EQ(one.output, "3\tSum\t1-30\tMath & Trig\tnumber, number, ...\t"
                          "Return the sum of all the numbers in the list of arguments.\n");
    EXPECT_EQ(runProgram(folder, "functions Countif").output,
              "124\tCountif\t2\tStatistical\trange, criteria\t"
              "Counts the number of cells within a range that meet the given condition.\n");
    for (const char* name : {"nonsense", "MsgBox", "\xc3\xa9"}) {
        const Outcome unknown = runProgram(folder, std::string("functions ") + name);
        EXPECT_EQ(unknown.status, 1) << name;
        EXPECT_EQ(unknown.errors, std::string("no function: '") + name + "'\n");
    }
}

// Texts of any length arrive whole, or are refused with a message.
TEST(Program, survivesHugeTexts)
{
    const TempFolder folder;
    const std::string longText(100000, 'x');
    folder.write("s.txt", "put A1 " + longText + "\ntext A1\n");
    EXPECT_EQ(runProgram(folder, "script s.txt").output, longText + "\n");

    const std::string nested = std::string(10000, '(') + "1" + std::string(10000, ')');
    folder.write("s.txt", "put A1 =" + nested + "\nvalue A1\n");
    EXPECT_EQ(runProgram(folder, "script s.txt").output,
              "box \"Vorn\" \"Formula is too complex\"\nA1 blank\n");

    folder.write("s.txt", "put A1 =\"" + longText + "\nput A2 =\"" + longText + "\"\nvalue A1\n");
    EXPECT_EQ(runProgram(folder, "script s.txt").output,
              "box \"Vorn\" \"Formula is too complex\"\n"
              "box \"Vorn\" \"Formula is too complex\"\nA1 blank\n");
}

} // namespace
} // namespace vorn
