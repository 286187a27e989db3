#include "platform/posix/files.h"

#include "platform/posix/path.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace vorn {
namespace {

std::string contentOf(File& file)
{
    std::string out;
    char block[3];
    for (std::int64_t count; (count = file.read(block, sizeof block)) > 0;)
        out.append(block, static_cast<std::size_t>(count));
    return out;
}

TEST(PosixFiles, readSeekAndMeasureAFile)
{
    const TempFolder folder;
    PosixFiles files;
    const auto file = files.openToRead(folder.write("data", "0123456789"));
    ASSERT_TRUE(file);
    EXPECT_EQ(file->size(), 10);
    EXPECT_EQ(contentOf(*file), "0123456789");
    EXPECT_TRUE(file->seek(7));
    EXPECT_EQ(contentOf(*file), "789");
    char byte = 0;
    EXPECT_EQ(file->read(&byte, 1), 0) << "at the end there is nothing, and no failure";
    EXPECT_FALSE(file->write("x", 1)) << "it was opened to read";
}

TEST(PosixFiles, refuseToOpenWhatCannotBeRead)
{
    const TempFolder folder;
    PosixFiles files;
    const std::u16string secret = folder.write("secret", "x");
    ::chmod(folder.file("secret").c_str(), 0);
    ::mkfifo(folder.file("pipe").c_str(), 0666);
    const std::u16string file = folder.write("file", "");
    const std::u16string cut = file + u'\0' + u"x";
    const std::u16string endless = file + std::u16string(5000, u'a');
    const struct {
        const char* behaviour;
        std::u16string path;
    } cases[] = {
        {"no name",                       u""                        },
        {"a file that is not there",      folder.path("missing")     },
        {"in a folder that is not there", folder.path("missing/file")},
        {"a folder",                      folder.path("")            },
        {"a file that nobody may read",   secret                     },
        {"a pipe that nobody writes",     folder.path("pipe")        },
        {"a device",                      u"/dev/null"               },
        {"a file as if it were a folder", file + u"/x"               },
        {"a name with a zero in it",      cut                        },
        {"a name that is too long",       endless                    },
    };
    for (const auto& c : cases)
        EXPECT_FALSE(files.openToRead(c.path)) << c.behaviour;
}

TEST(PosixFiles, createAFileOrEmptyTheOneThatIsThere)
{
    const TempFolder folder;
    PosixFiles files;
    for (std::string_view content : {"first and long", "second"}) {
        const auto file = files.create(folder.path("new"));
        ASSERT_TRUE(file);
        EXPECT_EQ(file->size(), 0);
        EXPECT_TRUE(file->write(content.data(), content.size()));
        EXPECT_EQ(folder.read("new"), content);
    }
}

TEST(PosixFiles, writeOverAPlaceThatWasWrittenBefore)
{
    const TempFolder folder;
    PosixFiles files;
    const auto file = files.create(folder.path("new"));
    ASSERT_TRUE(file);
    EXPECT_TRUE(file->write("0123456789", 10));
    EXPECT_TRUE(file->seek(2));
    EXPECT_TRUE(file->write("xy", 2));
    EXPECT_TRUE(file->seek(10));
    EXPECT_TRUE(file->write("!", 1));
    EXPECT_EQ(folder.read("new"), "01xy456789!");
}

TEST(PosixFiles, refuseToCreateWhatMayNotBe)
{
    const TempFolder folder;
    PosixFiles files;
    const std::u16string guarded = folder.write("guarded", "keep");
    ::chmod(folder.file("guarded").c_str(), 0444);
    EXPECT_FALSE(files.create(guarded));
    EXPECT_EQ(folder.read("guarded"), "keep") << "a refused file keeps its bytes";
    EXPECT_FALSE(files.create(folder.path(""))) << "a folder";
    EXPECT_FALSE(files.create(folder.path("missing/file"))) << "in no folder";
    EXPECT_FALSE(files.create(u"")) << "no name";
}

TEST(PosixFiles, tellAFullDevice)
{
    PosixFiles files;
    if (!files.exists(u"/dev/full"))
        GTEST_SKIP() << "this system has none";
    const auto file = files.create(u"/dev/full");
    ASSERT_TRUE(file);
    EXPECT_FALSE(file->write("x", 1));
    EXPECT_EQ(file->size(), -1);
}

TEST(PosixFiles, createOnlyNewFilesWhenAskedTo)
{
    const TempFolder folder;
    PosixFiles files;
    EXPECT_EQ(files.createNew(folder.path("new")), CreateNew::Created);
    EXPECT_EQ(folder.read("new"), "");
    EXPECT_EQ(files.createNew(folder.path("new")), CreateNew::Exists);
    files.makeFolder(folder.path("sub"));
    EXPECT_EQ(files.createNew(folder.path("sub")), CreateNew::Exists) << "a folder is a name too";
    EXPECT_EQ(files.createNew(folder.path("missing/new")), CreateNew::Failed);
}

TEST(PosixFiles, removeFilesAndMakeFolders)
{
    const TempFolder folder;
    PosixFiles files;
    EXPECT_FALSE(files.exists(folder.path("sub")));
    EXPECT_TRUE(files.makeFolder(folder.path("sub")));
    EXPECT_TRUE(files.exists(folder.path("sub")));
    EXPECT_FALSE(files.makeFolder(folder.path("sub"))) << "it is there already";
    EXPECT_FALSE(files.remove(folder.path("sub"))) << "folders stay";
    folder.write("sub/file", "x");
    EXPECT_TRUE(files.remove(folder.path("sub/file")));
    EXPECT_FALSE(files.exists(folder.path("sub/file")));
    EXPECT_FALSE(files.remove(folder.path("sub/file"))) << "it is gone already";
}

TEST(PosixFiles, takeNamesOfAnyScript)
{
    const TempFolder folder;
    PosixFiles files;
    EXPECT_EQ(files.createNew(folder.path("") + u"Umsätze 中文 \U0001d11e"), CreateNew::Created);
    EXPECT_TRUE(std::filesystem::exists(folder.file("Umsätze 中文 \xf0\x9d\x84\x9e")));
}

TEST(PathBytes, areTheUtf8OfAPath)
{
    EXPECT_EQ(pathBytes(u""), "");
    EXPECT_EQ(pathBytes(u"/a/b.csv"), "/a/b.csv");
    EXPECT_EQ(pathBytes(u"\u00e4"), "\xc3\xa4");
    EXPECT_EQ(pathBytes(u"\u20ac"), "\xe2\x82\xac");
    EXPECT_EQ(pathBytes(u"\U0001d11e"), "\xf0\x9d\x84\x9e");
    EXPECT_EQ(pathBytes(std::u16string(u"a\0b", 3)), "") << "no call could take it whole";
    EXPECT_EQ(pathBytes(std::u16string{u'a', u'\xd834'}), "a\xef\xbf\xbd") << "a lone surrogate";
    EXPECT_EQ(pathBytes(std::u16string{u'\xdd1e', u'a'}), "\xef\xbf\xbd"
                                                          "a");
}

} // namespace
} // namespace vorn
