#include "files/stream.h"

#include "core/error.h"
#include "core/memory.h"
#include "files/bytes.h"
#include "support/memoryfile.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using namespace std::string_literals;

// Takes the sticky error.
int takeError()
{
    const int code = errorState.code;
    clearError();
    return code;
}

std::string readText(Stream& stream, std::uint32_t size)
{
    std::string text(size, '.');
    text.resize(stream.Read(text.data(), size));
    return text;
}

void writeText(Stream& stream, std::string_view text)
{
    stream.Write(text.data(), static_cast<std::uint32_t>(text.size()));
}

class StreamTest : public testing::Test {
protected:
    TestPlatform machine;
};

// --- Bytes

TEST(Bytes, areLittleEndian)
{
    std::uint8_t bytes[2];
    put16(bytes, 0x1234);
    EXPECT_EQ(bytes[0], 0x34);
    EXPECT_EQ(bytes[1], 0x12);
    EXPECT_EQ(get16(bytes), 0x1234);
    put16(bytes, 0xffff);
    EXPECT_EQ(get16(bytes), 0xffff);
}

TEST(Bytes, areLittleEndianInEachWidth)
{
    std::uint8_t bytes[8];
    put32(bytes, 0x89abcdef);
    EXPECT_EQ(std::string(bytes, bytes + 4), "\xef\xcd\xab\x89");
    EXPECT_EQ(get32(bytes), 0x89abcdefu);
    put64(bytes, 0x0123456789abcdef);
    EXPECT_EQ(std::string(bytes, bytes + 8), "\xef\xcd\xab\x89\x67\x45\x23\x01");
    EXPECT_EQ(get64(bytes), 0x0123456789abcdefu);
    putDouble(bytes, -2.5);
    EXPECT_EQ(std::string(bytes, bytes + 8), "\0\0\0\0\0\0\x04\xc0"s);
    EXPECT_EQ(getDouble(bytes), -2.5);
}

TEST(Bytes, ofATextAreItsUnits)
{
    std::uint8_t bytes[5] = {9, 9, 9, 9, 9};
    putText(bytes, u"a\u20ac");
    EXPECT_EQ(std::string(bytes, bytes + 5), "a\0\xac\x20\x09"s);
    putText(bytes, {});
    EXPECT_EQ(bytes[0], 'a');
}

// --- RecordBuffer

TEST(RecordBuffer, isZeroForEachRecord)
{
    RecordBuffer buffer;
    std::uint8_t* first = buffer.begin();
    std::fill(first, first + RecordBuffer::Size, std::uint8_t{0xee});
    buffer.begin(10)[9] = 7;
    EXPECT_EQ(std::count(buffer.data(), buffer.data() + RecordBuffer::Size, 0),
              static_cast<std::ptrdiff_t>(RecordBuffer::Size - 1));
    buffer.begin(0);
    EXPECT_EQ(buffer.data()[9], 0);
}

// --- Writing to a file

TEST_F(StreamTest, writesWhereThePositionIs)
{
    MemoryFile file;
    {
        FileStream stream(file);
        EXPECT_EQ(stream.position(), 0u);
        writeText(stream, "abc");
        EXPECT_EQ(stream.position(), 3u);
        writeText(stream, "");
        EXPECT_EQ(stream.position(), 3u);
        writeText(stream, "def");
        stream.Seek(1);
        EXPECT_EQ(stream.position(), 1u);
        writeText(stream, "X");
    }
    EXPECT_EQ(file.bytes, "aXcdef");
    EXPECT_EQ(takeError(), ErrorNone);
}

TEST_F(StreamTest, flushesWhatItHoldsBack)
{
    MemoryFile file;
    FileStream stream(file);
    writeText(stream, "abc");
    stream.flush();
    EXPECT_EQ(file.bytes, "abc");
    stream.flush();
    EXPECT_EQ(file.writes, 1) << "nothing is written twice";
}

TEST_F(StreamTest, writesAnyNumberOfBytesInTheirOrder)
{
    std::string expected;
    MemoryFile file;
    {
        FileStream stream(file);
        for (std::uint32_t size : {1u, 100u, 32767u, 32768u, 32769u, 3u, 100000u, 1u}) {
            const std::string part(size, static_cast<char>('a' + size % 26));
            writeText(stream, part);
            expected += part;
        }
        EXPECT_EQ(stream.position(), expected.size());
    }
    EXPECT_TRUE(file.bytes == expected);
}

