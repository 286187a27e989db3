// Numbers as they lie in files: little-endian, whatever the machine.
#pragma once

#include <cstdint>

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

} // namespace vorn
