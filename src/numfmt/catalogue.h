// The catalogue of number formats of a workbook. A format is no pattern string but a small record
// of settings; styles hold its index. The first sixteen are made from the locale and stay as they
// are.
//
// Shape:  the strings of a record live in the private heap and belong to whoever holds the record;
//         null is "none". Storing a record in the table hands them over.
// Errors: ErrorMemory, sticky.
#pragma once

#include "core/growarray.h"
#include "core/style.h"

#include <cstdint>
#include <string_view>

namespace vorn {

enum FormatKind : std::int32_t { FormatText = 3, FormatNumber = 4, FormatDate = 13 };

// The built-in formats that other units name.
constexpr int FormatIndexGeneral = 0;
constexpr int FormatIndexPercent = 5;
constexpr int FormatIndexShortDate = 6;
constexpr int FormatIndexTime12 = 10;
constexpr int FormatIndexTime24 = 11;
constexpr int FormatIndexTime12Seconds = 12;
constexpr int FormatIndexTime24Seconds = 13;
constexpr int FormatIndexDateTime = 14;
constexpr int FormatIndexText = 15;
constexpr int LastBuiltInFormat = 15;

struct NumberFormat {
    FormatKind kind = FormatNumber;
    // The General format, which renders by value and not by the fields below.
    std::int32_t general = 1;

    // FormatNumber
    std::uint8_t decimals = 0; // 0 to 9
    std::uint8_t percent = 0;  // follows from a '%' in any affix
    std::uint8_t thousands = 0;
    char16_t* positivePrefix = nullptr;
    char16_t* positiveSuffix = nullptr;
    char16_t* negativePrefix = nullptr;
    char16_t* negativeSuffix = nullptr;

    // FormatDate
    char16_t* datePattern = nullptr;
    char16_t* timePattern = nullptr;

    // The number of the format in the file being written.
    std::uint16_t fileIndex = NoFileIndex;
};

// The text of an affix or a pattern; empty for null.
std::u16string_view formatString(const char16_t* text);

void makeNumberFormat(NumberFormat& record, bool general, bool thousands, int decimals,
                      std::u16string_view positivePrefix, std::u16string_view positiveSuffix,
                      std::u16string_view negativePrefix, std::u16string_view negativeSuffix);
void makeDateFormat(NumberFormat& record, std::u16string_view datePattern,
                    std::u16string_view timePattern);
void makeTextFormat(NumberFormat& record);

// Same kind and settings; affixes and patterns equal as strings, null only equal to null.
bool equalFormats(const NumberFormat& a, const NumberFormat& b);

// Frees the strings of a record and sets them to null.
void freeFormatStrings(NumberFormat& record);

// Fills an empty table with the sixteen built-in formats of localeInfo.
void buildFormats(GrowArray<NumberFormat>& formats);

} // namespace vorn
