#include "platform/icu/codepages.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <langinfo.h>
#include <locale.h>
#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>

namespace vorn {

namespace {

struct CloseConverter {
    void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, CloseConverter>;

// The pages whose ICU name does not follow from their number.
struct PageName {
    int page;
    const char* name;
};
constexpr PageName PageNames[] = {
    {Utf8Page, "UTF-8"         },
    {1200,     "UTF-16LE"      },
    {1201,     "UTF-16BE"      },
    {10000,    "macintosh"     },
    {10006,    "x-mac-greek"   },
    {10007,    "x-mac-cyrillic"},
    {10029,    "x-mac-ce"      },
    {10081,    "x-mac-turkish" },
    {12000,    "UTF-32LE"      },
    {12001,    "UTF-32BE"      },
    {20127,    "US-ASCII"      },
    {20866,    "KOI8-R"        },
    {21866,    "KOI8-U"        },
    {51932,    "EUC-JP"        },
    {51949,    "EUC-KR"        },
    {54936,    "GB18030"       },
    {65000,    "UTF-7"         },
};

// ICU's own answer to a wrong byte is now U+FFFD and now a control character, by page.
void replaceByte(const void* /*context*/, UConverterToUnicodeArgs* arguments, const char* /*bytes*/,
                 std::int32_t /*count*/, UConverterCallbackReason reason, UErrorCode* status)
{
    if (reason > UCNV_IRREGULAR)
        return;
    *status = U_ZERO_ERROR;
    ucnv_cbToUWriteUChars(arguments, u"\ufffd", 1, 0, status);
}

Converter openByName(const std::string& name)
{
    UErrorCode status = U_ZERO_ERROR;
    Converter converter(ucnv_open(name.c_str(), &status));
    if (U_FAILURE(status))
        return nullptr;
    ucnv_setToUCallBack(converter.get(), replaceByte, nullptr, nullptr, nullptr, &status);
    return converter;
}

// Null for a page that ICU has not.
Converter openPage(int page)
{
    for (const PageName& row : PageNames)
        if (row.page == page)
            return openByName(row.name);
    const int isoPart = page - 28590;
    if (isoPart >= 1 && isoPart <= 16)
        return openByName("ISO-8859-" + std::to_string(isoPart));
    if (page < 37 || page > 2000)
        return nullptr;
    Converter converter = openByName("windows-" + std::to_string(page));
    return converter ? std::move(converter) : openByName("ibm-" + std::to_string(page));
}

// --- Decoding

// The characters of the 256 bytes of a page where each byte is one character.
using ByteTable = std::array<char16_t, 256>;

bool fillTable(UConverter* converter, ByteTable& table)
{
    for (int byte = 0; byte < 256; ++byte) {
        const char source = static_cast<char>(byte);
        char16_t unit[2];
        UErrorCode status = U_ZERO_ERROR;
        ucnv_resetToUnicode(converter);
        if (ucnv_toUChars(converter, unit, 2, &source, 1, &status) != 1 || U_FAILURE(status))
            return false;
        table[static_cast<std::size_t>(byte)] = unit[0];
    }
    // ICU's tables of the old machines turn some control characters and DEL round in a ring, which
    // the pages of Windows do not.
    if (table['A'] == u'A')
        for (std::size_t byte = 0; byte < 128; ++byte)
            table[byte] = static_cast<char16_t>(byte);
    return true;
}

class TableDecoder : public TextDecoder {
public:
    explicit TableDecoder(const ByteTable& table) : table_(table) {}

    void decode(std::string_view bytes, bool /*atEnd*/, std::u16string& out) override
    {
        const std::size_t start = out.size();
        out.resize(start + bytes.size());
        char16_t* unit = out.data() + start;
        for (char byte : bytes)
            *unit++ = table_[static_cast<unsigned char>(byte)];
    }

private:
    ByteTable table_;
};

// The number of bytes before the first that is not ASCII.
std::size_t asciiLength(std::string_view bytes)
{
    constexpr std::uint64_t highBits = 0x8080808080808080;
    std::size_t length = 0;
    for (; length + sizeof highBits <= bytes.size(); length += sizeof highBits) {
        std::uint64_t eight;
        std::memcpy(&eight, bytes.data() + length, sizeof eight);
        if ((eight & highBits) != 0)
            break;
    }
    while (length < bytes.size() && static_cast<unsigned char>(bytes[length]) < 0x80)
        ++length;
    return length;
}

enum AsciiRule { AsciiAsIs, AsciiConverted };

class ConverterDecoder : public TextDecoder {
public:
    ConverterDecoder(Converter converter, AsciiRule rule)
        : converter_(std::move(converter)), rule_(rule)
    {
    }

    void decode(std::string_view bytes, bool atEnd, std::u16string& out) override
    {
        if (rule_ == AsciiAsIs && !pending()) {
            const std::size_t ascii = asciiLength(bytes);
            const std::size_t start = out.size();
            out.resize(start + ascii);
            std::copy_n(bytes.begin(), ascii, out.begin() + static_cast<std::ptrdiff_t>(start));
            bytes.remove_prefix(ascii);
        }
        if (!bytes.empty() || atEnd)
            convert(bytes, atEnd, out);
    }

private:
    bool pending()
    {
        UErrorCode status = U_ZERO_ERROR;
        return ucnv_toUCountPending(converter_.get(), &status) != 0;
    }

