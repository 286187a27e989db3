#include "platform/icu/codepages.h"

#include "support/environment.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using namespace std::string_literals;

std::u16string decodeAll(int page, std::string_view bytes)
{
    IcuCodePages pages(Utf8Page);
    std::u16string out;
    pages.decoder(page)->decode(bytes, true, out);
    return out;
}

TEST(IcuCodePages, turnBytesIntoTextAndBack)
{
    const struct {
        const char* behaviour;
        int page;
        std::string bytes;
        std::u16string text;
    } cases[] = {
        {"nothing",                         65001, "",                      u""          },
        {"UTF-8",                           65001, "a\xc3\xa4\xe2\x82\xac", u"aä€"    },
        {"UTF-8 above 16 bits",             65001, "\xf0\x9d\x84\x9e",      u"\U0001d11e"},
        {"zero bytes",                      65001, "a\0b"s,                 u"a\0b"s     },
        {"ASCII",                           20127, "abc",                   u"abc"       },
        {"Windows Latin 1",                 1252,  "\x80 \xe4\xff",         u"€ äÿ"  },
        {"Windows Central Europe",          1250,  "\xb9\xe8",              u"ąč"      },
        {"Windows Cyrillic",                1251,  "\xcf\xf0",              u"Пр"      },
        {"Windows Greek",                   1253,  "\xd9",                  u"Ω"        },
        {"Windows Turkish",                 1254,  "\xf0\xfd",              u"ğı"      },
        {"Windows Hebrew",                  1255,  "\xe0",                  u"א"        },
        {"Windows Arabic",                  1256,  "\xc7",                  u"ا"        },
        {"Windows Baltic",                  1257,  "\xe0",                  u"ą"        },
        {"Windows Vietnamese",              1258,  "\xd0",                  u"Đ"        },
        {"Thai",                            874,   "\xa1",                  u"ก"       },
        {"Japanese",                        932,   "\x93\xfa\x96\x7b\\",    u"日本\\"  },
        {"Chinese",                         936,   "\xd6\xd0\xce\xc4",      u"中文"    },
        {"Korean",                          949,   "\xc7\xd1\xb1\xdb",      u"한글"    },
        {"Taiwanese",                       950,   "\xa4\xa4\xa4\xe5",      u"中文"    },
        {"the IBM PC",                      437,   "\x81\xe1\xb3",          u"üß│"   },
        {"the IBM PC in Europe",            850,   "\x84\x9b",              u"äø"      },
        {"the IBM PC in Russia",            866,   "\x8f\xe0",              u"Пр"      },
        {"the Macintosh",                   10000, "\x8a\xa7",              u"äß"      },
        {"the Macintosh in Russia",         10007, "\x8f\xf0",              u"Пр"      },
        {"UTF-16",                          1200,  "a\0\xe4\0"s,            u"aä"       },
        {"UTF-16 with the high byte first", 1201,  "\0a\0\xe4"s,            u"aä"       },
        {"ISO Latin 9",                     28605, "\xa4",                  u"€"       },
        {"KOI8",                            20866, "\xf0\xd2",              u"Пр"      },
    };
    IcuCodePages pages(Utf8Page);
    for (const auto& c : cases) {
        EXPECT_TRUE(pages.isKnown(c.page)) << c.behaviour;
        EXPECT_EQ(decodeAll(c.page, c.bytes), c.text) << c.behaviour;
        EXPECT_EQ(pages.encode(c.page, c.text), c.bytes) << c.behaviour;
    }
}

TEST(IcuCodePages, keepAsciiAsItIsInEveryPageOfASingleByte)
{
    std::string bytes;
    std::u16string text;
    for (int byte = 0; byte < 128; ++byte) {
        bytes += static_cast<char>(byte);
        text += static_cast<char16_t>(byte);
    }
    for (int page : {437, 850, 852, 866, 874, 1250, 1251, 1252, 1257, 10000, 20127, 28592})
        EXPECT_EQ(decodeAll(page, bytes), text) << page;
}

TEST(IcuCodePages, readAnUnknownPageAsLatin1)
{
    IcuCodePages pages(Utf8Page);
    for (int page : {0, -1, 1, 3, 9999, 64000, 70000, 2147483647}) {
        EXPECT_FALSE(pages.isKnown(page)) << page;
        EXPECT_EQ(decodeAll(page, "\xe4"), u"ä") << page;
        EXPECT_EQ(pages.encode(page, u"ä"), "\xe4") << page;
    }
}

TEST(IcuCodePages, putAQuestionMarkForWhatAPageHasNot)
{
    IcuCodePages pages(Utf8Page);
    EXPECT_EQ(pages.encode(1252, u"a中b"), "a?b");
    EXPECT_EQ(pages.encode(1251, u"ä"), "?");
    EXPECT_EQ(pages.encode(20127, u"é"), "?");
    EXPECT_EQ(pages.encode(932, u"a\u0e01"), "a?");
    EXPECT_EQ(pages.encode(65001, std::u16string{u'a', u'\xd800', u'z'}), "a?z")
        << "a lone surrogate";
}

TEST(IcuCodePages, encodeTextsOfAnyLength)
{
    IcuCodePages pages(Utf8Page);
    for (std::size_t length : {1u, 15u, 16u, 17u, 100u, 5000u}) {
        const std::string bytes = pages.encode(Utf8Page, std::u16string(length, u'€'));
        EXPECT_EQ(bytes.size(), 3 * length);
        EXPECT_EQ(decodeAll(Utf8Page, bytes), std::u16string(length, u'€'));
    }
}