TEST_F(StreamTest, goesThroughMemoryInBlocks)
{
    MemoryFile file;
    {
        FileStream stream(file);
        for (int number = 0; number < 100000; ++number)
            stream.WriteTagged(1, 2, "xy");
    }
    EXPECT_EQ(file.bytes.size(), 300000u);
    EXPECT_LT(file.writes, 20);

    file.place = 0;
    FileStream stream(file);
    for (int number = 0; number < 100000; ++number)
        ASSERT_EQ(readText(stream, 3), "\1xy");
    EXPECT_LT(file.reads, 20);
}

TEST_F(StreamTest, readsALongPartWithoutItsBlocks)
{
    std::string content;
    for (int number = 0; content.size() < 200000; ++number)
        content += std::to_string(number) + ' ';
    MemoryFile file(content);
    FileStream stream(file);
    std::string read = readText(stream, 10);
    read += readText(stream, 100000);
    EXPECT_EQ(file.reads, 2) << "the first block, and the rest of the long part at once";
    read += readText(stream, 10);
    read += readText(stream, 32768);
    EXPECT_EQ(stream.position(), read.size());
    read += readText(stream, static_cast<std::uint32_t>(content.size() - read.size()));
    EXPECT_TRUE(read == content);
    EXPECT_EQ(readText(stream, 100000), "");
    EXPECT_EQ(takeError(), ErrorFileRead);
}

TEST_F(StreamTest, readsALongPartHoweverLittleAFileGivesAtOnce)
{
    const std::string content(100000, 'x');
    MemoryFile file(content + "end");
    file.mostAtOnce = 7000;
    FileStream stream(file);
    EXPECT_TRUE(readText(stream, 100000) == content);
    EXPECT_EQ(readText(stream, 100000), "end");
    EXPECT_EQ(takeError(), ErrorNone);
}

TEST_F(StreamTest, writesBehindALongPartThatWasRead)
{
    MemoryFile file(std::string(40000, 'x'));
    {
        FileStream stream(file);
        readText(stream, 33000);
        writeText(stream, "here");
    }
    EXPECT_EQ(file.bytes.substr(32999, 6), "xherex");
}

TEST_F(StreamTest, raisesAWriteErrorAndKeepsThePosition)
{
    MemoryFile file;
    file.full = true;
    FileStream stream(file);
    writeText(stream, "abc");
    stream.flush();
    EXPECT_EQ(takeError(), ErrorFileWrite);
    EXPECT_EQ(stream.position(), 0u);
    writeText(stream, std::string(100000, 'x'));
    EXPECT_EQ(takeError(), ErrorFileWrite);
    EXPECT_EQ(stream.position(), 0u);
    writeText(stream, "");
    stream.flush();
    EXPECT_EQ(takeError(), ErrorNone) << "nothing to write cannot fail";
}

TEST_F(StreamTest, raisesAWriteErrorAtItsEnd)
{
    MemoryFile file;
    file.full = true;
    {
        FileStream stream(file);
        writeText(stream, "abc");
        EXPECT_EQ(takeError(), ErrorNone) << "it is still held back";
    }
    EXPECT_EQ(takeError(), ErrorFileWrite);
}

TEST_F(StreamTest, keepsTheFirstErrorAndGoesOnWriting)
{
    for (int failing = 1; failing <= 4; ++failing) {
        MemoryFile file;
        file.failingWrite = failing;
        raiseError(ErrorFileFormat);
        {
            FileStream stream(file);
            for (int part = 0; part < 4; ++part)
                writeText(stream, std::string(40000, static_cast<char>('a' + part)));
        }
        EXPECT_EQ(takeError(), ErrorFileFormat);
        EXPECT_EQ(file.bytes.size(), 120000u) << "one part is missing, the others are there";
    }
}

// --- Reading from a file

TEST_F(StreamTest, readsWhatIsThere)
{
    MemoryFile file("0123456789");
    FileStream stream(file);
    EXPECT_EQ(readText(stream, 0), "");
    EXPECT_EQ(readText(stream, 4), "0123");
    EXPECT_EQ(stream.position(), 4u);
    stream.Seek(8);
    EXPECT_EQ(readText(stream, 1), "8");
    stream.Seek(0);
    EXPECT_EQ(readText(stream, 10), "0123456789");
    EXPECT_EQ(takeError(), ErrorNone);
}

