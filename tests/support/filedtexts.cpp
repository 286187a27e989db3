#include "support/filedtexts.h"

#include "core/value.h"
#include "files/bytes.h"
#include "files/nativerecords.h"
#include "formula/bytecode.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <string_view>
#include <vector>

namespace vorn {
namespace {

constexpr std::size_t RecordHead = 4;

class TextSpeller {
public:
    std::string spell(std::string_view file)
    {
        std::string spelled;
        while (file.size() >= RecordHead) {
            const unsigned type = number(file, 0, 2);
            const std::string_view payload = file.substr(RecordHead, number(file, 2, 2));
            if (type == RecordText)
                texts_.emplace_back(payload);
            else if (type != RecordTextCount)
                spelled += std::string(file.substr(0, 2)) + spellPayload(type, payload);
            file.remove_prefix(RecordHead + payload.size());
        }
        EXPECT_EQ(file.size(), 0U);
        return spelled;
    }

private:
    static std::uint32_t number(std::string_view bytes, std::size_t place, int size)
    {
        std::uint32_t value = 0;
        for (int byte = size; byte-- > 0;)
            value = value << 8 |
                    static_cast<std::uint8_t>(bytes[place + static_cast<std::size_t>(byte)]);
        return value;
    }

    std::string spellPayload(unsigned type, std::string_view payload) const
    {
        if (type == RecordFormula)
            return spellCode(payload.substr(4));
        return type == RecordRow ? spellRow(payload) : std::string(payload);
    }

    // All text records stand before whatever names them.
    std::string text(std::string_view bytes) const
    {
        const std::uint32_t index = number(bytes, 0, 4);
        return index < texts_.size() ? texts_[index] : "no text";
    }

    std::string spellCode(std::string_view code) const
    {
        std::string spelled;
        while (!code.empty()) {
            const auto opcode = static_cast<std::uint8_t>(code[0]);
            const auto size = static_cast<std::size_t>(operandSize(opcode));
            spelled += code[0];
            spelled += opcode == OpPushText ? text(code.substr(1)) : code.substr(1, size);
            code.remove_prefix(1 + size);
        }
        return spelled;
    }

    static std::size_t payloadSize(unsigned tag)
    {
        switch (tag) {
        case TagLogical:
        case TagError:
            return 1;
        case TagText:
            return 4;
        case TagNumber:
        case TagDateTime:
            return 8;
        default:
            return 0;
        }
    }

    std::string spellRow(std::string_view row) const
    {
        constexpr std::size_t HeadBytes = 12;
        constexpr unsigned Hole = 12;
        constexpr unsigned FormulaBit = 128;
        std::string spelled(row.substr(0, HeadBytes));
        for (row.remove_prefix(HeadBytes); !row.empty();) {
            const unsigned item = number(row, 0, 1);
            const unsigned tag = item & ~FormulaBit;
            std::size_t size = 1;
            spelled += row[0];
            if (item != Hole) {
                const std::size_t payload = payloadSize(tag);
                const std::size_t formula = (item & FormulaBit) != 0 ? 4 : 0;
                spelled += row.substr(1, 2);
                spelled += tag == TagText ? text(row.substr(3)) : row.substr(3, payload);
                spelled += row.substr(3 + payload, formula);
                size = 3 + payload + formula;
            }
            row.remove_prefix(size);
        }
        return spelled;
    }

    std::vector<std::string> texts_;
};

} // namespace

std::string spellOutTexts(const std::string& bytes)
{
    return TextSpeller().spell(bytes);
}

} // namespace vorn
