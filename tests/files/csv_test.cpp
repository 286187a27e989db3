#include "files/csv.h"

#include "core/error.h"
#include "core/memory.h"
#include "core/pool.h"
#include "core/workbook.h"
#include "files/stream.h"
#include "support/cells.h"
#include "support/memoryfile.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using namespace std::string_literals;

// A document into which a text was read.
class Imported {
public:
    explicit Imported(std::string bytes, std::string_view locale = TestLocale, int page = 65001)
        : document(locale)
    {
        workbook->codePage = page;
        import(std::move(bytes), 0, 0);
    }

    void import(std::string bytes, std::uint16_t row, std::uint16_t column)
    {
        MemoryFile file(std::move(bytes));
        FileStream stream(file);
        TransferContext context;
        context.stream = &stream;
        context.anchorRow = row;
        context.anchorColumn = column;
        ImportText(context);
    }

    const Sheet& sheet() const { return *workbook->currentSheet; }
    CellValue value(int column, int row) const { return sheet().cellCopy(column, row).value; }

    // All cells from A1 to the last, " | " between cells and " / " between rows.
    std::string shown() const
    {
        std::string text;
        for (int row = 0; row <= sheet().lastRow() && sheet().hasRows(); ++row) {
            text += row == 0 ? "" : " / ";
            for (int column = 0; column < sheet().rowCount(row); ++column)
                text += (column == 0 ? "" : " | ") + describe(value(column, row));
        }
        return text;
    }

    TestDocument document;
};

struct Case {
    const char* behaviour;
    std::string bytes;
    std::string cells;
};

TEST(ImportText, separatesFieldsAndRows)
{
    const Case cases[] = {
        {"nothing",                            "",              ""                     },
        {"one field",                          "a",             "\"a\""                },
        {"two",                                "a,b",           "\"a\" | \"b\""        },
        {"two rows",                           "a\nb",          "\"a\" / \"b\""        },
        {"a last line feed makes no cell",     "a\n",           "\"a\""                },
        {"nor do many",                        "a\n\n\n",       "\"a\""                },
        {"an empty field is no cell",          "a,,b",          "\"a\" | blank | \"b\""},
        {"in front neither",                   ",a",            "blank | \"a\""        },
        {"and behind",                         "a,",            "\"a\""                },
        {"nothing but separators",             ",,,",           ""                     },
        {"an empty row",                       "a\n\nb",        "\"a\" /  / \"b\""     },
        {"rows of several lengths",            "a\nb,c,d\ne,f",
         "\"a\" / \"b\" | \"c\" | \"d\" / \"e\" | \"f\""                               },
        {"carriage returns before line feeds", "a,b\r\nc\r\n",  "\"a\" | \"b\" / \"c\""},
        {"carriage returns alone end nothing", "a,b\rc\rd",     "\"a\" | \"bcd\""      },
        {"a tab separates nothing",            "a\tb,c",        "\"ab\" | \"c\""       },
    };
    for (const Case& c : cases)
        EXPECT_EQ(Imported(c.bytes).shown(), c.cells) << c.behaviour;
}

TEST(ImportText, readsQuotedFields)
{
    const Case cases[] = {
        {"a separator in quotes",                                   "a,\"b,c\",d",    "\"a\" | \"b,c\" | \"d\""},
        {"a doubled quote",                                         "\"a\"\"b\"",     "\"a\"b\""               },
        {"doubled quotes at both ends",                             "\"\"\"a\"\"\"",  "\"\"a\"\""              },
        {"two doubled quotes side by side",                         "\"a\"\"\"\"b\"", "\"a\"\"b\""             },
        {"empty quotes",                                            "\"\",b",         "blank | \"b\""          },
        {"quotes in the middle of a field",                         "a\"b,c\"d",      "\"ab,cd\""              },
        {"a quote that is never closed",                            "\"a,b",          "\"a,b\""                },
        {"a line feed ends the row in quotes",                      "\"a\nb\",c",     "\"a\" / \"b,c\""        },
        {"a quote that ends a field, and one that begins the next", "\"a\",\"b\"",    "\"a\" | \"b\""          },
        {"a number in quotes is a number",                          "\"1.5\"",        "1.5"                    },
        {"quotes and blanks around them",                           " \"a b\" ,c",    "\"a b \" | \"c\""       },
    };
    for (const Case& c : cases)
        EXPECT_EQ(Imported(c.bytes).shown(), c.cells) << c.behaviour;
}