TEST_F(StreamTest, takesAShortReadForNoErrorAndCountsWhatWasAskedFor)
{
    MemoryFile file("0123456789");
    FileStream stream(file);
    stream.Seek(7);
    EXPECT_EQ(readText(stream, 100), "789");
    EXPECT_EQ(takeError(), ErrorNone);
    EXPECT_EQ(stream.position(), 107u) << "it runs ahead of the file";
    EXPECT_EQ(readText(stream, 1), "");
    EXPECT_EQ(takeError(), ErrorFileRead);
    EXPECT_EQ(stream.position(), 107u);
}

TEST_F(StreamTest, raisesAReadErrorOnlyIfNothingCouldBeRead)
{
    MemoryFile empty;
    FileStream stream(empty);
    EXPECT_EQ(readText(stream, 0), "");
    EXPECT_EQ(takeError(), ErrorNone) << "nothing was asked for";
    EXPECT_EQ(readText(stream, 1), "");
    EXPECT_EQ(takeError(), ErrorFileRead);
    EXPECT_EQ(stream.position(), 0u);
}

TEST_F(StreamTest, asksAgainWhenTheMachineGivesFewerBytes)
{
    MemoryFile file("0123456789");
    file.mostAtOnce = 3;
    FileStream stream(file);
    EXPECT_EQ(readText(stream, 8), "01234567");
    EXPECT_EQ(readText(stream, 8), "89");
    EXPECT_EQ(takeError(), ErrorNone);
}

TEST_F(StreamTest, raisesAReadErrorWhenTheMachineFails)
{
    MemoryFile file("0123456789");
    file.mostAtOnce = 4;
    file.failingRead = 2;
    FileStream stream(file);
    EXPECT_EQ(readText(stream, 8), "0123") << "what was read counts";
    EXPECT_EQ(takeError(), ErrorFileRead);
    EXPECT_EQ(readText(stream, 8), "456789") << "it may work again";
    EXPECT_EQ(takeError(), ErrorNone);
}

TEST_F(StreamTest, writesBehindWhatItRead)
{
    MemoryFile file("0123456789");
    FileStream stream(file);
    EXPECT_EQ(readText(stream, 3), "012");
    writeText(stream, "abc");
    EXPECT_EQ(stream.position(), 6u);
    EXPECT_EQ(readText(stream, 2), "67") << "what was held back is written first";
    EXPECT_EQ(file.bytes, "012abc6789");
    writeText(stream, "!");
    stream.flush();
    EXPECT_EQ(file.bytes, "012abc67!9");
}

// --- Records

TEST_F(StreamTest, framesRecordsByTypeAndLength)
{
    MemoryStream stream;
    stream.WriteRecord(0x1234, 3, "abc");
    stream.WriteRecord(7, 0, nullptr);
    stream.WriteTagged(9, 2, "xy");
    stream.WriteTagged(8, 0, nullptr);
    const std::string bytes(reinterpret_cast<const char*>(stream.data()), stream.end());
    EXPECT_EQ(bytes, "\x34\x12\3\0abc\7\0\0\0\11xy\10"s);
}

TEST_F(StreamTest, readsTheRecordsThatItWrote)
{
    MemoryStream stream;
    stream.WriteRecord(1, 3, "abc");
    stream.WriteRecord(2, 0, nullptr);
    stream.WriteRecord(3, 65535, std::string(65535, 'x').data());
    stream.Seek(0);
    RecordBuffer buffer;
    std::uint16_t type = 0;
    std::uint16_t length = 0;
    ASSERT_TRUE(stream.ReadRecord(type, length, buffer));
    EXPECT_EQ(type, 1);
    EXPECT_EQ(length, 3);
    EXPECT_EQ(buffer.data()[2], 'c');
    ASSERT_TRUE(stream.ReadRecord(type, length, buffer));
    EXPECT_EQ(type, 2);
    EXPECT_EQ(length, 0);
    EXPECT_EQ(buffer.data()[2], 0);
    ASSERT_TRUE(stream.ReadRecord(type, length, buffer));
    EXPECT_EQ(length, 65535);
    EXPECT_EQ(buffer.data()[65534], 'x');
    EXPECT_FALSE(stream.ReadRecord(type, length, buffer));
    EXPECT_EQ(type, 3) << "at the end they stay";
    EXPECT_EQ(length, 65535);
    EXPECT_EQ(takeError(), ErrorNone) << "memory that ends is no error";
}

