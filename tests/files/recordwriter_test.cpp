#include "files/recordwriter.h"

#include "core/error.h"
#include "files/stream.h"
#include "support/filedrecords.h"
#include "support/refusal.h"

#include <gtest/gtest.h>
#include <string>

namespace vorn {
namespace {

class RecordWriterTest : public testing::Test {
protected:
    ~RecordWriterTest() override { clearError(); }

    std::string written() const
    {
        return hexOf({reinterpret_cast<const char*>(stream.data()), stream.end()});
    }

    MemoryStream stream;
};

TEST_F(RecordWriterTest, putsAHeadBeforeWhatIsAdded)
{
    RecordWriter records(stream);
    records.begin(0x0102);
    records.add8(0x11);
    records.add16(0x2233);
    records.add32(0x44556677);
    records.addBytes("ab", 2);
    records.addBytes(nullptr, 0);
    records.end();
    EXPECT_EQ(stream.end(), 0u) << "nothing is written before it is flushed";
    records.flush();
    EXPECT_EQ(written(), bare("0201 0900 11 3322 77665544 6162"));
    EXPECT_EQ(records.longest(), 9u);
}

TEST_F(RecordWriterTest, hasShortWaysForShortRecords)
{
    RecordWriter records(stream);
    records.addEmpty(5);
    records.addNumber16(24, 1);
    records.addNumber32(19, 65001);
    records.flush();
    EXPECT_EQ(written(), bare("0500 0000 1800 0200 0100 1300 0400 e9fd0000"));
}

TEST_F(RecordWriterTest, writesTextsWithTheirEnd)
{
    const struct {
        std::u16string_view text;
        const char *plain, *counted;
    } rows[] = {
        {u"",        "0000",           "02000000 0000"          },
        {u"a",       "6100 0000",      "04000000 6100 0000"     },
        {u"z\u20ac", "7a00 ac20 0000", "06000000 7a00 ac20 0000"},
    };
    for (const auto& row : rows) {
        MemoryStream memory;
        RecordWriter records(memory);
        records.begin(1);
        records.addPlainText(row.text);
        records.addCountedText(row.text);
        records.end();
        records.flush();
        const std::string hex =
            hexOf({reinterpret_cast<const char*>(memory.data()) + 4, memory.end() - 4});
        EXPECT_EQ(hex, bare(row.plain) + bare(row.counted));
    }
}

TEST_F(RecordWriterTest, givesRoomAndTakesItBack)
{
    RecordWriter records(stream);
    records.begin(1);
    std::uint8_t* place = records.room(8);
    ASSERT_NE(place, nullptr);
    place[0] = 7;
    records.cutAt(place + 1);
    records.add8(8);
    records.end();
    records.flush();
    EXPECT_EQ(written(), bare("0100 0200 07 08"));
}

TEST_F(RecordWriterTest, takesARecordAsLongAsItsLengthCanTell)
{
    const std::string longest(65535, 'x');
    RecordWriter records(stream);
    for (int count = 0; count < 3; ++count) {
        records.begin(3);
        records.addBytes(longest.data(), longest.size());
        records.end();
    }
    records.flush();
    EXPECT_EQ(errorState.code, ErrorNone);
    EXPECT_EQ(records.longest(), 65535u);
    EXPECT_EQ(written(), bare("0300 ffff") + hexOf(longest) + bare("0300 ffff") + hexOf(longest) +
                             bare("0300 ffff") + hexOf(longest));
}

TEST_F(RecordWriterTest, leavesOutARecordThatIsTooLong)
{
    const std::string tooLong(65536, 'x');
    RecordWriter records(stream);
    records.addEmpty(2);
    records.begin(3);
    records.addBytes(tooLong.data(), tooLong.size());
    records.add8(1);
    EXPECT_EQ(records.room(65535), nullptr);
    EXPECT_EQ(errorState.code, ErrorNone);
    records.end();
    EXPECT_EQ(errorState.code, ErrorFileWrite);
    records.begin(4);
    records.add8(1);
    records.end();
    records.flush();
    EXPECT_EQ(written(), bare("0200 0000 0400 0100 01"));
    EXPECT_EQ(records.longest(), 1u);
}

TEST_F(RecordWriterTest, leavesOutARecordThatOutgrowsItselfStepByStep)
{
    RecordWriter records(stream);
    records.begin(3);
    for (int count = 0; count < 8192; ++count)
        records.addBytes("12345678", 8);
    records.addCountedText(u"");
    records.end();
    records.flush();
    EXPECT_EQ(errorState.code, ErrorFileWrite);
    EXPECT_EQ(stream.end(), 0u);
}

TEST_F(RecordWriterTest, writesInLargeParts)
{
    class CountingStream : public MemoryStream {
    public:
        void Write(const void* data, std::uint32_t size) override
        {
            ++writes;
            MemoryStream::Write(data, size);
        }
        int writes = 0;
    };
    CountingStream counting;
    RecordWriter records(counting);
    for (std::uint32_t number = 0; number < 100000; ++number)
        records.addNumber32(19, number);
    records.flush();
    records.flush();
    EXPECT_EQ(counting.end(), 800000u);
    EXPECT_LT(counting.writes, 16);
}

TEST_F(RecordWriterTest, writesNothingWithoutMemory)
{
    const AllocationWatch watch(1);
    RecordWriter records(stream);
    EXPECT_EQ(errorState.code, ErrorMemory);
    records.begin(1);
    records.add8(1);
    records.add16(1);
    records.add32(1);
    records.addCountedText(u"a");
    EXPECT_EQ(records.room(1), nullptr);
    records.end();
    records.addEmpty(2);
    records.flush();
    EXPECT_EQ(stream.end(), 0u);
    EXPECT_EQ(errorState.code, ErrorMemory);
}

} // namespace
} // namespace vorn