TEST(ImportText, dropsLeadingBlanksAndControls)
{
    const Case cases[] = {
        {"blanks before",                 "   a,  b",              "\"a\" | \"b\""   },
        {"blanks behind stay",            "a  ,b ",                "\"a  \" | \"b \""},
        {"and within",                    "a b  c",                "\"a b  c\""      },
        {"leading blanks in quotes stay", "\"  a\"",               "\"  a\""         },
        {"a field of blanks is empty",    "   ,b",                 "blank | \"b\""   },
        {"every control",                 "a\1\2\10\13\14\33\37b", "\"ab\""          },
        {"also zeros",                    "a\0b\0,c"s,             "\"ab\" | \"c\""  },
        {"controls in quotes too",        "\"a\tb\"",              "\"ab\""          },
        {"a control between two quotes",  "\"a\"\t\"b\"",          "\"ab\""          },
        {"a blank before a number",       " 5",                    "5"               },
        {"DEL stays",                     "a\177",                 "\"a\\u007f\""    },
    };
    for (const Case& c : cases)
        EXPECT_EQ(Imported(c.bytes).shown(), c.cells) << c.behaviour;
}

TEST(ImportText, takesFieldsAsIfTheyWereTyped)
{
    const Case cases[] = {
        {"numbers",                         "1,-2.5,+3,1e3,.5",        "1 | -2.5 | 3 | 1000 | 0.5"},
        {"what only looks like a number",   "1.2.3,--5,1e999,$5,0x10",
         "\"1.2.3\" | \"--5\" | \"1e999\" | \"$5\" | \"0x10\""                                    },
        {"logicals",                        "TRUE,false,truex",        "TRUE | FALSE | \"truex\"" },
        {"dates",                           "1/1/2000,12/31/99",       "date 36526 | date 36525"  },
        {"a date that is none",             "31/12/2000",              "\"31/12/2000\""           },
        {"times",                           "12:00,6:00 pm",           "date 0.5 | date 0.75"     },
        {"a date and a time",               "1/1/2000 12:00",          "date 36526.5"             },
        {"percents are fractions",          "50%,5 %",                 "0.5 | 0.05"               },
        {"errors are texts",                "!!NA,#N/A",               "\"!!NA\" | \"#N/A\""      },
        {"references are texts",            "A1,A1:B2",                "\"A1\" | \"A1:B2\""       },
        {"an apostrophe is dropped",        "'123,''a",                "\"123\" | \"'a\""         },
        {"a lone apostrophe is empty text", "',b",                     "\"\" | \"b\""             },
        {"trailing blanks of a number",     "5 ,6",                    "5 | 6"                    },
    };
    for (const Case& c : cases)
        EXPECT_EQ(Imported(c.bytes).shown(), c.cells) << c.behaviour;
}

TEST(ImportText, compilesNoFormula)
{
    const Case cases[] = {
        {"a formula",                      "=1+1",       "\"=1+1\""  },
        {"behind a blank",                 " =1+1",      "\"=1+1\""  },
        {"in quotes",                      "\"=A1,B1\"", "\"=A1,B1\""},
        {"behind a control",               "\t=1",       "\"=1\""    },
        {"what does not compile",          "=1+",        "\"=1+\""   },
        {"a lone sign",                    "=",          "\"=\""     },
        {"two of them",                    "==",         "\"==\""    },
        {"within a field it is nothing",   "a=1",        "\"a=1\""   },
        {"as the text in a second column", "1,=2",       "1 | \"=2\""},
    };
    for (const Case& c : cases) {
        const Imported imported(c.bytes);
        EXPECT_EQ(imported.shown(), c.cells) << c.behaviour;
        EXPECT_EQ(errorState.code, ErrorNone) << c.behaviour;
    }
}

TEST(ImportText, followsTheLocale)
{
    const struct {
        const char *behaviour, *locale;
        std::string bytes, cells;
    } cases[] = {
        {"a semicolon separates where a comma is the decimal point", "de_DE", "1,5;2;a,b",
         "1.5 | 2 | \"a,b\""                                                                                                   },
        {"a comma separates where it is not",                        "en_US", "1,5;2",          "1 | \"5;2\""                  },
        {"dates day first",                                          "de_DE", "31.12.2000",     "date 36891"                   },
        {"and with hyphens",                                         "nl_NL", "31-12-2000;1,5", "date 36891 | 1.5"             },
        {"times with points",                                        "da_DK", "12.30;12,30",    "date 0.520833333333333 | 12.3"},
        {"points in dates and in numbers",                           "de_CH", "1.5,31.12.2000", "1.5 | date 36891"             },
    };
    for (const auto& c : cases)
        EXPECT_EQ(Imported(c.bytes, c.locale).shown(), c.cells) << c.behaviour;
}