TEST_F(StreamTest, readsRecordsIntoRoomOfTheCaller)
{
    MemoryStream stream;
    stream.WriteRecord(5, 2, "ab");
    stream.WriteRecord(6, 0, nullptr);
    stream.Seek(0);
    char data[3] = "??";
    std::uint16_t type = 0;
    std::uint16_t length = 0;
    EXPECT_TRUE(stream.ReadRecord(type, length, data));
    EXPECT_STREQ(data, "ab");
    EXPECT_TRUE(stream.ReadRecord(type, length, nullptr)) << "nothing goes there";
}

TEST_F(StreamTest, knowsNoRecordWithoutAWholeHead)
{
    const std::string whole = "\1\0\2\0ab"s;
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        MemoryFile file(whole.substr(0, size));
        FileStream stream(file);
        RecordBuffer buffer;
        std::uint16_t type = 77;
        std::uint16_t length = 88;
        EXPECT_EQ(stream.ReadRecord(type, length, buffer), size >= 4) << size;
        EXPECT_EQ(type, size >= 4 ? 1 : 77) << size;
        EXPECT_EQ(length, size >= 4 ? 2 : 88) << size;
        // Data that end early are no error, as long as there is a byte of them.
        EXPECT_EQ(takeError(), size <= 4 ? ErrorFileRead : ErrorNone) << size;
        EXPECT_EQ(buffer.data()[0], size >= 5 ? 'a' : 0) << size;
        EXPECT_EQ(buffer.data()[1], size >= 6 ? 'b' : 0) << size;
    }
}

TEST_F(StreamTest, writesInAnotherPlaceAndComesBack)
{
    MemoryFile file;
    FileStream stream(file);
    writeText(stream, "0123456789");
    stream.WriteAt(2, "xy", 2);
    EXPECT_EQ(stream.position(), 10u);
    writeText(stream, "!");
    stream.flush();
    EXPECT_EQ(file.bytes, "01xy456789!");
}

// --- Memory

TEST_F(StreamTest, growsMemoryBySteps)
{
    MemoryStream stream;
    EXPECT_EQ(stream.capacity(), 0u);
    writeText(stream, "");
    EXPECT_EQ(stream.capacity(), 0u);
    writeText(stream, "a");
    EXPECT_EQ(stream.capacity(), 1024u);
    writeText(stream, std::string(1023, 'b'));
    EXPECT_EQ(stream.capacity(), 1024u);
    writeText(stream, "c");
    EXPECT_EQ(stream.capacity(), 2048u) << "one byte past the end";
    writeText(stream, std::string(5000, 'd'));
    EXPECT_EQ(stream.capacity(), 6144u) << "as many steps as it takes";
    EXPECT_EQ(stream.end(), 6025u);
}

TEST_F(StreamTest, growsMemoryByHalfForALongStream)
{
    MemoryStream stream(MemoryStream::GrowsByHalf);
    writeText(stream, "a");
    EXPECT_EQ(stream.capacity(), 1024u);
    writeText(stream, std::string(10239, 'b'));
    EXPECT_EQ(stream.capacity(), 10240u) << "what is needed is more than a half";
    writeText(stream, "c");
    EXPECT_EQ(stream.capacity(), 15360u);
    EXPECT_EQ(stream.end(), 10241u);
    EXPECT_EQ(stream.data()[0], 'a');
    EXPECT_EQ(stream.data()[10240], 'c');
}

void* refuseMoreThan12K(void* block, std::size_t bytes)
{
    return bytes > 12288 ? nullptr : resizeBlock(block, bytes);
}

TEST_F(StreamTest, growsMemoryByLessWhereAHalfIsRefused)
{
    MemoryStream stream(MemoryStream::GrowsByHalf);
    writeText(stream, std::string(10240, 'b'));
    blockResizer = refuseMoreThan12K;
    writeText(stream, "c");
    EXPECT_EQ(stream.capacity(), 11264u);
    EXPECT_EQ(takeError(), ErrorNone);
    writeText(stream, std::string(3000, 'd'));
    blockResizer = resizeBlock;
    EXPECT_EQ(takeError(), ErrorMemory);
    EXPECT_EQ(stream.end(), 10241u);
}

TEST_F(StreamTest, keepsTheHighestPlaceAsTheEndOfMemory)
{
    MemoryStream stream;
    writeText(stream, "0123456789");
    stream.Seek(2);
    writeText(stream, "xy");
    EXPECT_EQ(stream.end(), 10u);
    EXPECT_EQ(stream.position(), 4u);
    EXPECT_EQ(readText(stream, 100), "456789");
    EXPECT_EQ(stream.position(), 10u) << "it counts what was read";
    EXPECT_EQ(readText(stream, 1), "");
    EXPECT_EQ(takeError(), ErrorNone);
}

