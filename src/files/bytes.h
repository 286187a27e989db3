// Numbers as they lie in files: little-endian, whatever the machine.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace vorn {

constexpr std::uint16_t get16(const std::uint8_t* bytes)
{
    return static_cast<std::uint16_t>(bytes[0] | bytes[1] << 8);
}

constexpr void put16(std::uint8_t* bytes, std::uint16_t number)
{
    bytes[0] = static_cast<std::uint8_t>(number);
    bytes[1] = static_cast<std::uint8_t>(number >> 8);
}

constexpr std::uint32_t get32(const std::uint8_t* bytes)
{
    return get16(bytes) | static_cast<std::uint32_t>(get16(bytes + 2)) << 16;
}

constexpr void put32(std::uint8_t* bytes, std::uint32_t number)
{
    put16(bytes, static_cast<std::uint16_t>(number));
    put16(bytes + 2, static_cast<std::uint16_t>(number >> 16));
}

constexpr std::uint64_t get64(const std::uint8_t* bytes)
{
    return get32(bytes) | static_cast<std::uint64_t>(get32(bytes + 4)) << 32;
}

constexpr void put64(std::uint8_t* bytes, std::uint64_t number)
{
    put32(bytes, static_cast<std::uint32_t>(number));
    put32(bytes + 4, static_cast<std::uint32_t>(number >> 32));
}

constexpr double getDouble(const std::uint8_t* bytes)
{
    return std::bit_cast<double>(get64(bytes));
}

constexpr void putDouble(std::uint8_t* bytes, double number)
{
    put64(bytes, std::bit_cast<std::uint64_t>(number));
}

// The units of a text, two bytes each, without an end.
inline void putText(std::uint8_t* bytes, std::u16string_view text)
{
    if constexpr (std::endian::native == std::endian::little) {
        if (!text.empty())
            std::memcpy(bytes, text.data(), text.size() * sizeof(char16_t));
    } else {
        for (std::size_t index = 0; index < text.size(); ++index)
            put16(bytes + 2 * index, text[index]);
    }
}

// The reverse: `count` units of the text at `bytes`.
inline void getText(char16_t* text, const std::uint8_t* bytes, std::size_t count)
{
    if constexpr (std::endian::native == std::endian::little) {
        if (count != 0)
            std::memcpy(text, bytes, count * sizeof(char16_t));
    } else {
        for (std::size_t index = 0; index < count; ++index)
            text[index] = get16(bytes + 2 * index);
    }
}

} // namespace vorn
