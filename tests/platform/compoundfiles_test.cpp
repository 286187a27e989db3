#include "platform/gsf/compoundfiles.h"

#include "platform/posix/files.h"
#include "support/tempfolder.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <random>

namespace vorn {
namespace {

using Bytes = std::vector<unsigned char>;

Bytes someBytes(std::size_t size)
{
    Bytes bytes(size);
    for (std::size_t at = 0; at < size; ++at)
        bytes[at] = static_cast<unsigned char>(at * 7 + at / 256);
    return bytes;
}

class GsfCompoundFilesTest : public testing::Test {
protected:
    TempFolder folder;
    PosixFiles files;
    GsfCompoundFiles compounds{files};
};

TEST_F(GsfCompoundFilesTest, readWhatTheyWrote)
{
    // Around the size from which a stream has sectors of its own, and a few sectors.
    for (std::size_t size : {0u, 1u, 63u, 64u, 65u, 4095u, 4096u, 4097u, 70000u}) {
        ASSERT_TRUE(compounds.createWithStream(folder.path("book"), u"Book", someBytes(size)));
        const auto file = compounds.open(folder.path("book"));
        ASSERT_TRUE(file) << size;
        EXPECT_EQ(file->streamNames(), std::vector<std::u16string>{u"Book"}) << size;
        Bytes content{1, 2, 3};
        EXPECT_TRUE(file->readStream(u"Book", content)) << size;
        EXPECT_EQ(content, someBytes(size)) << size;
    }
}

TEST_F(GsfCompoundFilesTest, writeTheSameBytesEachTime)
{
    ASSERT_TRUE(compounds.createWithStream(folder.path("a"), u"Book", someBytes(5000)));
    ASSERT_TRUE(compounds.createWithStream(folder.path("b"), u"Book", someBytes(5000)));
    EXPECT_EQ(folder.read("a"), folder.read("b"));
}

TEST_F(GsfCompoundFilesTest, tellAMissingStream)
{
    ASSERT_TRUE(compounds.createWithStream(folder.path("book"), u"Büch", someBytes(10)));
    const auto file = compounds.open(folder.path("book"));
    ASSERT_TRUE(file);
    Bytes content;
    EXPECT_FALSE(file->readStream(u"Workbook", content));
    EXPECT_FALSE(file->readStream(u"", content));
    EXPECT_FALSE(file->readStream(std::u16string{u'\xd800'}, content));
    EXPECT_TRUE(file->readStream(u"Büch", content));
}

TEST_F(GsfCompoundFilesTest, refuseWhatIsNone)
{
    EXPECT_FALSE(compounds.open(folder.path("missing")));
    EXPECT_FALSE(compounds.open(folder.path("")));
    EXPECT_FALSE(compounds.open(folder.write("empty", "")));
    EXPECT_FALSE(compounds.open(folder.write("text", "a,b,c\n1,2,3\n")));
    EXPECT_FALSE(compounds.open(folder.write("magic", "\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1")));
    EXPECT_FALSE(compounds.createWithStream(folder.path("missing/x"), u"Book", {}));
}

void readEverything(CompoundFiles& compounds, const std::u16string& path)
{
    const auto file = compounds.open(path);
    if (!file)
        return;
    for (const std::u16string& name : file->streamNames()) {
        Bytes content;
        file->readStream(name, content);
    }
}

TEST_F(GsfCompoundFilesTest, surviveACutAtEveryLength)
{
    ASSERT_TRUE(compounds.createWithStream(folder.path("book"), u"Book", someBytes(5000)));
    const std::string whole = folder.read("book");
    for (std::size_t length = 0; length < whole.size(); length += 37)
        readEverything(compounds, folder.write("cut", whole.substr(0, length)));
}

TEST_F(GsfCompoundFilesTest, surviveWrongBytes)
{
    ASSERT_TRUE(compounds.createWithStream(folder.path("book"), u"Book", someBytes(5000)));
    const std::string whole = folder.read("book");
    std::mt19937 random(1);
    for (int round = 0; round < 500; ++round) {
        std::string damaged = whole;
        for (int count = 0; count < 8; ++count)
            damaged[random() % damaged.size()] = static_cast<char>(random());
        // The header and the directory are where damage does most.
        damaged[random() % 512] = static_cast<char>(random());
        damaged[damaged.size() - 1 - random() % 1024] = static_cast<char>(random());
        readEverything(compounds, folder.write("damaged", damaged));
    }
}

// Workbooks of other programs and damaged ones, where a collection of them is at hand.
TEST_F(GsfCompoundFilesTest, surviveACollection)
{
    const char* corpus = std::getenv("VORN_CORPUS");
    if (corpus == nullptr)
        GTEST_SKIP() << "VORN_CORPUS names no collection";
    int opened = 0;
    for (const char* part : {"xls", "damaged"}) {
        std::error_code error;
        for (const auto& entry :
             std::filesystem::directory_iterator(std::filesystem::path(corpus) / part, error)) {
            const std::u16string path = entry.path().u16string();
            opened += compounds.open(path) != nullptr ? 1 : 0;
            readEverything(compounds, path);
        }
    }
    EXPECT_GT(opened, 100);
}

} // namespace
} // namespace vorn
