// Rows of formulas and what they answer, for tests of functions.
#pragma once

#include "support/cells.h"

#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <string_view>

namespace vorn {

struct FormulaRow {
    const char* behaviour;
    std::u16string_view formula; // without its '='
    std::string_view answer;     // as describe() writes it
};

inline void expectAnswers(Cells& cells, std::initializer_list<FormulaRow> rows)
{
    for (const FormulaRow& row : rows) {
        EXPECT_EQ(cells.answer(row.formula), row.answer)
            << row.behaviour << ": " << std::string(row.formula.begin(), row.formula.end());
    }
}

} // namespace vorn
