#include "formula/lexer.h"

#include "core/error.h"
#include "core/heap.h"
#include "core/workbook.h"
#include "functions/table.h"
#include "platform/textrules.h"
#include "support/testplatform.h"
#include "support/tokentext.h"

#include <gtest/gtest.h>
#include <string>

namespace vorn {
namespace {

struct TokenRow {
    const char* behaviour;
    std::u16string_view text;
    const char* tokens;
};

template <std::size_t count>
void expectTokens(const TokenRow (&rows)[count])
{
    for (const TokenRow& row : rows)
        EXPECT_EQ(tokenText(row.text), row.tokens) << row.behaviour;
}

void addName(std::u16string_view name)
{
    DefinedName record;
    record.name = duplicateString(name);
    workbook->names.append(record);
}

void addVariable(std::u16string_view name)
{
    TaskVariable record;
    record.name = duplicateString(name);
    workbook->variables.append(record);
}

TEST(FormulaLexer, knowsTheOperators)
{
    const TestDocument document;
    expectTokens({
        {"each operator by itself",             u"+-*/()&=!^%><", "+ - * / ( ) & = ! ^ % > < ."},
        {"pairs of two characters",             u"<=>=<>",        "<= >= <> ."                 },
        {"the longest pair wins from the left", u"<<>>=",         "< <> >= ."                  },
        {"equals before less is no pair",       u"=<=>",          "= <= > ."                   },
        {"no blank is allowed inside a pair",   u"> =",           "> = ."                      },
        {"nor inside another",                  u"< >",           "< > ."                      },
        {"the locale's list separator",         u"1,2",           "1 ; 2 ."                    },
        {"which is of this locale only",        u"1;2",           "1 !2"                       },
    });
}

TEST(FormulaLexer, skipsWhiteSpace)
{
    const TestDocument document;
    expectTokens({
        {"nothing",                         u"",                "."      },
        {"only blanks",                     u"   ",             "."      },
        {"blanks between tokens",           u"  1   +  2  ",    "1 + 2 ."},
        {"tabs and line ends",              u"1\t+\r\n2\v\f",   "1 + 2 ."},
        {"the blank that does not break",   u"1\u00a0+\u30002", "1 + 2 ."},
        {"a blank of no width is no space", u"1\u200b2",        "1 !2"   },
    });
}

TEST(FormulaLexer, readsReferences)
{
    const TestDocument document;
    expectTokens({
        {"a cell",                             u"B3",                    "cell:0002/c001 ."               },
        {"in small letters",                   u"b3",                    "cell:0002/c001 ."               },
        {"with an absolute column",            u"$B3",                   "cell:0002/8001 ."               },
        {"with an absolute row",               u"B$3",                   "cell:0002/4001 ."               },
        {"with both",                          u"$B$3",                  "cell:0002/0001 ."               },
        {"the last cell",                      u"IV16384",               "cell:3fff/c0ff ."               },
        {"the last one in small letters",      u"iv16384",               "cell:3fff/c0ff ."               },
        {"a column past the last is a word",   u"IW1",                   "?IW1 ."                         },
        {"so is a row past the last",          u"A16385",                "?A16385 ."                      },
        {"and one of many digits",             u"A99999999999999999999", "?A99999999999999999999 ."       },
        {"and a row of zero",                  u"A0",                    "?A0 ."                          },
        {"and one with a zero in front",       u"A01",                   "?A01 ."                         },
        {"a range",                            u"A1:B2",                 "range:0000/c000:0001/c001 ."    },
        {"with two dots",                      u"A1..B2",                "range:0000/c000:0001/c001 ."    },
        {"with mixed corners",                 u"$A1:B$2",               "range:0000/8000:0001/4001 ."    },
        {"with corners as they are typed",     u"B2:A1",                 "range:0001/c001:0000/c000 ."    },
        {"a cell twice",                       u"A1:A1",                 "range:0000/c000:0000/c000 ."    },
        {"a cell ends where its digits end",   u"A1B",                   "cell:0000/c000 ?B ."            },
        {"also before another cell",           u"A1B2",                  "cell:0000/c000 cell:0001/c001 ."},
        {"one dot is no range",                u"A1.B2",                 "cell:0000/c000 !2"              },
        {"a blank ends the reference",         u"A1 :B2",                "cell:0000/c000 !2"              },
        {"half a range is a word",             u"A1:",                   "?A1 !2"                         },
        {"also with a blank behind the colon", u"A1: B2",                "?A1 !2"                         },
        {"also with a column only",            u"A1:B",                  "?A1 !2"                         },
        {"also with dots",                     u"A1..",                  "?A1 !2"                         },
        {"letters are ASCII",                  u"\u00c41",               "!2"                             },
    });
}

TEST(FormulaLexer, tellsWhyADollarIsNoReference)
{
    const TestDocument document;
    expectTokens({
        {"no letters",                      u"$1",                                           "!5"                         },
        {"nothing at all",                  u"$",                                            "!5"                         },
        {"two dollars",                     u"$$A1",                                         "!5"                         },
        {"a column past the last",          u"$IW1",                                         "!6"                         },
        {"a column of many letters",        u"$AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA1", "!6"                         },
        {"a row past the last",             u"$A16385",                                      "!7"                         },
        {"a row of many digits",            u"$A99999999999999999999",                       "!7"                         },
        {"no row",                          u"$A",                                           "!9"                         },
        {"a row of zero",                   u"$A0",                                          "!9"                         },
        {"no row behind the dollar",        u"$A$",                                          "!9"                         },
        {"a bad second corner",             u"$A$1:B",                                       "!9"                         },
        {"a second corner without letters", u"$A$1:1",                                       "!5"                         },
        {"a range with a dollar",           u"$A$1:$B$2",                                    "range:0000/0000:0001/0001 ."},
    });
}

TEST(FormulaLexer, storesRelativeReferencesAsDistances)
{
    const TestDocument document;
    const CellPosition base{10, 20, 1};
    EXPECT_EQ(tokenText(u"U11", base), "cell:0000/c000 .");
    EXPECT_EQ(tokenText(u"V12", base), "cell:0001/c001 .");
    EXPECT_EQ(tokenText(u"T10", base), "cell:ffff/c0ff .");
    EXPECT_EQ(tokenText(u"A1", base), "cell:fff6/c0ec .");
    EXPECT_EQ(tokenText(u"$T10", base), "cell:ffff/8013 .");
    EXPECT_EQ(tokenText(u"T$10", base), "cell:0009/40ff .");
    EXPECT_EQ(tokenText(u"$T$10", base), "cell:0009/0013 .");
    EXPECT_EQ(tokenText(u"A1:IV16384", base), "range:fff6/c0ec:3ff5/c0eb .");
}

TEST(FormulaLexer, readsErrorLiterals)
{
    const TestDocument document;
    expectTokens({
        {"not available",                       u"!!NA",   "error:42 ."    },
        {"in any case",                         u"!!na",   "error:42 ."    },
        {"a dead reference",                    u"!!Ref",  "error:23 ."    },
        {"in any case",                         u"!!REF",  "error:23 ."    },
        {"the word ends at what is no word",    u"!!NA+1", "error:42 + 1 ."},
        {"an error that cannot be typed",       u"!!Val",  "!2"            },
        {"another",                             u"!!Div0", "!2"            },
        {"another",                             u"!!Num",  "!2"            },
        {"another",                             u"!!Name", "!2"            },
        {"another",                             u"!!Null", "!2"            },
        {"no word",                             u"!!",     "!2"            },
        {"a longer word",                       u"!!NAN",  "!2"            },
        {"a blank before the word",             u"!! NA",  "!2"            },
        {"one exclamation mark is an operator", u"! NA",   "! call:79 ."   },
        {"the third begins no literal",         u"!!!NA",  "!2"            },
    });
}

TEST(FormulaLexer, readsWords)
{
    const TestDocument document;
    expectTokens({
        {"a logical",                           u"true",                   "true ."                  },
        {"in any case",                         u"TRUE False",             "true false ."            },
        {"a longer word",                       u"truest",                 "?truest ."               },
        {"a shorter one",                       u"tru",                    "?tru ."                  },
        {"a function in any case",              u"sum SUM Sum",            "call:3 call:3 call:3 ."  },
        {"a parenthesis need not follow",       u"Sum+1",                  "call:3 + 1 ."            },
        {"letters beyond the last column",      u"Log10 Atan2",            "call:16 call:83 ."       },
        {"a word with digits",                  u"Tax2001",                "?Tax2001 ."              },
        {"two letters and digits are a cell",   u"AB12",                   "cell:000b/c01b ."        },
        {"an underscore begins a word",         u"_a1",                    "?_a1 ."                  },
        {"and goes on with it",                 u"a_1",                    "?a_1 ."                  },
        {"a function of tasks",                 u"MsgBox",                 "call:160 ."              },
        {"which hides everything of that name", u"Chart Set Sort Filter",
         "call:157 call:163 call:162 call:185 ."                                                     },
        {"If is a function and no keyword",     u"if IF",                  "call:37 call:37 ."       },
        {"the other keywords in any case",      u"then Else END while dO", "then else end while do ."},
        {"letters above 127 are no word",       u"\u00e4",                 "!2"                      },
        {"nor part of one",                     u"a\u00e4",                "?a !2"                   },
        {"a dot ends a word",                   u"a.b",                    "?a !2"                   },
    });
}

TEST(FormulaLexer, findsEachFunctionByItsName)
{
    const TestDocument document;
    for (int row = 0; row < FunctionRowCount; ++row) {
        if (FunctionTable[row].name.empty())
            continue;
        EXPECT_EQ(tokenText(FunctionTable[row].name), "call:" + std::to_string(row) + " .");
    }
}

TEST(FormulaLexer, findsNamesVariablesAndSheetsInThisOrder)
{
    const TestDocument document;
    workbook->sheetAt(0)->setName(u"Tax");
    workbook->sheetAt(1)->setName(u"Rate");
    expectTokens({
        {"a sheet",                                 u"Tax",    "sheet:0:0 ."},
        {"a sheet that is called as a function is", u"RATE",   "call:31 ."  },
        {"a sheet in any case",                     u"sheet3", "sheet:2:2 ."},
    });
    addVariable(u"tax");
    EXPECT_EQ(tokenText(u"TAX"), "variable:0 .");
    addName(u"Other");
    addName(u"tAx");
    EXPECT_EQ(tokenText(u"TAX other"), "name:1 name:0 .");
    addName(u"Sum");
    addName(u"while");
    EXPECT_EQ(tokenText(u"Sum while"), "call:3 while .");
}

TEST(FormulaLexer, readsSheetPrefixes)
{
    const TestDocument document;
    workbook->sheetAt(1)->setName(u"My Sheet");
    expectTokens({
        {"a plain name",                       u"Sheet1!A1",            "sheet:0:0 ! cell:0000/c000 ."},
        {"in any case",                        u"sHEET1!A1",            "sheet:0:0 ! cell:0000/c000 ."},
        {"a quoted name",                      u"'My Sheet'!A1",        "sheet:1:1 ! cell:0000/c000 ."},
        {"a quoted name that needs no quotes", u"'Sheet1'!A1",          "sheet:0:0 ! cell:0000/c000 ."},
        {"two sheets",                         u"Sheet1:Sheet3!A1",     "sheet:0:2 ! cell:0000/c000 ."},
        {"in any order",                       u"Sheet3:Sheet1!A1",     "sheet:0:2 ! cell:0000/c000 ."},
        {"two in one pair of quotes",          u"'My Sheet:Sheet1'!A1", "sheet:0:1 ! cell:0000/c000 ."},
        {"a name without more",                u"Sheet1",               "sheet:0:0 ."                 },
        {"no such sheet",                      u"'No Such'!A1",         "!25"                         },
        {"no such second sheet",               u"Sheet1:Nope!A1",       "!25"                         },
        {"a second that is a cell",            u"Sheet1:A1",            "!25"                         },
        {"no second",                          u"Sheet1:!A1",           "!25"                         },
        {"an empty name",                      u"''!A1",                "!25"                         },
        {"an empty second one",                u"'Sheet1:'!A1",         "!25"                         },
        {"a quote at the end of the text",     u"'",                    "!25"                         },
        {"a name that is not closed",          u"'Sheet1",              "sheet:0:0 ."                 },
        {"a pair that is not closed",          u"'Sheet1:Sheet3",       "sheet:0:2 ."                 },
        {"quotes around the first only",       u"'Sheet1':Sheet3!A1",   "sheet:0:0 !2"                },
        {"an unknown word before a colon",     u"Nope:Sheet1",          "?Nope !2"                    },
    });
}

TEST(FormulaLexer, reachesSheetsOnlyAsFarAsAReferenceCan)
{
    const TestDocument document;
    while (workbook->sheets.size() <= SheetIndexMax + 1)
        workbook->addSheet();
    EXPECT_EQ(tokenText(u"Sheet255"), "sheet:254:254 .");
    EXPECT_EQ(tokenText(u"Sheet256"), "!25");
    EXPECT_EQ(tokenText(u"'Sheet1:Sheet256'"), "!25");
}

TEST(FormulaLexer, readsTexts)
{
    const TestDocument document;
    expectTokens({
        {"a text",                          u"\"abc\"",     "\"abc\" ."    },
        {"the empty text",                  u"\"\"",        "\"\" ."       },
        {"a quote in it",                   u"\"a\"\"b\"",  "\"a\"b\" ."   },
        {"only a quote",                    u"\"\"\"\"",    "\"\"\" ."     },
        {"two texts",                       u"\"a\" \"b\"", "\"a\" \"b\" ."},
        {"a text that does not end",        u"\"abc",       "!24"          },
        {"only its beginning",              u"\"",          "!24"          },
        {"one that ends in a quote inside", u"\"abc\"\"",   "!24"          },
    });
}

TEST(FormulaLexer, limitsATextLiteral)
{
    const TestDocument document;
    const std::u16string most(LiteralMax, u'x');
    EXPECT_EQ(tokenText(u'"' + most + u'"'), '"' + std::string(LiteralMax, 'x') + "\" .");
    EXPECT_EQ(tokenText(u'"' + most + u"x\""), "!22");
    EXPECT_EQ(tokenText(u'"' + most), "!24");
    EXPECT_EQ(tokenText(u'"' + std::u16string(100000, u'x')), "!22");
    std::u16string quotes;
    for (int i = 0; i < LiteralMax; ++i)
        quotes += u"\"\"";
    EXPECT_EQ(tokenText(u'"' + quotes + u'"'), '"' + std::string(LiteralMax, '"') + "\" .");
    EXPECT_EQ(tokenText(u'"' + quotes + u"\"\"\""), "!22");
}

TEST(FormulaLexer, readsLiteralsOfAnyUnits)
{
    const TestDocument document;
    const std::u16string units = u"\"\u00e4\U0001f600\xdc00\xd800\uffff\"";
    FormulaLexer lexer;
    lexer.reset(units, {});
    lexer.next();
    EXPECT_EQ(lexer.kind, TokenString);
    EXPECT_EQ(lexer.literalText(), units.substr(1, units.size() - 2));
}

TEST(FormulaLexer, endsAtTheFirstZero)
{
    const TestDocument document;
    using namespace std::string_view_literals;
    expectTokens({
        {"behind a number",            u"12\0+3"sv,        "12 ."       },
        {"inside a word",              u"ab\0cd"sv,        "?ab ."      },
        {"inside a text",              u"\"ab\0cd\""sv,    "!24"        },
        {"inside a quoted sheet name", u"'Sheet1\0'!A1"sv, "sheet:0:0 ."},
        {"at once",                    u"\0001"sv,         "."          },
    });
}

TEST(FormulaLexer, complainsWhenItIsAskedBehindTheEnd)
{
    const TestDocument document;
    FormulaLexer lexer;
    lexer.reset(u" 1 ", {});
    EXPECT_EQ(lexer.kind, TokenStart);
    lexer.next();
    EXPECT_EQ(lexer.tokenStart, 1U);
    lexer.next();
    EXPECT_EQ(lexer.kind, TokenEndOfText);
    EXPECT_EQ(lexer.tokenStart, 3U);
    EXPECT_EQ(errorState.code, ErrorNone);
    lexer.next();
    EXPECT_EQ(lexer.kind, TokenEndOfText);
    EXPECT_EQ(errorState.code, ErrorEndOfFormula);
    clearError();
}

TEST(FormulaLexer, givesNothingWhileAnErrorStands)
{
    const TestDocument document;
    raiseError(ErrorFileRead);
    FormulaLexer lexer;
    lexer.reset(u"A1", {});
    lexer.next();
    EXPECT_EQ(lexer.kind, TokenEndOfText);
    EXPECT_EQ(errorState.code, ErrorFileRead);
    clearError();
}

TEST(FormulaLexer, leavesNoErrorBehindWhenAWordIsNoReference)
{
    const TestDocument document;
    FormulaLexer lexer;
    lexer.reset(u"Sum", {});
    lexer.next();
    EXPECT_EQ(lexer.kind, TokenName);
    EXPECT_EQ(errorState.code, ErrorNone);
}

TEST(FormulaLexer, capturesANameOnlyWhenAsked)
{
    const TestDocument document;
    FormulaLexer lexer;
    lexer.reset(u"alpha beta gamma", {});
    lexer.next();
    EXPECT_EQ(lexer.capturedName, u"");
    lexer.captureName = true;
    lexer.next();
    EXPECT_EQ(lexer.capturedName, u"beta");
    EXPECT_FALSE(lexer.captureName);
    lexer.next();
    EXPECT_EQ(lexer.capturedName, u"beta");
    // The same word can be read again.
    lexer.cursor = lexer.tokenStart;
    lexer.captureName = true;
    lexer.next();
    EXPECT_EQ(lexer.capturedName, u"gamma");
}

std::string tokensOfUnit(char16_t unit)
{
    if (isSpaceUnit(unit))
        return ".";
    if (unit >= 0x80)
        return "!2";
    const char character = static_cast<char>(unit);
    if (std::string_view("+-*/()&=!^%><0123456789").find(character) != std::string_view::npos)
        return std::string(1, character) + " .";
    if (std::string_view("nN").find(character) != std::string_view::npos)
        return "call:107 .";
    if (std::string_view("tT").find(character) != std::string_view::npos)
        return "call:108 .";
    if (isAsciiLetter(unit) || unit == u'_')
        return std::string("?") + character + " .";
    switch (unit) {
    case u',':
        return "; .";
    case u'$':
        return "!5";
    case u'"':
        return "!24";
    case u'\'':
        return "!25";
    default:
        return "!2";
    }
}

TEST(FormulaLexer, takesEachSingleUnit)
{
    const TestDocument document;
    for (int unit = 1; unit <= 0xffff; ++unit) {
        const auto text = static_cast<char16_t>(unit);
        EXPECT_EQ(tokenText({&text, 1}), tokensOfUnit(text)) << unit;
    }
}

TEST(FormulaLexer, takesTextsOfAnyLength)
{
    const TestDocument document;
    constexpr std::size_t length = 100000;
    const struct {
        const char* behaviour;
        std::u16string text;
        const char* end;
    } cases[] = {
        {"blanks",            std::u16string(length, u' '),      "."  },
        {"a word",            std::u16string(length, u'x'),      "x ."},
        {"a quoted name",     std::u16string(length, u'\''),     "!25"},
        {"dollars",           std::u16string(length, u'$'),      "!5" },
        {"signs",             std::u16string(length, u'-'),      "- ."},
        {"exclamation marks", std::u16string(length, u'!'),      "!2" },
        {"lone surrogates",   std::u16string(length, u'\xd800'), "!2" },
    };
    for (const auto& c : cases) {
        const std::string tokens = tokenText(c.text);
        EXPECT_TRUE(tokens.ends_with(c.end)) << c.behaviour;
    }
}

} // namespace
} // namespace vorn