TEST(ImportText, showsPercentsByTheirFormat)
{
    const Imported imported("50%,0.5,60%\n7,8%");
    const Sheet& sheet = imported.sheet();
    EXPECT_EQ(workbook->styles[sheet.cellStyle(0, 0)].format(), FormatIndexPercent);
    EXPECT_EQ(sheet.cellText(0, 0), u"50.00%");
    EXPECT_EQ(sheet.cellText(1, 0), u"0.5") << "a number has no style";
    EXPECT_EQ(sheet.cellCopy(1, 0).style, -1);
    EXPECT_EQ(sheet.cellStyle(0, 0), sheet.cellStyle(2, 0)) << "one style serves all";
    EXPECT_EQ(sheet.cellText(1, 1), u"8.00%");
    EXPECT_EQ(workbook->styles.size(), 2);
}

TEST(ImportText, givesDatesNoStyle)
{
    const Imported imported("1/2/2000");
    EXPECT_EQ(imported.sheet().cellCopy(0, 0).style, -1);
    EXPECT_EQ(imported.sheet().cellText(0, 0), u"1/2/00");
}

TEST(ImportText, dropsFieldsBeyondTheLastColumn)
{
    std::string bytes;
    for (int column = 1; column <= 300; ++column)
        bytes += std::to_string(column) + (column == 300 ? "\n" : ",");
    const Imported imported(bytes + "x,y");
    EXPECT_EQ(imported.sheet().rowCount(0), ColumnCount);
    EXPECT_EQ(imported.value(LastColumn, 0).number(), 256);
    EXPECT_EQ(describe(imported.value(0, 1)), "\"x\"") << "the next row begins as it should";
    EXPECT_EQ(describe(imported.value(1, 1)), "\"y\"");
}

TEST(ImportText, dropsRowsBeyondTheLast)
{
    std::string bytes;
    for (int row = 1; row <= RowCount + 10; ++row)
        bytes += std::to_string(row) + "\n";
    const Imported imported(bytes);
    EXPECT_EQ(imported.sheet().lastRow(), LastRow);
    EXPECT_EQ(imported.value(0, LastRow).number(), RowCount);
    EXPECT_EQ(errorState.code, ErrorNone);
}

TEST(ImportText, keepsAThousandCharactersOfAField)
{
    for (std::size_t length : {999u, 1000u, 1001u, 5000u}) {
        const Imported imported(std::string(length, 'a') + ",b");
        EXPECT_EQ(std::u16string_view(valueTextPointer(imported.value(0, 0))).size(),
                  std::min<std::size_t>(length, 1000));
        EXPECT_EQ(describe(imported.value(1, 0)), "\"b\"");
    }
}

TEST(ImportText, countsTheApostropheOfAFormulaAmongThem)
{
    const Imported imported("=" + std::string(1000, 'a'));
    EXPECT_EQ(std::u16string_view(valueTextPointer(imported.value(0, 0))).size(), 999u);
}

TEST(ImportText, cutsALongNumberAsWell)
{
    const Imported imported(std::string(990, '0') + "123456789012");
    EXPECT_EQ(imported.value(0, 0).number(), 1234567890);
}

TEST(ImportText, looksForNoByteOrderMark)
{
    const Imported imported("\xef\xbb\xbf"
                            "1,2");
    EXPECT_EQ(describe(imported.value(0, 0)), "\"\\ufeff1\"");
    EXPECT_EQ(describe(imported.value(1, 0)), "2");
}

TEST(ImportText, losesNothingBehindWrongBytes)
{
    EXPECT_EQ(Imported("a\xff"
                       "b,\x80,c\xe2\x82,d\n5,\xf0\x9f")
                  .shown(),
              "\"a\\ufffdb\" | \"\\ufffd\" | \"c\\ufffd\" | \"d\" / 5 | \"\\ufffd\"");
}

TEST(ImportText, readsTheCodePageOfTheWorkbook)
{
    const struct {
        int page;
        std::string bytes;
    } cases[] = {
        {65001, "\xc3\xa4\xe2\x82\xac,1"},
        {1252,  "\xe4\x80,1"            },
        {1200,  "\xe4\0\xac\x20,\0"
               "1\0"s     },
    };
    for (const auto& c : cases)
        EXPECT_EQ(Imported(c.bytes, TestLocale, c.page).shown(), "\"\\u00e4\\u20ac\" | 1")
            << c.page;
}

