#include "support/filedrecords.h"

#include "files/bytes.h"
#include "files/native.h"
#include "files/stream.h"

#include <algorithm>
#include <bit>
#include <gtest/gtest.h>

namespace vorn {

std::string savedBytes(TransferContext context)
{
    MemoryStream stream(MemoryStream::GrowsByHalf);
    context.stream = &stream;
    saveNative(context);
    EXPECT_EQ(stream.position(), stream.end());
    return {stream.data(), stream.data() + stream.end()};
}

std::vector<FiledRecord> splitRecords(const std::string& bytes)
{
    constexpr std::size_t HeadBytes = 4;
    std::vector<FiledRecord> records;
    std::size_t place = 0;
    while (bytes.size() - place >= HeadBytes) {
        std::uint8_t head[HeadBytes];
        std::copy_n(bytes.data() + place, HeadBytes, head);
        place += HeadBytes;
        const std::size_t length = get16(head + 2);
        if (bytes.size() - place < length)
            break;
        records.push_back({get16(head), hexOf(std::string_view(bytes).substr(place, length))});
        place += length;
    }
    EXPECT_EQ(place, bytes.size());
    return records;
}

std::vector<FiledRecord> savedRecords()
{
    return splitRecords(savedBytes());
}

std::vector<std::string> savedPayloads(int type)
{
    std::vector<std::string> payloads;
    for (const FiledRecord& record : savedRecords()) {
        if (record.type == type)
            payloads.push_back(record.payload);
    }
    return payloads;
}

std::string savedTypes()
{
    const std::vector<FiledRecord> records = savedRecords();
    std::string types;
    for (std::size_t first = 0; first < records.size();) {
        std::size_t end = first + 1;
        while (end < records.size() && records[end].type == records[first].type)
            ++end;
        types += (first == 0 ? "" : " ") + std::to_string(records[first].type);
        if (end - first > 1)
            types += "x" + std::to_string(end - first);
        first = end;
    }
    return types;
}

std::string hexOf(std::string_view bytes)
{
    constexpr char Digits[] = "0123456789abcdef";
    std::string hex;
    hex.reserve(2 * bytes.size());
    for (const char byte : bytes) {
        const auto number = static_cast<std::uint8_t>(byte);
        hex.push_back(Digits[number / 16]);
        hex.push_back(Digits[number % 16]);
    }
    return hex;
}

std::string bare(std::string_view hex)
{
    std::string digits(hex);
    std::erase(digits, ' ');
    return digits;
}

std::string hex8(unsigned number)
{
    constexpr char Digits[] = "0123456789abcdef";
    return {Digits[number / 16 % 16], Digits[number % 16]};
}

std::string hex16(unsigned number)
{
    return hex8(number) + hex8(number / 256);
}

std::string hex32(std::uint32_t number)
{
    return hex16(number) + hex16(number / 65536);
}

std::string hexDouble(double number)
{
    const auto bits = std::bit_cast<std::uint64_t>(number);
    return hex32(static_cast<std::uint32_t>(bits)) + hex32(static_cast<std::uint32_t>(bits >> 32));
}

std::string hexPlain(std::u16string_view text)
{
    std::string hex;
    for (const char16_t unit : text)
        hex += hex16(unit);
    return hex + hex16(0);
}

std::string hexCounted(std::u16string_view text)
{
    return hex32(static_cast<std::uint32_t>(2 * text.size() + 2)) + hexPlain(text);
}

} // namespace vorn
