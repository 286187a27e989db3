// Rows of formulas and their answers, for the tests of functions, and a document that has one of
// each kind of argument in a cell.
#pragma once

#include "support/cells.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <string_view>

namespace vorn {

struct AnswerRow {
    const char* behaviour;
    std::u16string_view formula;
    std::string_view answer; // as `describe` writes it
};

template <std::size_t count>
void expectAnswers(Cells& cells, const AnswerRow (&rows)[count])
{
    for (const AnswerRow& row : rows)
        EXPECT_EQ(cells.answer(row.formula), row.answer) << row.behaviour;
}

// Row 1 of Sheet1: A a number, B a date, C a text that reads as a number, D one that does not,
// E a logical, F nothing, G an error, H an empty text, I !!NA, J a formula; A1 of Sheet2: a number.
class ArgumentCells : public Cells {
public:
    ArgumentCells()
    {
        put("A1", u"0.5");
        put("B1", u"12:00");
        put("C1", u"'0.5");
        put("D1", u"abc");
        put("E1", u"TRUE");
        put("G1", u"=1/0");
        put("H1", u"'");
        put("I1", u"=!!NA");
        put("J1", u"=A1*3");
        put("Sheet2!A1", u"0.25");
    }
};

} // namespace vorn
