#include "files/native.h"

#include "core/chain.h"
#include "core/heap.h"
#include "core/pool.h"
#include "core/workbook.h"
#include "files/stream.h"
#include "formula/bytecode.h"
#include "formula/references.h"
#include "support/filedrecords.h"
#include "support/memoryfile.h"
#include "support/rawcells.h"
#include "support/refusal.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace vorn {
namespace {

using Payloads = std::vector<std::string>;

class NativeWriterTest : public testing::Test {
protected:
    ~NativeWriterTest() override { clearError(); }

    Sheet& sheet() { return *workbook->currentSheet; }

    static void addName(std::u16string_view name, ByteCodeWriter* writer)
    {
        DefinedName record;
        record.name = duplicateString(name);
        record.block = writer == nullptr ? nullptr : writer->finish();
        workbook->names.append(record);
    }

    static Task& addTask(std::u16string_view name, std::u16string_view text)
    {
        return *workbook->addTask(duplicateString(name), duplicateString(text));
    }

    static void pushText(ByteCodeWriter& writer, std::int32_t index)
    {
        writer.emit(OpPushText, stringPool->addRef(index));
    }

    void storeFormula(int column, int row, ByteCodeWriter& writer)
    {
        const CellPosition place{static_cast<std::uint16_t>(row),
                                 static_cast<std::uint16_t>(column), 0};
        sheet().setCell(column, row, formulaCell(writer, place));
    }

