// The table of functions: a row for each, whose number is the function's identity in byte code and
// in files and never changes. Rows 0 to 127 are the functions of formulas; 128 to 156 have no name
// and are the steps of undo programs; 157 to 188 can only be called by tasks.
//
// A handler finds its arguments on the evaluation stack, the last on top, and their count in
// machine.argumentCount. It pops them all and pushes one result (formula/machine.h); a step of undo
// programs pushes none. Every row has a handler: that of a row whose body is not there yet gives
// the error 29, as an unknown name does.
#pragma once

#include <cstdint>
#include <string_view>

namespace vorn {

constexpr int FunctionRowCount = 189;
constexpr int FirstActionRow = 128;
constexpr int FirstTaskRow = 157;
constexpr int OpenArgumentList = 30;

// The rows that other units name.
constexpr int FunctionRowSum = 3;
constexpr int FunctionRowIf = 37;
constexpr int FunctionRowRand = 82;
constexpr int FunctionRowNow = 98;
constexpr int FunctionRowToday = 99;

enum FunctionCategory : std::uint16_t {
    CategoryAll = 0,
    CategoryRecent = 1,
    CategoryMath = 2,
    CategoryStatistical = 3,
    CategoryFinancial = 4,
    CategoryDateTime = 5,
    CategoryLogical = 6,
    CategoryText = 7,
    CategoryInformation = 8,
    CategoryDatabase = 9,
    CategoryTask = 10,
};
constexpr int CategoryCount = 11;

struct FunctionRow {
    void (*handler)();
    std::uint8_t minArguments;
    std::uint8_t maxArguments;
    FunctionCategory category;
    std::u16string_view name; // empty on rows 128 to 156
    std::u16string_view usage;
    std::u16string_view help;
};

extern const FunctionRow FunctionTable[FunctionRowCount];

// The bodies: callAbs of the row Abs and so on, in the unit of the row's category.
#define FUNCTION(row, name, least, most, category, usage, help) void call##name();
#define PENDING(row, name, least, most, category, usage, help) void call##name();
#define ACTION(row, name, count) void call##name();
#define PENDING_ACTION(row, name, count)
#include "functions/functions.def"
#undef FUNCTION
#undef PENDING
#undef ACTION
#undef PENDING_ACTION

// The steps of undo programs by name (editing/actions.h tells what each does).
enum ActionRow : int {
#define FUNCTION(row, name, least, most, category, usage, help)
#define PENDING FUNCTION
#define ACTION(row, name, count) name = row,
#define PENDING_ACTION ACTION
#include "functions/functions.def"
#undef FUNCTION
#undef PENDING
#undef ACTION
#undef PENDING_ACTION
};

// The row of a function by name, without case; -1 if there is none.
int findFunction(std::u16string_view name);

// "Math & Trig" and so on; empty for a number that is no category.
std::u16string_view categoryTitle(int category);

} // namespace vorn
