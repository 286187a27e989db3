// Byte code that comes from outside. The machine, the printer and every walk over code believe what
// a block says: where its instructions begin and end, which functions and texts it names. So what a
// file brings is looked through once, before anybody else sees it.
//
// Sound code need not make sense: operations without operands, names without a definition and
// references to sheets that are not there are all met in documents, and whoever reads code can live
// with them.
//
// Errors: none of its own; the reader knows which one its user should see.
#pragma once

#include <cstdint>

namespace vorn {

// The longest code that a check takes.
constexpr std::uint32_t CheckedCodeMax = 65536;

// How many texts and names there have to be for all numbers in the code to mean one, and whether it
// calls a function whose value changes by itself (Rand, Now, Today).
struct CodeNeeds {
    std::uint32_t texts = 0;
    std::uint32_t names = 0;
    bool isVolatile = false;
};

// Is this the code of a formula or of a name? It must be whole instructions up to an OpReturn that
// is its last byte, jump only forward to one of them, call nothing but functions of formulas with
// as many arguments as they take, and hold no value that owns something. Steps of undo programs,
// functions of tasks and variables of tasks are refused: a cell that is calculated must change
// nothing but its own result. What sound code needs is added to `needs`.
bool isSoundFormulaCode(const std::uint8_t* code, std::uint32_t length, CodeNeeds& needs);

// From the numbers of a stream to indices of the document; null where they are the same.
struct FileNumberMaps {
    const std::int32_t* texts = nullptr;
    const std::int32_t* names = nullptr;
};

// Turns the operands of sound code into those of the document and takes its references to texts,
// which must be there. Answers whether the code calls a function whose value changes by itself
// (Rand, Now, Today).
bool byteCodeFromFileForm(std::uint8_t* code, const FileNumberMaps& maps);

} // namespace vorn
