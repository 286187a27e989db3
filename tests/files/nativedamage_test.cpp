// Native files that are cut or damaged in any place, and memory that is refused or wasted.

#include "core/error.h"
#include "core/memory.h"
#include "core/pool.h"
#include "core/workbook.h"
#include "support/filedrecords.h"
#include "support/nativefile.h"
#include "support/refusal.h"
#include "support/testplatform.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <unordered_map>
#include <vector>

namespace vorn {
namespace {

TEST(NativeDamage, leavesTheRichFileWhole)
{
    const TestDocument document;
    ASSERT_EQ(loadBytes(richFile().ended()), ErrorNone);
    const Sheet& sheet = *workbook->sheetAt(0);
    EXPECT_EQ(sheet.cellInput(8, 0), u"=I16384*2");
    EXPECT_EQ(sheet.cellInput(0, 1), u"=If(true,\"apples\",\"pears\")");
    EXPECT_EQ(sheet.cellInput(1, 1), u"=Sum(B$1:B$6)+Twice");
    EXPECT_EQ(sheet.cellInput(2, 1), u"=Third!$B$2+!!Ref&!!NA");
    EXPECT_NE(lookAtEverything(), 0U);
    EXPECT_FALSE(errorStands());
}

TEST(NativeDamage, isToldOfAFileCutAtAnyByte)
{
    const TestDocument document;
    const std::string byHand = richFile().ended();
    ASSERT_EQ(loadBytes(byHand), ErrorNone);
    for (const std::string& whole : {byHand, savedBytes()}) {
        for (std::size_t size = 0; size < whole.size(); ++size) {
            // A block of its own, so that a sanitizer sees whoever reads on.
            const std::string cut = whole.substr(0, size);
            EXPECT_EQ(loadBytes(cut), ErrorFileRead) << size;
            NewDocument(NewDocumentSheets, FileKindNative);
            EXPECT_EQ(workbook->sheets.size(), NewDocumentSheets);
        }
        EXPECT_EQ(loadBytes(whole), ErrorNone);
    }
}

// Whatever a byte is changed to, there is an error or a document that can be used.
TEST(NativeDamage, harmsNobodyInAnyByte)
{
    const TestDocument document;
    const std::string whole = richFile().ended();
    int sound = 0;
    int told = 0;
    for (std::size_t place = 0; place < whole.size(); ++place) {
        const auto byte = static_cast<unsigned char>(whole[place]);
        for (const int changed : {0, 255, byte + 1, byte - 1, byte ^ 128}) {
            std::string damaged = whole;
            damaged[place] = static_cast<char>(changed);
            if (loadBytes(damaged) != ErrorNone) {
                ++told;
                continue;
            }
            ++sound;
            lookAtEverything();
            EXPECT_FALSE(errorStands()) << place;
        }
    }
    EXPECT_GT(sound, 1000);
    EXPECT_GT(told, 1000);
}

// A record may stand in any place and be of any length.
TEST(NativeDamage, takesRecordsInAnyOrder)
{
    const TestDocument document;
    const std::string whole = richFile().bytes();
    std::vector<std::string> records;
    for (std::size_t place = 0; place < whole.size();) {
        const auto low = static_cast<unsigned char>(whole[place + 2]);
        const auto high = static_cast<unsigned char>(whole[place + 3]);
        const std::size_t size = 4U + low + 256U * high;
        records.push_back(whole.substr(place, size));
        place += size;
    }
    const std::string end("\2\0\0\0", 4);
    for (std::size_t moved = 1; moved < records.size(); ++moved) {
        for (const std::size_t to : {std::size_t{1}, records.size() / 2, records.size() - 1}) {
            std::vector<std::string> order = records;
            order.erase(order.begin() + static_cast<std::ptrdiff_t>(moved));
            order.insert(order.begin() + static_cast<std::ptrdiff_t>(to), records[moved]);
            std::string bytes;
            for (const std::string& record : order)
                bytes += record;
            if (loadBytes(bytes + end) == ErrorNone)
                lookAtEverything();
            EXPECT_FALSE(errorStands()) << moved;
        }
        for (std::size_t size = 4; size < records[moved].size(); ++size) {
            std::string bytes;
            for (std::size_t each = 0; each < records.size(); ++each) {
                std::string record = records[each];
                if (each == moved) {
                    record.resize(size);
                    record[2] = static_cast<char>((size - 4) & 0xff);
                    record[3] = static_cast<char>((size - 4) >> 8);
                }
                bytes += record;
            }
            if (loadBytes(bytes + end) == ErrorNone)
                lookAtEverything();
            EXPECT_FALSE(errorStands()) << moved << " of " << size;
        }
    }
}

TEST(NativeDamage, endsInMemoryThatIsRefused)
{
    const TestDocument document;
    const std::string whole = richFile().ended();
    for (int refused = 1;; ++refused) {
        NewDocument(0, FileKindNative);
        int code = ErrorNone;
        bool met = false;
        {
            const AllocationWatch watch(refused);
            code = loadInPlace(whole);
            met = watch.refused();
            NewDocument(NewDocumentSheets, FileKindNative);
        }
        clearError();
        if (!met) {
            EXPECT_EQ(code, ErrorNone);
            EXPECT_GT(refused, 20);
            return;
        }
        EXPECT_EQ(code, ErrorMemory) << refused;
    }
}

// --- How much memory a file can ask for

struct Usage {
    std::unordered_map<void*, std::size_t> blocks;
    std::size_t bytes = 0;
    std::size_t most = 0;
};
Usage usage;

void* countedBlock(void* block, std::size_t bytes)
{
    void* result = resizeBlock(block, bytes);
    if (bytes != 0 && result == nullptr)
        return nullptr;
    if (const auto former = usage.blocks.find(block); former != usage.blocks.end()) {
        usage.bytes -= former->second;
        usage.blocks.erase(former);
    }
    if (bytes != 0) {
        usage.blocks[result] = bytes;
        usage.bytes += bytes;
        usage.most = std::max(usage.most, usage.bytes);
    }
    return result;
}

TEST(NativeDamage, takesNoMoreMemoryThanAFewTimesTheFile)
{
    const TestDocument document;
    constexpr std::size_t Always = 3 << 20; // a new document, and the least that a heap grows by
    const struct {
        const char* phrase;
        unsigned type;
        Fields fields;
        std::size_t times; // bytes of memory for one of the file
    } cases[] = {
        {"counts that promise much", RecordTextCount,    Fields().add32(0xffffffff),               2 },
        {"the same for formulas",    RecordFormulaCount, Fields().add32(0xffffffff),               2 },
        {"the same for names",       RecordNameCount,    Fields().add32(0xffffffff),               2 },
        {"the same for tables",      RecordTableCounts,  Fields().add32(~0U).add32(~0U),           2 },
        {"texts without bytes",      RecordText,         Fields(),                                 10},
        {"texts that promise much",  RecordText,         Fields().add32(0xffffffff),               6 },
        {"texts of some length",     RecordText,         Fields().addCounted(u"a text, of sorts"), 4 },
        {"formulas",                 RecordFormula,      Fields().addCode("00"),                   6 },
        {"names without a text",     RecordName,         Fields(),                                 8 },
        {"names",                    RecordName,         Fields().addCounted(u"n").addCode("00"),  6 },
        {"tasks",                    RecordTask,         Fields(),                                 16},
        {"rows, each for once",      RecordRow,          Fields(),                                 32},
        {"runs of all columns",      RecordColumns,      Fields().add16(0).add16(255),             2 },
        {"filters over all columns", RecordFilter,       Fields().add32(0).add16(0).add16(255),    2 },
        {"unknown records",          100,                Fields(),                                 2 },
    };
    for (const auto& c : cases) {
        NativeFile file;
        file.addSheets({u"Only"}).add(RecordSheetStart);
        // Few enough that a filter's records stay below the limit of the room that a file may ask
        // for; a row's number is its own.
        for (int record = 0; record < 5000; ++record)
            file.add(c.type, c.type == RecordRow ? rowFields(static_cast<unsigned>(record), 0, 256)
                                                 : c.fields);
        const std::string bytes = file.ended();
        NewDocument(0, FileKindNative);
        usage = {};
        blockResizer = countedBlock;
        const int code = loadInPlace(bytes);
        blockResizer = resizeBlock;
        EXPECT_EQ(code, ErrorNone) << c.phrase;
        EXPECT_LT(usage.most, Always + c.times * bytes.size()) << c.phrase;
    }
}

} // namespace
} // namespace vorn