// Whatever stands before a wrong byte and whatever stands behind it is text and stays.
TEST(IcuCodePages, replaceOnlyWhatHasNoMeaning)
{
    const struct {
        const char* behaviour;
        int page;
        std::string bytes;
        std::u16string text;
    } cases[] = {
        {"a lone continuation byte",         65001, "a\x80z",            u"a\ufffdz"                 },
        {"a byte that never occurs",         65001, "a\xffz",            u"a\ufffdz"                 },
        {"a character cut short by another", 65001, "a\xe2\x82z",        u"a\ufffdz"                 },
        {"and by the end",                   65001, "a\xe2\x82",         u"a\ufffd"                  },
        {"an overlong form",                 65001, "\xc0\xafz",         u"\ufffd\ufffdz"            },
        {"a surrogate",                      65001, "\xed\xa0\x80z",     u"\ufffd\ufffd\ufffdz"      },
        {"a number above the last",          65001, "\xf4\x90\x80\x80z", u"\ufffd\ufffd\ufffd\ufffdz"},
        {"a byte above ASCII",               20127, "a\xe4z",            u"a\ufffdz"                 },
        {"a lead byte at the end",           932,   "a\x93",             u"a\ufffd"                  },
        {"half a unit",                      1200,  "a\0b"s,             u"a\ufffd"                  },
    };
    for (const auto& c : cases)
        EXPECT_EQ(decodeAll(c.page, c.bytes), c.text) << c.behaviour;
}

TEST(IcuCodePages, keepAByteOrderMark)
{
    EXPECT_EQ(decodeAll(65001, "\xef\xbb\xbf"
                               "a"),
              u"\ufeffa");
    EXPECT_EQ(decodeAll(1200, "\xff\xfe"
                              "a\0"s),
              u"\ufeffa");
}

// A stream gives its bytes in blocks that end where they like.
TEST(IcuCodePages, decodeTheSameHoweverTheBytesAreCut)
{
    const struct {
        int page;
        std::string bytes;
    } cases[] = {
        {65001,
         "plain a\xc3\xa4\xe2\x82\xac\xf0\x9d\x84\x9e, 12345678,\xe2\x82\xff\x80 z \xe2\x82"},
        {1252,  "plain \x80\xe4 end"                                                        },
        {932,   "a\x93\xfa\x96\x7b\\ \x82\xa0z\x93"                                         },
        {936,   "a\xd6\xd0\xce\xc4z"                                                        },
        {54936, "\x84\x31\xa4\x37z\x81\x30"                                                 },
        {1200,  "a\0\x34\xd8\x1e\xdd\xe4\0z\0"s                                             },
    };
    IcuCodePages pages(Utf8Page);
    for (const auto& c : cases) {
        const std::u16string whole = decodeAll(c.page, c.bytes);
        for (std::size_t block = 1; block <= c.bytes.size(); ++block) {
            const auto decoder = pages.decoder(c.page);
            std::u16string out;
            for (std::size_t at = 0; at < c.bytes.size(); at += block)
                decoder->decode(std::string_view(c.bytes).substr(at, block), false, out);
            decoder->decode({}, true, out);
            EXPECT_EQ(out, whole) << c.page << " in blocks of " << block;
        }
    }
}

TEST(IcuCodePages, giveEachStreamItsOwnState)
{
    IcuCodePages pages(Utf8Page);
    const auto first = pages.decoder(Utf8Page);
    const auto second = pages.decoder(Utf8Page);
    std::u16string a;
    std::u16string b;
    first->decode("\xe2\x82", false, a);
    second->decode("x", true, b);
    first->decode("\xac", true, a);
    EXPECT_EQ(a, u"€");
    EXPECT_EQ(b, u"x");
}

TEST(IcuCodePages, appendToWhatIsThere)
{
    IcuCodePages pages(Utf8Page);
    for (int page : {Utf8Page, Latin1Page, 932}) {
        std::u16string out = u"before ";
        pages.decoder(page)->decode("after", true, out);
        EXPECT_EQ(out, u"before after") << page;
    }
}

TEST(PageOfCharacterSet, findsThePageByTheSystemsName)
{
    const struct {
        const char* name;
        int page;
    } cases[] = {
        {"UTF-8",          65001},
        {"utf8",           65001},
        {"ANSI_X3.4-1968", 65001},
        {"US-ASCII",       65001},
        {"",               65001},
        {"no such set",    65001},
        {"ISO-8859-1",     1252 },
        {"ISO-8859-15",    28605},
        {"iso88592",       28592},
        {"CP1251",         1251 },
        {"KOI8-R",         20866},
        {"KOI8-U",         21866},
        {"EUC-JP",         51932},
        {"SHIFT_JIS",      932  },
        {"GB2312",         936  },
        {"GBK",            936  },
        {"GB18030",        54936},
        {"BIG5",           950  },
        {"EUC-KR",         949  },
        {"TIS-620",        874  },
        {"IBM850",         850  },
    };
    for (const auto& c : cases)
        EXPECT_EQ(pageOfCharacterSet(c.name), c.page) << c.name;
}

TEST(SystemPage, isTheEnvironmentsUnlessItIsGiven)
{
    EXPECT_EQ(IcuCodePages(1252).systemPage(), 1252);
    const EnvironmentVariable unicode("LC_ALL", "C.UTF-8");
    EXPECT_EQ(IcuCodePages().systemPage(), 65001);
    const EnvironmentVariable russian("LC_ALL", "ru_RU.CP1251");
    EXPECT_EQ(IcuCodePages().systemPage(), 1251);
    const EnvironmentVariable portable("LC_ALL", "C");
    EXPECT_EQ(IcuCodePages().systemPage(), 65001);
}

} // namespace
} // namespace vorn