    TestDocument document;
};

// --- The whole

TEST_F(NativeWriterTest, writesANewWorkbookInThisOrder)
{
    const std::vector<FiledRecord> expected = [] {
        std::vector<FiledRecord> records = {
            {1,  bare("0300 0300 0300 0010")                          },
            {19, hex32(static_cast<std::uint32_t>(workbook->codePage))},
            {3,  bare("00000000")                                     },
            {20, bare("00000000")                                     },
            {12, bare("00000000")                                     },
            {23, bare("0000")                                         },
            {7,  hexCounted(u"Sheet1")                                },
            {7,  hexCounted(u"Sheet2")                                },
            {7,  hexCounted(u"Sheet3")                                },
            {16, bare("0100 0600 1000 1000")                          },
        };
        const auto font = [&](const char* head, std::u16string_view face) {
            std::string name = hexPlain(face);
            name.resize(128, '0');
            records.push_back({8, bare(head) + name + hex8(static_cast<unsigned>(face.size()))});
        };
        font("37 00 0000 c800 ff7f 9001 22 01", u"Tahoma");
        font("00 00 0100 c800 ff7f bc02 22 01", u"Arial");
        font("00 00 0200 c800 ff7f 9001 22 01", u"Arial");
        font("00 00 0300 c800 ff7f bc02 22 01", u"Arial");
        font("00 00 0300 c800 ff7f bc02 22 01", u"Arial");
        font("00 00 0000 c800 ff7f 9001 22 01", u"Arial");
        const auto number = [&](const char* head, std::u16string_view positivePrefix,
                                std::u16string_view positiveSuffix,
                                std::u16string_view negativePrefix,
                                std::u16string_view negativeSuffix) {
            records.push_back({17, bare(head) + hexPlain(positivePrefix) +
                                       hexPlain(positiveSuffix) + hexPlain(negativePrefix) +
                                       hexPlain(negativeSuffix)});
        };
        const auto date = [&](std::u16string_view datePattern, std::u16string_view timePattern) {
            records.push_back({18, hexPlain(datePattern) + hexPlain(timePattern)});
        };
        number("ff 00", u"", u"", u"", u"");
        number("00 00", u"", u"", u"-", u"");
        number("02 00", u"", u"", u"-", u"");
        number("00 01", u"$", u"", u"($", u")");
        number("02 01", u"$", u"", u"($", u")");
        number("02 00", u"", u"%", u"-", u"%");
        date(u"M/d/yy", u"");
        date(u"d-MMM-yy", u"");
        date(u"d-MMM", u"");
        date(u"MMM-yy", u"");
        date(u"", u"h:mm tt");
        date(u"", u"H:mm");
        date(u"", u"h:mm:ss tt");
        date(u"", u"H:mm:ss");
        date(u"M/d/yy", u"H:mm");
        number("fe 00", u"", u"", u"", u"");
        records.push_back({9, bare("0000 0000 0000 0100 c020 0000 0000 2000")});
        for (int sheet = 0; sheet < 3; ++sheet) {
            records.push_back({5, ""});
            records.push_back({22, bare("0000 0000 0000 0000 0000 0000")});
            records.push_back({14, bare("64000000 01 01 01 00 00 0000 0000 0000 0000")});
        }
        records.push_back({32769, bare("0b 000000 00000000 00000000")});
        records.push_back({2, ""});
        return records;
    }();

    const std::vector<FiledRecord> records = savedRecords();
    ASSERT_EQ(records.size(), expected.size());
    for (std::size_t index = 0; index < records.size(); ++index) {
        EXPECT_EQ(records[index].type, expected[index].type) << "record " << index;
        EXPECT_EQ(records[index].payload, expected[index].payload) << "record " << index;
    }
    EXPECT_EQ(errorState.code, ErrorNone);
}

TEST_F(NativeWriterTest, ordersTheRecordsOfAFullWorkbook)
{
    ByteCodeWriter definition;
    pushText(definition, stringPool->addText(u"in a name"));
    addName(u"One", &definition);
    addName(u"Two", nullptr);
    sheet().setCell(0, 0, textCell(u"in a cell"));
    sheet().setCell(1, 1, constantFormula(1, {1, 1, 0}));
    addTask(u"a", u"b");
    addTask(u"c", u"d");
    Sheet& second = *workbook->sheets[1];
    second.protectedSheet = true;
    second.columns.setColumnWidth(3, 4, 1000);
    second.columns.setColumnWidth(6, 6, 2000);
    second.setCell(0, 3, numberCell(1));
    second.filter.start({0, 0, 3, 1});
    EXPECT_EQ(savedTypes(), "1 19 3 4x2 20 21x2 12 13 23 25x2 7x3 16 8x6 17x6 18x9 17 9 "
                            "5 22 14 11x2 5 22 14 24 15x2 11 26 27x2 5 22 14 32769 2");
}

TEST_F(NativeWriterTest, beginsWhereTheStreamIs)
{
    TransferContext context;
    MemoryStream stream;
    context.stream = &stream;
    stream.Write("before", 6);
    saveNative(context);
    EXPECT_EQ(std::string(stream.data(), stream.data() + stream.end()), "before" + savedBytes());
}

TEST_F(NativeWriterTest, writesTheCodePageTheProtectionAndTheActiveSheet)
{
    workbook->codePage = 0x0002bcde;
    workbook->protectedWorkbook = true;
    workbook->currentSheet = workbook->sheets[2];
    EXPECT_EQ(savedPayloads(19), Payloads{bare("debc0200")});
    EXPECT_EQ(savedPayloads(23), Payloads{bare("0100")});
    EXPECT_EQ(savedPayloads(32769), Payloads{bare("0b000000 02000000 00000000")});
}

TEST_F(NativeWriterTest, namesSheetsByTheirFullLength)
{
    const std::u16string longest(SheetNameMax, u'\u00e4');
    workbook->sheets[0]->setName(longest);
    workbook->sheets[1]->setName(u"");
    EXPECT_EQ(savedPayloads(7),
              (Payloads{hexCounted(longest), hexCounted(u""), hexCounted(u"Sheet3")}));
}

TEST_F(NativeWriterTest, writesAWorkbookWithoutSheets)
{
    NewDocument(0, FileKindNative);
    EXPECT_EQ(savedTypes(), "1 19 3 20 12 23 16 32769 2");
    EXPECT_EQ(savedPayloads(16), Payloads{bare("0000 0000 0000 0000")});
    EXPECT_EQ(errorState.code, ErrorNone);
}

// --- Pools

TEST_F(NativeWriterTest, numbersTheTextsThatAreOwned)
{
    const std::int32_t freed = stringPool->addText(u"freed");
    sheet().setCell(0, 0, textCell(u"a"));
    stringPool->add(u"nobody's", 18, 0);
    sheet().setCell(1, 0, textCell(u"\u20ac"));
    sheet().setCell(2, 0, Cell{CellValue::makeTextIndex(-1), -1});
    sheet().setCell(3, 0, textCell(u""));
    stringPool->release(freed);
    EXPECT_EQ(savedPayloads(3), Payloads{bare("04000000")}) << "the live entries, with the unowned";
    EXPECT_EQ(savedPayloads(4),
              (Payloads{hexCounted(u"a"), hexCounted(u"\u20ac"), hexCounted(u"")}));
    EXPECT_EQ(savedPayloads(11), Payloads{bare("0000 0000 0400 ff00 0001 0000") +
                                          bare("03 0000 00000000") + bare("03 0000 01000000") +
                                          bare("03 0000 ffffffff") + bare("03 0000 02000000")});
}

TEST_F(NativeWriterTest, numbersTheFormulasThatAreOwned)
{
    ByteCodeWriter unowned;
    unowned.emit(OpPushLogical, std::uint8_t{1});
    const std::int32_t nobodys = unowned.finishInPool();
    sheet().setCell(0, 0, constantFormula(1, {0, 0, 0}));
    sheet().setCell(1, 0, constantFormula(2, {0, 1, 0}));
    Cell shared;
    cloneCell(*sheet().cellAt(0, 0), shared, {0, 2, 0}, JoinChain);
    sheet().setCell(2, 0, shared);
    formulaPool->release(nobodys);
    formulaPool->add("\2\0\0\0\5\0", 6, 0);
    EXPECT_EQ(savedPayloads(12), Payloads{bare("03000000")});
    EXPECT_EQ(savedPayloads(13), (Payloads{bare("0a000000 01") + hexDouble(1) + "00",
                                           bare("0a000000 01") + hexDouble(2) + "00"}));
    EXPECT_EQ(savedPayloads(11),
              Payloads{bare("0000 0000 0300 ff00 0001 0000") + bare("80 0000 00000000") +
                       bare("80 0000 01000000") + bare("80 0000 00000000")});
}

TEST_F(NativeWriterTest, turnsByteCodeIntoItsFileForm)
{
    const std::int32_t freed = stringPool->addText(u"freed");
    const std::int32_t text = stringPool->addText(u"text");
    stringPool->release(freed);
    ByteCodeWriter definition;
    pushText(definition, text);
    addName(u"Later", nullptr);
    addName(u"Name", &definition);
    ByteCodeWriter formula;
    pushText(formula, text);
    formula.emit(OpCallName, std::uint16_t{1});
    formula.emit(OpConcat);
    storeFormula(0, 0, formula);
    stringPool->release(text);

    EXPECT_EQ(savedPayloads(4), Payloads{hexCounted(u"text")});
    EXPECT_EQ(savedPayloads(20), Payloads{bare("02000000")});
    EXPECT_EQ(savedPayloads(21), (Payloads{hexCounted(u"Later"),
                                           hexCounted(u"Name") + bare("06000000 0b 00000000 00")}));
    EXPECT_EQ(savedPayloads(13), Payloads{bare("0a000000 0b 00000000 24 0100 17 00")});
    EXPECT_EQ(savedPayloads(13), Payloads{bare("0a000000 0b 00000000 24 0100 17 00")})
        << "the document's own code is as it was";
}

TEST_F(NativeWriterTest, writesNamesThatCallThemselvesAndNamesWithoutAName)
{
    ByteCodeWriter definition;
    definition.emit(OpCallName, std::uint16_t{0});
    addName(u"Self", &definition);
    addName(u"", nullptr);
    EXPECT_EQ(savedPayloads(21),
              (Payloads{hexCounted(u"Self") + bare("04000000 24 0000 00"), hexCounted(u"")}));
}

TEST_F(NativeWriterTest, writesTheStandInOfUntranslatedFormulasAsAFormula)
{
    ByteCodeWriter writer;
    writer.emit(OpPushError, std::uint16_t{CellErrorNA});
    placeholderFormula = writer.finishInPool();
    FormulaCell* cell = newFormulaCell({0, 0, 0}, placeholderFormula);
    cell->result = CellValue::makeNumber(3);
    sheet().setCell(0, 0, Cell{CellValue::makeFormula(cell), -1});
    EXPECT_EQ(savedPayloads(13), Payloads{bare("04000000 1b 2a00 00")});
    EXPECT_EQ(savedPayloads(11), Payloads{bare("0000 0000 0100 ff00 0001 0000 84 0000") +
                                          hexDouble(3) + bare("00000000")});
}

TEST_F(NativeWriterTest, writesTheResultOfAFormulaWithoutCode)
{
    FormulaCell* cell = newFormulaCell({0, 0, 0}, -1);
    cell->result = textValue(u"left");
    sheet().setCell(0, 0, Cell{CellValue::makeFormula(cell), -1});
    sheet().setCell(1, 0, Cell{CellValue::makeFormula(newFormulaCell({0, 1, 0}, -1)), -1});
    EXPECT_EQ(savedPayloads(11), Payloads{bare("0000 0000 0200 ff00 0001 0000") +
                                          bare("03 0000 00000000") + bare("00 0000")});
}

// --- Tasks

TEST_F(NativeWriterTest, writesTheTasksOfTheDocument)
{
    Task& plain = addTask(u"Plain", u"x = 1");
    plain.addToMenu = 1;
    Task& global = addTask(u"Everywhere", u"y = 1");
    global.global = 1;
    Task& tap = addTask(u"Tap", u"\u00e4\r\nend");
    tap.onTap = 1;
    ASSERT_TRUE(parseReferenceText(u"Sheet2!B3:D4", tap.onTapArea));
    Task& anySheet = addTask(u"C", u"t");
    ASSERT_TRUE(parseReferenceText(u"C7", anySheet.onTapArea));
    const std::string noArea = bare("00000000 00000000 00000000");
    EXPECT_EQ(
        savedPayloads(25),
        (Payloads{noArea + bare("00000000 01000000") + hexCounted(u"Plain") + hexCounted(u"x = 1"),
                  bare("09 00 01 01 0200 0100 0300 0300") + bare("01000000 00000000") +
                      hexCounted(u"Tap") + hexCounted(u"\u00e4\r\nend"),
                  bare("08 00 ff f5 0600 0200 0000 0000") + bare("00000000 00000000") +
                      hexCounted(u"C") + hexCounted(u"t")}));
}

TEST_F(NativeWriterTest, writesZerosForATapAreaThatMeansNothing)
{
    Task& task = addTask(u"", u"");
    task.onTapArea = CellValue::makeNumber(1.1);
    task.onTapArea.tag = TagBlank;
    EXPECT_EQ(savedPayloads(25),
              Payloads{bare("00000000 00000000 00000000") + bare("00000000 00000000") +
                       hexCounted(u"") + hexCounted(u"")});
}

// --- Long records

TEST_F(NativeWriterTest, tellsTheLargestPayloadWhereItPassesTheUsual)
{
    const struct {
        const char* behaviour;
        std::size_t units; // with a count of 4 bytes and a zero of 2 around them
        const char* header;
        int error;
    } rows[] = {
        {"usual",         2045,   "0300 0300 0300 0010", ErrorNone     },
        {"a unit more",   2046,   "0300 0300 0300 0210", ErrorNone     },
        {"the longest",   32764,  "0300 0300 0300 feff", ErrorNone     },
        {"too long",      32765,  "0300 0300 0300 0010", ErrorFileWrite},
        {"much too long", 100000, "0300 0300 0300 0010", ErrorFileWrite},
    };
    for (const auto& row : rows) {
        const std::u16string text(row.units, u'x');
        sheet().setCell(0, 0, textCell(text));
        EXPECT_EQ(savedPayloads(1), Payloads{bare(row.header)}) << row.behaviour;
        EXPECT_EQ(errorState.code, row.error) << row.behaviour;
        clearError();
        const Payloads texts = row.error == ErrorNone ? Payloads{hexCounted(text)} : Payloads{};
        EXPECT_EQ(savedPayloads(4), texts) << row.behaviour;
        clearError();
    }
}

TEST_F(NativeWriterTest, measuresFormulasNamesTasksAndFiltersAlike)
{
    const auto codeOfBytes = [](ByteCodeWriter& writer, int bytes) {
        while (bytes-- > 1)
            writer.emit(OpParen);
    };
    const struct {
        const char* behaviour;
        int payload;
        const char* header;
        int error;
    } rows[] = {
        {"usual",          4096,  "0010", ErrorNone     },
        {"a byte more",    4097,  "0110", ErrorNone     },
        {"an even length", 65534, "feff", ErrorNone     },
        {"the longest",    65535, "ffff", ErrorNone     },
        {"too long",       65536, "0010", ErrorFileWrite},
    };
    for (const auto& row : rows) {
        const std::string header = bare("0300 0300 0300") + row.header;
        const auto expectOutcome = [&](const char* what) {
            EXPECT_EQ(savedPayloads(1), Payloads{header}) << what << ", " << row.behaviour;
            EXPECT_EQ(errorState.code, row.error) << what << ", " << row.behaviour;
            clearError();
            NewDocument(1, FileKindNative);
        };
        ByteCodeWriter formula;
        codeOfBytes(formula, row.payload - 4);
        storeFormula(0, 0, formula);
        expectOutcome("formula");

        ByteCodeWriter definition;
        codeOfBytes(definition, row.payload - 4 - 4 - 4);
        addName(u"N", &definition);
        expectOutcome("name");

        // Two-byte units: an odd payload cannot be met.
        const std::size_t units = static_cast<std::size_t>(row.payload - 30) / 2;
        const bool isOdd = row.payload % 2 != 0;
        if (isOdd)
            continue;
        addTask(u"", std::u16string(units - 1, u't'));
        EXPECT_EQ(savedPayloads(25).size(), row.error == ErrorNone ? 1u : 0u) << row.behaviour;
        clearError();
        expectOutcome("task");

        sheet().filter.start({0, 0, 1, 0});
        sheet().filter.columns[0].text2 = duplicateString(std::u16string(units - 1, u'f'));
        expectOutcome("filter");
    }
}

TEST_F(NativeWriterTest, putsTheLargestPayloadIntoAFileToo)
{
    sheet().setCell(0, 0, textCell(std::u16string(30000, u'x')));
    const std::string expected = savedBytes();
    MemoryFile file;
    {
        FileStream stream(file);
        TransferContext context;
        context.stream = &stream;
        saveNative(context);
    }
    EXPECT_EQ(hexOf(file.bytes.substr(4, 8)), bare("0300 0300 0300") + hex16(60006));
    EXPECT_TRUE(file.bytes == expected);
}

// --- After a save

TEST_F(NativeWriterTest, leavesNoNumberBehind)
{
    sheet().setCell(0, 0, textCell(u"a"));
    sheet().setCell(1, 0, constantFormula(1, {0, 1, 0}));
    addName(u"Name", nullptr);
    CellStyle style = defaultStyle();
    style.set(StyleWrap, 1);
    workbook->addStyle(style);
    const std::string first = savedBytes();
    EXPECT_EQ(stringPool->fileIndex(0), -1);
    EXPECT_EQ(formulaPool->fileIndex(0), -1);
    EXPECT_EQ(workbook->names[0].fileIndex, -1);
    for (const CellStyle& each : workbook->styles)
        EXPECT_EQ(each.fileIndex, 65535);
    for (const FontRecord& each : workbook->fonts)
        EXPECT_EQ(each.fileIndex, 65535);
    for (const NumberFormat& each : workbook->formats)
        EXPECT_EQ(each.fileIndex, 65535);
    EXPECT_EQ(savedBytes(), first) << "a second save is the same";
    EXPECT_EQ(stringPool->addText(u"b"), 1) << "the pools can be used again";
    EXPECT_FALSE(workbook->modified);
}

TEST_F(NativeWriterTest, runsToItsEndAfterAnyFailure)
{
    sheet().setCell(0, 0, textCell(std::u16string(200000, u'x')));
    sheet().setCell(1, 0, textCell(u"short"));
    savedBytes();
    EXPECT_EQ(errorState.code, ErrorFileWrite);
    clearError();
    EXPECT_EQ(stringPool->fileIndex(1), -1);
    EXPECT_EQ(stringPool->addText(u"b"), 2);
    EXPECT_EQ(workbook->styles[0].fileIndex, 65535);

    MemoryFile file;
    file.full = true;
    {
        FileStream stream(file);
        TransferContext context;
        context.stream = &stream;
        saveNative(context);
    }
    EXPECT_EQ(errorState.code, ErrorFileWrite);
    EXPECT_EQ(stringPool->fileIndex(1), -1);
}

TEST_F(NativeWriterTest, raisesEachRefusedAllocation)
{
    sheet().setCell(0, 0, textCell(u"text"));
    const std::string expected = savedBytes();
    bool refused = true;
    for (int allocation = 1; refused; ++allocation) {
        ASSERT_LT(allocation, 100);
        MemoryStream stream;
        TransferContext context;
        context.stream = &stream;
        {
            const AllocationWatch watch(allocation);
            saveNative(context);
            refused = watch.refused();
        }
        EXPECT_EQ(errorState.code, refused ? ErrorMemory : ErrorNone);
        clearError();
        if (!refused) {
            EXPECT_EQ(std::string(stream.data(), stream.data() + stream.end()), expected);
        }
        EXPECT_EQ(savedBytes(), expected) << "the document is as it was";
    }
}

} // namespace
} // namespace vorn