    void convert(std::string_view bytes, bool atEnd, std::u16string& out)
    {
        const char* source = bytes.data();
        const char* const sourceEnd = source + bytes.size();
        UErrorCode status = U_BUFFER_OVERFLOW_ERROR;
        while (status == U_BUFFER_OVERFLOW_ERROR) {
            const std::size_t start = out.size();
            out.resize(start + static_cast<std::size_t>(sourceEnd - source) + 16);
            char16_t* target = out.data() + start;
            status = U_ZERO_ERROR;
            ucnv_toUnicode(converter_.get(), &target, out.data() + out.size(), &source, sourceEnd,
                           nullptr, static_cast<UBool>(atEnd), &status);
            out.resize(static_cast<std::size_t>(target - out.data()));
        }
    }

    Converter converter_;
    AsciiRule rule_;
};

// --- The system's page

std::string environmentName()
{
    for (const char* variable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const char* value = std::getenv(variable);
        if (value != nullptr && *value != '\0')
            return value;
    }
    return {};
}

// The locale object is asked beside the process's own, which stays "C".
std::string environmentCharacterSet()
{
    const locale_t locale = newlocale(LC_CTYPE_MASK, "", locale_t{});
    if (locale != locale_t{}) {
        std::string name = nl_langinfo_l(CODESET, locale);
        freelocale(locale);
        return name;
    }
    // The locale is not installed on this machine; its name may still tell.
    const std::string name = environmentName();
    const std::size_t dot = name.find('.');
    return dot == name.npos ? std::string() : name.substr(dot + 1, name.find('@') - dot - 1);
}

} // namespace

int pageOfCharacterSet(std::string_view characterSet)
{
    constexpr PageName otherNames[] = {
        {1252,     "ISO-8859-1"},
        {Utf8Page, "US-ASCII"  }, // is as good as UTF-8, which can hold the
  // rest too
        {932,      "Shift_JIS" },
        {932,      "SJIS"      },
        {936,      "GBK"       },
        {936,      "GB2312"    },
        {949,      "EUC-KR"    },
        {950,      "Big5"      },
        {874,      "TIS-620"   },
    };
    const std::string name(characterSet);
    const auto isNamed = [&name](const char* other) {
        return ucnv_compareNames(name.c_str(), other) == 0;
    };
    if (isNamed("ANSI_X3.4-1968") || name.empty())
        return Utf8Page;
    for (const PageName& row : otherNames)
        if (isNamed(row.name))
            return row.page;
    for (const PageName& row : PageNames)
        if (isNamed(row.name))
            return row.page;
    for (int part = 2; part <= 16; ++part)
        if (isNamed(("ISO-8859-" + std::to_string(part)).c_str()))
            return 28590 + part;
    const std::size_t digits = name.find_first_of("0123456789");
    const int page = digits == name.npos ? 0 : std::atoi(name.c_str() + digits);
    return openPage(page) ? page : Utf8Page;
}

IcuCodePages::IcuCodePages(int systemPage)
    : systemPage_(systemPage != 0 ? systemPage : pageOfCharacterSet(environmentCharacterSet()))
{
}

bool IcuCodePages::isKnown(int page)
{
    return openPage(page) != nullptr;
}

std::unique_ptr<TextDecoder> IcuCodePages::decoder(int page)
{
    Converter converter = openPage(page);
    if (!converter)
        converter = openPage(Latin1Page);
    const bool singleByte = ucnv_getMaxCharSize(converter.get()) == 1;
    ByteTable table;
    if (singleByte && fillTable(converter.get(), table))
        return std::make_unique<TableDecoder>(table);
    ucnv_resetToUnicode(converter.get());
    return std::make_unique<ConverterDecoder>(std::move(converter),
                                              page == Utf8Page ? AsciiAsIs : AsciiConverted);
}

std::string IcuCodePages::encode(int page, std::u16string_view text)
{
    Converter converter = openPage(page);
    if (!converter)
        converter = openPage(Latin1Page);
    UErrorCode status = U_ZERO_ERROR;
    ucnv_setSubstString(converter.get(), u"?", 1, &status);

    std::string out;
    const char16_t* source = text.data();
    const char16_t* const sourceEnd = source + text.size();
    status = U_BUFFER_OVERFLOW_ERROR;
    while (status == U_BUFFER_OVERFLOW_ERROR) {
        const std::size_t start = out.size();
        out.resize(start + static_cast<std::size_t>(sourceEnd - source) + 16);
        char* target = out.data() + start;
        status = U_ZERO_ERROR;
        ucnv_fromUnicode(converter.get(), &target, out.data() + out.size(), &source, sourceEnd,
                         nullptr, 1, &status);
        out.resize(static_cast<std::size_t>(target - out.data()));
    }
    return out;
}

} // namespace vorn
