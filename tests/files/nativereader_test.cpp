// What a native file says of the document as a whole: versions, pools, names, tasks, sheets.

#include "core/chain.h"
#include "core/error.h"
#include "core/pool.h"
#include "core/workbook.h"
#include "files/native.h"
#include "files/stream.h"
#include "support/memoryfile.h"
#include "support/nativefile.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>
#include <string>

namespace vorn {
namespace {

class NativeReader : public testing::Test {
protected:
    TestDocument document;
};

// A file with one sheet that holds nothing.
NativeFile emptySheet(unsigned version = NativeVersion)
{
    return NativeFile(version, version, version).addSheets({u"Only"}).addTables();
}

// --- The header

TEST_F(NativeReader, looksAtTheVersionsInOrder)
{
    const struct {
        const char* phrase;
        unsigned format, writer, required;
        int code;
        const char16_t* message;
    } cases[] = {
        {"of today",                    3, 3,     3,     ErrorNone,       nullptr    },
        {"a need that nobody looks at", 3, 3,     4,     ErrorNone,       nullptr    },
        {"newer and readable",          3, 4,     3,     ErrorNone,
         u"The file was created in the newer version of Vorn. Some data may be lost."},
        {"newer in its format too",     9, 4,     0,     ErrorNone,
         u"The file was created in the newer version of Vorn. Some data may be lost."},
        {"newer and not readable",      3, 4,     4,     ErrorTooNewFile, nullptr    },
        {"the greatest",                3, 65535, 65535, ErrorTooNewFile, nullptr    },
        {"older",                       2, 2,     2,     ErrorNone,       nullptr    },
        {"of no version",               0, 0,     0,     ErrorNone,       nullptr    },
    };
    for (const auto& c : cases) {
        document.machine.userInterface.boxes.clear();
        NativeFile file(c.format, c.writer, c.required);
        file.addSheets({u"Only"}).addTables();
        EXPECT_EQ(loadBytes(file.ended()), c.code) << c.phrase;
        EXPECT_EQ(workbook->sheets.size(), c.code == ErrorNone ? 1 : 0) << c.phrase;
        const auto& boxes = document.machine.userInterface.boxes;
        ASSERT_EQ(boxes.size(), c.message == nullptr ? 0U : 1U) << c.phrase;
        for (const auto& box : boxes)
            EXPECT_EQ(box.text, c.message) << c.phrase;
    }
}

TEST_F(NativeReader, knowsAFileByItsFirstRecord)
{
    const struct {
        const char* phrase;
        std::string bytes;
        int code;
    } cases[] = {
        {"no byte",                                                 "",                               ErrorFileRead},
        {"a part of a head",                                        std::string("\1\0\1",             3),ErrorFileRead},
        {"a head and no header",                                                         std::string("\1\0\10\0",                                                                    4),ErrorFileRead},
        {"a header that is cut",                                            std::string("\1\0\10\0\3\0\3\0\3\0\0",                                                                            11),                                                                   ErrorFileRead},
        {"a header and nothing else",                                                      NativeFile().bytes(),ErrorFileRead},
        {"a text","hello, world",      ErrorFileFormat                                                                          },
        {"the end",                                                            std::string("\2\0\0\0",                                                                        4),ErrorFileFormat},
        {"another record",std::string("\7\0\2\0ab",6),ErrorFileFormat},
        {"a type with a high byte",                                          std::string("\1\1\0\0",                                                                           4), ErrorFileFormat},
        {"a part of a sheet",
         NativeFile().add(RecordSelection,                                                                 Fields().add32(0).add16(1).add16(1)).addTables().ended(),
         ErrorFileFormat},
        {"a document without a sheet",                                          NativeFile().addTables().ended(),                                                                          ErrorFileFormat},
        {"one with nothing at all", NativeFile().ended(),                                                                             ErrorFileFormat},
        {"one that does not end",emptySheet().bytes(),ErrorFileRead},
    };
    for (const auto& c : cases)
        EXPECT_EQ(loadBytes(c.bytes), c.code) << c.phrase;
}

// A header of fewer bytes reads as one of an old version, a longer one as it begins.
TEST_F(NativeReader, takesHeadersOfOtherLengths)
{
    const std::string sheet = NativeFile().addSheets({u"Only"}).add(RecordEnd).bytes().substr(12);
    EXPECT_EQ(loadBytes(std::string("\1\0\0\0", 4) + sheet), ErrorNone);
    EXPECT_EQ(workbook->formats.size(), 19);
    EXPECT_EQ(loadBytes(std::string("\1\0\12\0\3\0\3\0\3\0\0\20!!", 14) + sheet), ErrorNone);
    EXPECT_EQ(workbook->formats.size(), 16);
}

TEST_F(NativeReader, passesOverRecordsThatItDoesNotKnow)
{
    NativeFile file;
    for (const unsigned type : {0U, 6U, 28U, 100U, 32767U})
        file.add(type, Fields().addCounted(u"whatever"));
    file.add(RecordHeader, Fields().add16(9).add16(9).add16(9));
    file.addSheets({u"Only"});
    EXPECT_EQ(loadBytes(file.ended() + "more bytes"), ErrorNone);
    EXPECT_TRUE(document.machine.userInterface.boxes.empty());
}

TEST_F(NativeReader, takesACodePageThatIsKnown)
{
    const struct {
        const char* phrase;
        std::uint32_t page;
        int taken;
    } cases[] = {
        {"western",           1252,       1252 },
        {"japanese",          932,        932  },
        {"UTF-8",             65001,      65001},
        {"none",              0,          65001},
        {"one of no machine", 4711,       65001},
        {"the greatest",      0xffffffff, 65001},
    };
    for (const auto& c : cases) {
        NativeFile file = emptySheet();
        ASSERT_EQ(loadBytes(file.add(RecordCodePage, Fields().add32(c.page)).ended()), ErrorNone);
        EXPECT_EQ(workbook->codePage, c.taken) << c.phrase;
    }
}

// --- Texts and formulas

TEST_F(NativeReader, ownsTextsOnlyForCellsThatHoldThem)
{
    NativeFile file = emptySheet();
    for (const char16_t* text : {u"nobody's", u"once", u"twice", u""})
        file.addText(text);
    file.add(RecordText, Fields().add32(400).addUnits(u"cut off"));
    file.add(RecordText, Fields().add32(14).addUnits(u"early").add16(0).addUnits(u"end"));
    file.add(RecordText);
    file.add(RecordSheetStart);
    Fields row = rowFields(0, 0, 9);
    for (const std::uint32_t number : {1U, 2U, 2U, 3U, 4U, 5U, 6U, 7U})
        row.addText(number, 0);
    ASSERT_EQ(loadBytes(file.add(RecordRow, row.addText(0xffffffff, 0)).ended()), ErrorNone);
    const int owners[] = {0, 1, 2, 1, 1, 1, 1};
    for (int index = 0; index < 7; ++index)
        EXPECT_EQ(stringPool->refCount(index), owners[index]) << index;
    EXPECT_FALSE(stringPool->isLive(7));
    const char16_t* shown[] = {u"once",  u"twice", u"twice", u"", u"cut off",
                               u"early", u"",      u"",      u""};
    for (int column = 0; column < 9; ++column) {
        const CellValue value = workbook->sheetAt(0)->valueOf(column, 0);
        EXPECT_EQ(value.tag, TagText) << column;
        EXPECT_EQ(std::u16string(stringPool->text(value.textIndex())), shown[column]) << column;
    }
    // Two numbers that no text has.
    EXPECT_EQ(workbook->sheetAt(0)->valueOf(7, 0).textIndex(), -1);
    EXPECT_EQ(workbook->sheetAt(0)->valueOf(8, 0).textIndex(), -1);
}

TEST_F(NativeReader, ownsFormulasOnlyForCellsThatHoldThem)
{
    NativeFile file = emptySheet();
    file.addText(u"held");
    file.addFormula("0b:00000000 0b:00000000 17 00");
    file.addFormula("0b:ffffffff 00");
    file.addFormula("01:0000000000000840 00");
    file.add(RecordSheetStart);
    Fields row = rowFields(0, 0, 5);
    for (const std::uint32_t number : {2U, 2U, 1U, 3U, 0xffffffffU})
        row.addFormula(number, 0, number);
    ASSERT_EQ(loadBytes(file.add(RecordRow, row).ended()), ErrorNone);
    EXPECT_EQ(stringPool->refCount(0), 2);
    EXPECT_EQ(formulaPool->refCount(0), 0);
    EXPECT_EQ(formulaPool->refCount(1), 1);
    EXPECT_EQ(formulaPool->refCount(2), 2);
    const char16_t* inputs[] = {u"=3", u"=3", u"=\"\"", u"3", u"4.294967295e9"};
    for (int column = 0; column < 5; ++column)
        EXPECT_EQ(workbook->sheetAt(0)->cellInput(column, 0), inputs[column]) << column;
}

TEST_F(NativeReader, refusesDamagedCode)
{
    const struct {
        const char* phrase;
        Fields fields;
        int code;
    } cases[] = {
        {"sound code",                Fields().addCode("01:0000000000000000 00"),          ErrorNone    },
        {"bytes behind it",           Fields().addCode("01:0000000000000000 00").add32(7), ErrorNone    },
        {"no code",                   Fields(),                                            ErrorFileRead},
        {"a part of a count",         Fields().add16(1),                                   ErrorFileRead},
        {"a count of nothing",        Fields().add32(0),                                   ErrorFileRead},
        {"a count and no code",       Fields().add32(1),                                   ErrorFileRead},
        {"a count beyond the record", Fields().add32(2).add8(0),                           ErrorFileRead},
        {"the greatest count",        Fields().add32(0xffffffff).add8(0),                  ErrorFileRead},
        {"code without an end",       Fields().addCode("1a"),                              ErrorFileRead},
        {"an opcode that is none",    Fields().addCode("28 00"),                           ErrorFileRead},
        {"a function that is none",   Fields().addCode("02:bd0000 00"),                    ErrorFileRead},
        {"a step of undo programs",   Fields().addCode("02:810000 00"),                    ErrorFileRead},
        {"a jump astray",             Fields().addCode("22:1000 00"),                      ErrorFileRead},
        {"a text that is there",      Fields().addCode("0b:01000000 00"),                  ErrorNone    },
        {"a text that is not",        Fields().addCode("0b:02000000 00"),                  ErrorFileRead},
        {"a name that is there",      Fields().addCode("24:0100 00"),                      ErrorNone    },
        {"a name that is not",        Fields().addCode("24:0200 00"),                      ErrorFileRead},
        {"a value that owns a text",  Fields().addCode("03:030000000000000000000000 00"),
         ErrorFileRead                                                                                  },
    };
    for (const auto& c : cases) {
        // Texts come first; names are looked for at the end.
        NativeFile file = emptySheet();
        file.addText(u"a").addText(u"b");
        NativeFile formula = file;
        formula.add(RecordFormula, c.fields);
        formula.add(RecordName, Fields().addCounted(u"x"));
        formula.add(RecordName, Fields().addCounted(u"y"));
        EXPECT_EQ(loadBytes(formula.ended()), c.code) << c.phrase;

        if (c.fields.bytes().empty())
            continue; // a name without a definition is a deleted one
        NativeFile name = file;
        name.add(RecordName, Fields().addCounted(u"x").addBytes(c.fields.bytes()));
        name.add(RecordName, Fields().addCounted(u"y"));
        EXPECT_EQ(loadBytes(name.ended()), c.code) << c.phrase;
    }
}

// --- Names

TEST_F(NativeReader, takesNamesInTheirOrder)
{
    NativeFile file = emptySheet();
    file.addText(u"a").addText(u"b");
    file.add(RecordName, Fields().addCounted(u"Later").addCode("24:0200 0b:00000000 17 00"));
    file.add(RecordName, Fields().addCounted(u"deleted"));
    file.add(RecordName, Fields().addCounted(u"LATER").addCode("0b:01000000 00"));
    file.add(RecordName, Fields().addCounted(u"").addCode("0b:01000000 0b:00000000 17 00"));
    ASSERT_EQ(loadBytes(file.ended()), ErrorNone);
    ASSERT_EQ(workbook->names.size(), 4);
    EXPECT_EQ(std::u16string(workbook->names[0].name), u"Later");
    EXPECT_EQ(std::u16string(workbook->names[2].name), u"LATER");
    EXPECT_EQ(std::u16string(workbook->names[3].name), u"") << "there, though empty";
    EXPECT_EQ(workbook->names[1].block, nullptr);
    for (const DefinedName& name : workbook->names)
        EXPECT_EQ(name.fileIndex, -1);
    // One owner for each place in which a text stands, however many names come behind it.
    EXPECT_EQ(stringPool->refCount(0), 2);
    EXPECT_EQ(stringPool->refCount(1), 2);
}

TEST_F(NativeReader, takesManyNamesInNoTime)
{
    NativeFile file = emptySheet();
    file.addText(u"a");
    for (int name = 0; name < 60000; ++name)
        file.add(RecordName,
                 Fields().addCounted(u"n").addCode("24:5fea 0b:00000000 17 0b:00000000 17 00"));
    ASSERT_EQ(loadBytes(file.ended()), ErrorNone);
    EXPECT_EQ(workbook->names.size(), 60000);
    EXPECT_EQ(stringPool->refCount(0), 120000);
}

TEST_F(NativeReader, takesAsManyNamesAsFormulasCanCall)
{
    NativeFile file = emptySheet();
    for (int name = 0; name < 65536; ++name)
        file.add(RecordName);
    EXPECT_EQ(loadBytes(file.ended()), ErrorNone);
    EXPECT_EQ(loadBytes(file.add(RecordName).ended()), ErrorMemory);
}

// --- Volatile functions

TEST_F(NativeReader, calculatesOnlyWhatChangesByItself)
{
    const struct {
        const char* phrase;
        const char* formula;
        const char* name;
        double result; // of "=1+1"
    } cases[] = {
        {"results are trusted",          "04:0200 00",   "04:0200 00",   77},
        {"the day in a formula",         "02:630000 00", "04:0200 00",   2 },
        {"the moment in a formula",      "02:620000 00", "04:0200 00",   2 },
        {"a random number in a formula", "02:520000 00", "04:0200 00",   2 },
        {"the day in a name",            "04:0200 00",   "02:630000 00", 2 },
        {"functions beside them",        "02:0e0000 00", "02:7e0000 00", 77},
    };
    for (const auto& c : cases) {
        NativeFile file = emptySheet();
        file.add(RecordName, Fields().addCounted(u"name").addCode(c.name));
        file.addFormula("04:0100 04:0100 05 00").addFormula(c.formula);
        file.add(RecordSheetStart).add(RecordRow, rowFields(0, 0, 1).addFormula(77, 0, 0));
        ASSERT_EQ(loadBytes(file.ended()), ErrorNone);
        EXPECT_EQ(workbook->sheetAt(0)->valueOf(0, 0).number(), c.result) << c.phrase;
        EXPECT_NE(calcChain.first(), nullptr);
    }
}

TEST_F(NativeReader, calculatesInTheOrderOfReferences)
{
    NativeFile file = emptySheet();
    file.addFormula("0c:00000100 02:630000 05 00"); // =B1+Today()
    file.addFormula("0c:00000200 00");              // =C1
    file.add(RecordSheetStart);
    file.add(RecordRow, rowFields(0, 0, 3).addFormula(0, 0, 0).addFormula(0, 0, 1).addNumber(5, 0));
    ASSERT_EQ(loadBytes(file.ended()), ErrorNone);
    const Sheet& sheet = *workbook->sheetAt(0);
    EXPECT_EQ(sheet.valueOf(1, 0).number(), 5);
    EXPECT_EQ(sheet.valueOf(0, 0).number(), 36954 + 5);
}

// --- Tasks

TEST_F(NativeReader, takesTasks)
{
    const struct {
        const char* phrase;
        unsigned tag;
        std::uint16_t corners[4];
        ValueTag taken;
        RangeRef area;
    } cases[] = {
        {"a range",               9,  {1, 2, 3, 4},             TagSheetRangeRef, {1, 2, 3, 4}            },
        {"a cell",                8,  {1, 2, 3, 4},             TagSheetCellRef,  {1, 2, 0, 0}            },
        {"no area",               0,  {1, 2, 3, 4},             TagBlank,         {0, 0, 0, 0}            },
        {"a text",                3,  {0, 0, 0, 0},             TagBlank,         {0, 0, 0, 0}            },
        {"a formula",             5,  {1, 0, 0, 0},             TagBlank,         {0, 0, 0, 0}            },
        {"a range without sheet", 7,  {1, 2, 3, 4},             TagBlank,         {0, 0, 0, 0}            },
        {"the way back",          10, {1, 2, 3, 4},             TagBlank,         {0, 0, 0, 0}            },
        {"outside of the sheet",
         9,                           {65535, 256, 16384, 700},
         TagSheetRangeRef,                                                        {16383, 255, 16383, 255}},
    };
    for (const auto& c : cases) {
        Fields task;
        task.add8(c.tag).add8(77).add8(255).add8(245);
        for (const unsigned corner : c.corners)
            task.add16(corner);
        task.add32(1).add32(0).addCounted(u"Name").addCounted(u"Set(A1,1)\nReturn()");
        ASSERT_EQ(loadBytes(emptySheet().add(RecordTask, task).ended()), ErrorNone);
        ASSERT_EQ(workbook->tasks.size(), 1);
        const Task& taken = workbook->tasks[0];
        EXPECT_EQ(taken.onTapArea.tag, c.taken) << c.phrase;
        if (c.taken != TagBlank) {
            EXPECT_EQ(taken.onTapArea.rangeRef(), c.area) << c.phrase;
            EXPECT_EQ(taken.onTapArea.firstSheet, 255) << c.phrase;
            EXPECT_EQ(taken.onTapArea.lastSheet, 245) << c.phrase;
        }
        EXPECT_EQ(taken.onTapArea.reserved, 0) << c.phrase;
        EXPECT_EQ(taken.onTap, 1);
        EXPECT_EQ(taken.addToMenu, 0);
        EXPECT_EQ(taken.global, 0);
        EXPECT_EQ(std::u16string(taken.name), u"Name");
        EXPECT_EQ(std::u16string(taken.text), u"Set(A1,1)\nReturn()");
    }
}

TEST_F(NativeReader, keepsTasksOfOneNameApart)
{
    const Fields task = Fields().add32(0).add32(0).add32(0).add32(0).add32(256);
    NativeFile file = emptySheet();
    for (int count = 0; count < 3; ++count)
        file.add(RecordTask, Fields(task).addCounted(u"Same").addCounted(u""));
    file.add(RecordTask);
    ASSERT_EQ(loadBytes(file.ended()), ErrorNone);
    ASSERT_EQ(workbook->tasks.size(), 4);
    EXPECT_EQ(workbook->tasks[2].addToMenu, 1);
    EXPECT_EQ(workbook->tasks[2].text, nullptr);
    EXPECT_EQ(workbook->tasks[3].name, nullptr);
}

// --- Sheets

TEST_F(NativeReader, takesSheetsByTheirNames)
{
    const std::u16string longest(SheetNameMax, u'x');
    NativeFile file;
    file.addSheets({u"One", u"one", u"", longest + u"yz", u"\u00c4 b!"}).addTables();
    ASSERT_EQ(loadBytes(file.ended()), ErrorNone);
    const std::u16string names[] = {u"One", u"one", u"Sheet1", longest, u"\u00c4 b!"};
    ASSERT_EQ(workbook->sheets.size(), 5);
    for (int index = 0; index < 5; ++index) {
        EXPECT_EQ(workbook->sheetAt(index)->name(), names[index]);
        EXPECT_EQ(workbook->sheetAt(index)->index, index);
    }
    EXPECT_EQ(workbook->currentSheet, workbook->sheetAt(0));
}

TEST_F(NativeReader, takesMoreSheetsThanAReferenceReaches)
{
    NativeFile file;
    for (int sheet = 0; sheet < 300; ++sheet)
        file.addSheets({u"s"});
    file.addTables().addFormula("04:0100 00");
    for (int sheet = 0; sheet < 300; ++sheet)
        file.add(RecordSheetStart);
    file.add(RecordRow, rowFields(0, 0, 1).addFormula(0, 0, 0));
    ASSERT_EQ(loadBytes(file.ended()), ErrorNone);
    EXPECT_EQ(workbook->sheets.size(), 300);
    EXPECT_EQ(workbook->currentSheet, workbook->sheetAt(299));
    EXPECT_EQ(calcChain.first()->position(), (CellPosition{0, 0, 299}));
}

TEST_F(NativeReader, refusesMoreSheetsThanAFormulaKnows)
{
    NativeFile file;
    for (int sheet = 0; sheet < 65535; ++sheet)
        file.add(RecordSheetName, Fields().addCounted(u"s"));
    EXPECT_EQ(loadBytes(file.ended()), ErrorNone);
    EXPECT_EQ(loadBytes(file.addSheets({u"s"}).ended()), ErrorFileRead);
}

TEST_F(NativeReader, passesOverWhatBelongsToNoSheet)
{
    NativeFile file = emptySheet();
    const auto addSheetRecords = [&file] {
        file.add(RecordScroll, Fields().add16(1).add16(1).add16(1).add16(1).add16(1).add16(1));
        file.add(RecordView, Fields().add32(50));
        file.add(RecordSheetProtection, Fields().add16(1));
        file.add(RecordColumns, Fields().add16(0).add16(9).add32(100).add16(0).add16(1));
        file.add(RecordRow, rowFields(0, 0, 1).addNumber(1, 0));
        file.add(RecordFilter, Fields().add16(0).add16(0).add16(1).add16(1));
        file.add(RecordFilterColumn, Fields().add32(0));
    };
    addSheetRecords();
    file.add(RecordSheetStart).add(RecordSheetStart);
    addSheetRecords();
    file.add(RecordSheetStart);
    addSheetRecords();
    ASSERT_EQ(loadBytes(file.ended()), ErrorNone);
    const Sheet& sheet = *workbook->sheetAt(0);
    EXPECT_FALSE(sheet.hasRows());
    EXPECT_FALSE(sheet.protectedSheet);
    EXPECT_FALSE(sheet.filter.active);
    EXPECT_EQ(sheet.columns.size(), 0);
    EXPECT_EQ(sheet.zoom, 100);
    EXPECT_EQ(sheet.selection.activeRow, 0);
    EXPECT_EQ(workbook->currentSheet, &sheet);
}

TEST_F(NativeReader, makesTheFiledSheetActive)
{
    const struct {
        const char* phrase;
        unsigned version, type;
        std::uint32_t index;
        int active;
    } cases[] = {
        {"the second",                            3, RecordActiveSheet, 1,          1},
        {"the first",                             3, RecordActiveSheet, 0,          0},
        {"one that is not there",                 3, RecordActiveSheet, 3,          0},
        {"the greatest number",                   3, RecordActiveSheet, 0xffffffff, 0},
        {"another record of the reserved band",   3, 32768,             1,          0},
        {"the last type",                         3, 65535,             1,          0},
        {"nothing of the kind: the last one",     3, 6,                 1,          2},
        {"a file of a later version",             4, RecordActiveSheet, 1,          1},
        {"an old file has no such record",        2, RecordActiveSheet, 1,          0},
        {"an old file begins with the first one", 2, 6,                 1,          0},
    };
    for (const auto& c : cases) {
        NativeFile file(c.version, 3, 3);
        file.addSheets({u"a", u"b", u"c"}).addTables();
        file.add(RecordSheetStart).add(RecordSheetStart).add(RecordSheetStart);
        file.add(c.type, Fields().add32(11).add32(c.index).add32(0));
        ASSERT_EQ(loadBytes(file.ended()), ErrorNone) << c.phrase;
        EXPECT_EQ(workbook->currentSheet, workbook->sheetAt(c.active)) << c.phrase;
    }
}

TEST_F(NativeReader, protectsTheWorkbookByTheNumberOne)
{
    for (const unsigned number : {0U, 1U, 2U, 257U}) {
        NativeFile file = emptySheet();
        file.add(RecordWorkbookProtection, Fields().add16(1));
        file.add(RecordWorkbookProtection, Fields().add16(number));
        ASSERT_EQ(loadBytes(file.ended()), ErrorNone);
        EXPECT_EQ(workbook->protectedWorkbook, number == 1) << number;
    }
}

// --- Where the bytes come from

TEST_F(NativeReader, readsAFileOfItsOwnLength)
{
    const std::string bytes = richFile().ended();
    for (const std::size_t atOnce : {std::size_t{1}, std::size_t{100}, SIZE_MAX}) {
        NewDocument(0, FileKindNative);
        MemoryFile file(bytes);
        file.mostAtOnce = atOnce;
        FileStream stream(file);
        TransferContext context;
        context.stream = &stream;
        loadNative(context, static_cast<std::uint32_t>(bytes.size()));
        EXPECT_EQ(errorState.code, ErrorNone) << atOnce;
        EXPECT_EQ(workbook->sheets.size(), 3) << atOnce;
    }
}

TEST_F(NativeReader, tellsOfAFileThatIsShorterOrCannotBeRead)
{
    const std::string bytes = richFile().ended();
    const auto code = [](MemoryFile& file, std::uint32_t length) {
        NewDocument(0, FileKindNative);
        FileStream stream(file);
        TransferContext context;
        context.stream = &stream;
        loadNative(context, length);
        const int standing = errorState.code;
        clearError();
        return standing;
    };
    const auto length = static_cast<std::uint32_t>(bytes.size());
    MemoryFile sound(bytes);
    EXPECT_EQ(code(sound, length + 1000), ErrorNone);
    MemoryFile shorter(bytes.substr(0, bytes.size() / 2));
    EXPECT_EQ(code(shorter, length), ErrorFileRead);
    MemoryFile failing(bytes);
    failing.failingRead = 1;
    EXPECT_EQ(code(failing, length), ErrorFileRead);
    MemoryFile failingLater(bytes);
    failingLater.mostAtOnce = 200;
    failingLater.failingRead = 2;
    EXPECT_EQ(code(failingLater, length), ErrorFileRead);
    MemoryFile empty;
    EXPECT_EQ(code(empty, 0), ErrorFileRead);
}

TEST_F(NativeReader, readsNothingWhileAnErrorStands)
{
    NewDocument(0, FileKindNative);
    raiseError(ErrorFileOpen);
    const std::string bytes = richFile().ended();
    MemoryStream stream(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
    TransferContext context;
    context.stream = &stream;
    loadNative(context, static_cast<std::uint32_t>(bytes.size()));
    EXPECT_EQ(errorState.code, ErrorFileOpen);
    EXPECT_EQ(workbook->sheets.size(), 0);
    clearError();
}

} // namespace
} // namespace vorn