TEST_F(StreamTest, readsNothingBehindTheEndOfMemory)
{
    MemoryStream stream;
    writeText(stream, "0123");
    stream.Seek(4);
    EXPECT_EQ(readText(stream, 1), "");
    stream.Seek(4000000000u);
    EXPECT_EQ(stream.position(), 4000000000u);
    EXPECT_EQ(readText(stream, 1), "");
    EXPECT_EQ(readText(stream, 0), "");
    EXPECT_EQ(takeError(), ErrorNone);
}

TEST_F(StreamTest, fillsAGapInMemoryWithZeros)
{
    MemoryStream stream;
    writeText(stream, "ab");
    stream.Seek(5);
    writeText(stream, "c");
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(stream.data()), stream.end()),
              "ab\0\0\0c"s);
}

void* refuse(void* block, std::size_t bytes)
{
    return bytes == 0 ? resizeBlock(block, 0) : nullptr;
}

TEST_F(StreamTest, writesNothingMoreOnceMemoryIsShort)
{
    MemoryStream stream;
    writeText(stream, "0123");
    blockResizer = refuse;
    writeText(stream, std::string(2000, 'x'));
    blockResizer = resizeBlock;
    EXPECT_EQ(takeError(), ErrorMemory);
    EXPECT_EQ(stream.position(), 4u);
    EXPECT_EQ(stream.capacity(), 1024u);
    writeText(stream, "y");
    EXPECT_EQ(stream.end(), 4u) << "a later part would stand in the wrong place";
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(stream.data()), stream.end()), "0123");
}

TEST_F(StreamTest, refusesMemoryThatNobodyCanAddress)
{
    MemoryStream stream;
    stream.Seek(UINT32_MAX - 1);
    writeText(stream, "abc");
    EXPECT_EQ(takeError(), ErrorMemory);
    EXPECT_EQ(stream.end(), 0u);
}

TEST_F(StreamTest, readsABlockOfSomebodyElse)
{
    const char block[] = "0123";
    MemoryStream stream(block, 4);
    EXPECT_EQ(stream.end(), 4u);
    EXPECT_EQ(readText(stream, 10), "0123");
    stream.Seek(0);
    writeText(stream, "x");
    EXPECT_STREQ(block, "0123") << "which is not written";
    EXPECT_EQ(stream.position(), 0u);
}

TEST_F(StreamTest, handsOverItsBlock)
{
    MemoryStream stream;
    writeText(stream, "abc");
    std::uint8_t* block = stream.release();
    EXPECT_EQ(block[2], 'c');
    EXPECT_EQ(stream.end(), 0u);
    EXPECT_EQ(stream.data(), nullptr);
    blockResizer(block, 0);
}

// --- Text

std::u16string charsOf(Stream& stream)
{
    std::u16string text;
    while (const char16_t unit = stream.ReadChar())
        text += unit;
    return text;
}

std::u16string textOf(std::string bytes, int page)
{
    MemoryFile file(std::move(bytes));
    FileStream stream(file);
    EXPECT_TRUE(stream.beginText(page));
    return charsOf(stream);
}

TEST_F(StreamTest, deliversCharactersOfACodePage)
{
    EXPECT_EQ(textOf("", 1252), u"");
    EXPECT_EQ(textOf("abc", 1252), u"abc");
    EXPECT_EQ(textOf("a\x80\xe4", 1252), u"a€ä");
    EXPECT_EQ(textOf("a\0b"s, 1252), u"a\1b") << "0 is the end and nothing else";
    EXPECT_EQ(textOf("\0"s, 1252), u"\1");
}

TEST_F(StreamTest, fillsABlockOfFewerCharactersWithOnes)
{
    EXPECT_EQ(textOf("\xe2\x82\xac", 65001), u"€\1\1");
    EXPECT_EQ(textOf("a\0\xe4\0"s, 1200), u"aä\1\1");
}

std::u16string withoutOnes(std::u16string text)
{
    std::erase(text, u'\1');
    return text;
}