// Rows of several lengths, far longer than a block of the stream, in several code pages.
TEST(ImportText, readsLongTextsWhole)
{
    for (int page : {65001, 1252, 932}) {
        std::string bytes;
        for (int row = 0; row < 1000; ++row) {
            for (int column = 0; column < 1 + row % 7; ++column)
                bytes += (column == 0 ? "\"r" : ",\"r") + std::to_string(row) + " c" +
                         std::to_string(column) + (page == 65001 ? "\xc3\xa4" : "") + '"';
            bytes += '\n';
        }
        const Imported imported(bytes, TestLocale, page);
        for (int row = 0; row < 1000; ++row) {
            ASSERT_EQ(imported.sheet().rowCount(row), 1 + row % 7) << row;
            for (int column = 0; column < 1 + row % 7; ++column)
                ASSERT_EQ(describe(imported.value(column, row)),
                          "\"r" + std::to_string(row) + " c" + std::to_string(column) +
                              (page == 65001 ? "\\u00e4\"" : "\""));
        }
    }
}

TEST(ImportText, landsAtTheAnchor)
{
    Imported imported("");
    imported.import("a,b\n50%,d", 3, 2);
    EXPECT_EQ(describe(imported.value(2, 3)), "\"a\"");
    EXPECT_EQ(describe(imported.value(3, 4)), "\"d\"");
    EXPECT_EQ(imported.sheet().cellText(2, 4), u"50.00%");
    EXPECT_EQ(imported.sheet().firstColumnOf(3), 2);

    imported.import("x,y,z\nu", LastRow, LastColumn - 1);
    EXPECT_EQ(describe(imported.value(LastColumn - 1, LastRow)), "\"x\"");
    EXPECT_EQ(describe(imported.value(LastColumn, LastRow)), "\"y\"");
    EXPECT_EQ(imported.sheet().lastRow(), LastRow);
}

TEST(ImportText, dropsEverythingForAnAnchorBelowTheSheet)
{
    Imported imported("");
    imported.import("a,b", 20000, 0);
    imported.import("a,b", 0, 300);
    EXPECT_FALSE(imported.sheet().hasRows());
    EXPECT_EQ(stringPool->beginScan(), 0);
    stringPool->endScan();
}

TEST(ImportText, storesAlsoEmptyFieldsOverWhatIsThere)
{
    Imported imported("1,2,3");
    imported.import("a,,c", 0, 0);
    EXPECT_EQ(imported.shown(), "\"a\" | blank | \"c\"");
}

TEST(ImportText, leavesAnEmptySheetForAnEmptyFile)
{
    const Imported imported("");
    EXPECT_FALSE(imported.sheet().hasRows());
    EXPECT_EQ(errorState.code, ErrorNone);
}

TEST(ImportText, stepsOverNoRowThatHasNothing)
{
    const Imported imported("\n\n,,\nx");
    EXPECT_EQ(imported.sheet().rowAt(0), nullptr);
    EXPECT_EQ(imported.sheet().rowAt(2), nullptr);
    EXPECT_EQ(imported.sheet().lastRow(), 3);
}

TEST(ImportText, takesALostFileForItsEnd)
{
    TestDocument document;
    MemoryFile file("a,b\n" + std::string(100000, 'x'));
    file.mostAtOnce = 1024;
    file.failingRead = 2;
    FileStream stream(file);
    TransferContext context;
    context.stream = &stream;
    ImportText(context);
    EXPECT_EQ(errorState.code, ErrorNone);
    EXPECT_EQ(describe(workbook->currentSheet->valueOf(1, 0)), "\"b\"");
}

int refusalsLeft = 0;

void* refuseOne(void* block, std::size_t bytes)
{
    return bytes != 0 && --refusalsLeft == 0 ? nullptr : resizeBlock(block, bytes);
}

// Every single allocation is refused in turn: the code stands, and no text is left without an
// owner.
TEST(ImportText, endsWhenMemoryIsShort)
{
    std::string bytes;
    for (int row = 0; row < 30; ++row)
        bytes += "some text," + std::to_string(row) + ",other text,50%\n";
    bool refused = true;
    for (int which = 1; refused; ++which) {
        TestDocument document;
        MemoryFile file(bytes);
        FileStream stream(file);
        TransferContext context;
        context.stream = &stream;
        refusalsLeft = which;
        blockResizer = refuseOne;
        ImportText(context);
        blockResizer = resizeBlock;
        refused = refusalsLeft <= 0;
        EXPECT_EQ(errorState.code, refused ? ErrorMemory : ErrorNone) << which;
        clearError();

        int texts = 0;
        CellIterator cells;
        cells.start(*workbook->currentSheet, {0, 0, LastRow, LastColumn});
        while (const Cell* cell = cells.nextOccupiedCell())
            texts += cell->value.tag == TagText && cell->value.textIndex() != -1 ? 1 : 0;
        EXPECT_EQ(stringPool->beginScan(), texts) << which;
        stringPool->endScan();
    }
}

} // namespace
} // namespace vorn