// The blocks in which bytes are decoded end in the middle of characters.
TEST_F(StreamTest, bringsEveryCharacterWholeWhereverBlocksEnd)
{
    const struct {
        const char* behaviour;
        int page;
        std::string bytes;
        std::u16string text;
    } cases[] = {
        {"two bytes",          65001, "\xc3\xa4",         u"ä"        },
        {"three bytes",        65001, "\xe2\x82\xac",     u"€"       },
        {"four bytes",         65001, "\xf0\x9d\x84\x9e", u"\U0001d11e"},
        {"a double byte page", 932,   "\x93\xfa",         u"日"       },
        {"units of two bytes", 1200,  "\xac\x20",         u"€"       },
        {"a wrong byte",       65001, "\xe2\x82",         u"\ufffd"    },
        {"a page of one byte", 1252,  "\xe4",             u"ä"        },
    };
    for (const auto& c : cases) {
        for (std::size_t before = 2040; before <= 2052; before += c.page == 1200 ? 2 : 1) {
            std::string bytes;
            std::u16string text(c.page == 1200 ? before / 2 : before, u'x');
            for (char16_t unit : text) {
                bytes += static_cast<char>(unit);
                if (c.page == 1200)
                    bytes += '\0';
            }
            bytes += c.bytes + c.bytes + (c.page == 1200 ? "z\0"s : "z"s);
            text += c.text + c.text + u"z";
            EXPECT_TRUE(withoutOnes(textOf(bytes, c.page)) == text) << c.behaviour << before;
        }
    }
}

TEST_F(StreamTest, deliversAnUnfinishedLastCharacterAsWrong)
{
    EXPECT_EQ(withoutOnes(textOf("ab\xe2\x82", 65001)), u"ab\ufffd");
    EXPECT_EQ(withoutOnes(textOf(std::string(2047, 'a') + "\xe2", 65001)),
              std::u16string(2047, u'a') + u'\ufffd');
}

TEST_F(StreamTest, staysAtTheEndOfAText)
{
    MemoryFile file("ab");
    FileStream stream(file);
    stream.beginText(1252);
    EXPECT_EQ(charsOf(stream), u"ab");
    EXPECT_EQ(stream.ReadChar(), 0);
    EXPECT_EQ(stream.ReadChar(), 0);
    EXPECT_EQ(takeError(), ErrorNone);
    EXPECT_EQ(stream.position(), 0u) << "text does not move it";
}

TEST_F(StreamTest, endsATextWhereTheMachineFails)
{
    MemoryFile file(std::string(5000, 'a'));
    file.mostAtOnce = 2048;
    file.failingRead = 2;
    FileStream stream(file);
    stream.beginText(1252);
    EXPECT_EQ(charsOf(stream).size(), 2048u);
    EXPECT_EQ(takeError(), ErrorNone);
}

TEST_F(StreamTest, hasNoTextBeforeItBeginsAndAfterItEnded)
{
    MemoryFile file("ab");
    FileStream stream(file);
    EXPECT_EQ(stream.ReadChar(), 0);
    stream.beginText(1252);
    EXPECT_EQ(stream.ReadChar(), u'a');
    EXPECT_EQ(stream.charsAtHand(), u"b");
    stream.endText();
    EXPECT_EQ(stream.ReadChar(), 0);
    EXPECT_EQ(stream.charsAtHand(), u"");
}

TEST_F(StreamTest, hasCharactersAtHandToTakeByTheRun)
{
    MemoryFile file("abcdef");
    FileStream stream(file);
    stream.beginText(1252);
    EXPECT_EQ(stream.charsAtHand(), u"") << "before the first block was asked for";
    EXPECT_EQ(stream.ReadChar(), u'a');
    EXPECT_EQ(stream.charsAtHand(), u"bcdef");
    stream.skipChars(3);
    EXPECT_EQ(stream.ReadChar(), u'e');
    stream.skipChars(1);
    EXPECT_EQ(stream.ReadChar(), 0);
}

TEST_F(StreamTest, beginsNoTextWithoutMemory)
{
    MemoryFile file("ab");
    FileStream stream(file);
    blockResizer = refuse;
    EXPECT_FALSE(stream.beginText(1252));
    blockResizer = resizeBlock;
    EXPECT_EQ(takeError(), ErrorMemory);
    EXPECT_EQ(stream.ReadChar(), 0);
}

TEST_F(StreamTest, hasNoTextInMemory)
{
    MemoryStream stream("ab", 2);
    EXPECT_TRUE(stream.beginText(1252));
    EXPECT_EQ(stream.ReadChar(), 0);
}

} // namespace
} // namespace vorn
