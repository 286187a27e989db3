// Byte code of any kind that a careful reader lets pass, run as the formula of a cell: known
// instructions with operands in range, jumps forward to instructions of the block, calls of
// functions with as many arguments as they take. Whatever it does, the machine must come back to
// where it was and every text must have the owners that it had.
//
// The input is a row of choices. The first byte of each round says whether a block is built and
// run, a function is called with arguments of every kind, or the bytes that follow are code as it
// comes from a file, which runs if it passes the check of such code.

#include "core/error.h"
#include "core/formulacell.h"
#include "core/heap.h"
#include "core/pool.h"
#include "core/workbook.h"
#include "formula/bytecode.h"
#include "formula/checkcode.h"
#include "formula/machine.h"
#include "formula/printer.h"
#include "functions/table.h"
#include "machine.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace vorn {
namespace {

constexpr CellPosition Base{6, 3, 1};
constexpr int Variables = 4;
constexpr int RowSum = 3;
constexpr int FormulaRows = FirstActionRow;

// The texts of the first sheet, which are there all the time, under the first indices.
constexpr std::uint32_t StandingTexts = 8;

// The choice of a round of foreign code.
constexpr int ForeignCode = 255;

// A block has at most so many instructions, and a function is given at most so many arguments.
constexpr int InstructionsMax = 800;
constexpr int ArgumentsMax = 6;

void require(bool condition)
{
    if (!condition)
        std::abort();
}

// The choices of an input, 0 behind its end.
class Choices {
public:
    Choices(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

    bool atEnd() const { return size_ == 0; }
    int byte()
    {
        if (size_ == 0)
            return 0;
        --size_;
        return *data_++;
    }
    int below(int limit) { return byte() % limit; }
    std::uint16_t word() { return static_cast<std::uint16_t>(byte() | byte() << 8); }

private:
    const std::uint8_t* data_;
    std::size_t size_;
};

// --- What instructions hold

double anyNumber(Choices& choices)
{
    constexpr double numbers[] = {0,    -0.0,    1,     2,     -1,      0.5,   3,       10,
                                  -3.7, 1e-9,    100,   36526, 1e15,    4e9,   -4e9,    1e300,
                                  12.5, 1e-300,  60,    0.1,   255,     65536, -657434, 2958465,
                                  7,    1.0 / 3, 1e308, 29,    2.999999};
    const int choice = choices.byte();
    if (choice < 64)
        return choice - 16;
    if (choice < 250)
        return numbers[static_cast<std::size_t>(choice) % std::size(numbers)];
    if (choice == 250)
        return std::numeric_limits<double>::infinity();
    if (choice == 251)
        return std::numeric_limits<double>::quiet_NaN();
    std::uint8_t bytes[8];
    for (std::uint8_t& byte : bytes)
        byte = static_cast<std::uint8_t>(choices.byte());
    return readOperand<double>(bytes);
}

// A new text with one owner.
std::int32_t anyText(Choices& choices)
{
    constexpr const char16_t* texts[] = {
        u"",       u"abc",
        u"ABC",    u"5",
        u"-2.5",   u"true",
        u"1/2/00", u"12:30 pm",
        u">3",     u"<>a",
        u"=1+1",   u"50%",
        u"A1:B2",  u"'x",
        u"  ",     u"name",
        u"amount", u"\u00c4\u00df\u0130",
        u"a*b?",   u"the quick brown fox jumps over the lazy dog, twice"};
    const int choice = choices.byte();
    if (choice == 255)
        return -1;
    return stringPool->addText(texts[static_cast<std::size_t>(choice) % std::size(texts)]);
}

// Most often near the document's cells; now and then anything that 16 bits can hold, but for the
// bits of a column that mean nothing.
CellRef anyCorner(Choices& choices)
{
    const int choice = choices.byte();
    CellRef corner{static_cast<std::uint16_t>(choice & 15),
                   static_cast<std::uint16_t>(choice >> 4 & 7)};
    if (choice >= 240)
        corner = {choices.word(), static_cast<std::uint16_t>(choices.word() & 0xc0ff)};
    return corner;
}

RangeRef anyRange(Choices& choices)
{
    const CellRef first = anyCorner(choices);
    const CellRef last = anyCorner(choices);
    // Mostly the right way round.
    if (choices.byte() < 230)
        return {std::min(first.row, last.row), std::min(first.column, last.column),
                std::max(first.row, last.row), std::max(first.column, last.column)};
    return {first.row, first.column, last.row, last.column};
}

// As the operand of opcodes 15 and 16: of sheets that are there, and of one that is gone.
CellValue anySheetImage(Choices& choices, ValueTag tag)
{
    CellValue image;
    image.put(tag, anyRange(choices));
    image.firstSheet = static_cast<std::uint8_t>(choices.below(NewDocumentSheets + 1));
    image.lastSheet = choices.byte() < 160
                          ? image.firstSheet
                          : static_cast<std::uint8_t>(choices.below(NewDocumentSheets + 1));
    return image;
}

// As it lies on the stack: without relative parts.
RangeRef anyPlainRange(Choices& choices)
{
    const RangeRef stored = anyRange(choices);
    const CellRef first = resolve(stored.first(), Base.column, Base.row);
    const CellRef last = resolve(stored.last(), Base.column, Base.row);
    return {first.row, first.column, last.row, last.column};
}

CellValue anyPlainSheetRange(Choices& choices, ValueTag tag)
{
    CellValue image = anySheetImage(choices, tag);
    image.put(tag, anyPlainRange(choices));
    return image;
}

// A value of any kind that may lie on the stack; it owns its text.
CellValue anyValue(Choices& choices)
{
    switch (choices.below(16)) {
    case 0:
        return CellValue::makeBlank();
    case 1:
        return CellValue::makeLogical(choices.below(2) != 0);
    case 2:
        return CellValue::makeError(choices.below(43));
    case 3:
    case 4:
        return CellValue::makeTextIndex(anyText(choices));
    case 5:
        return CellValue::makeDate(anyNumber(choices));
    case 6:
        return CellValue::makeInteger(choices.word() * 65537U);
    case 7: {
        const CellRef cell = anyCorner(choices);
        return CellValue::makeCellRef(resolve(cell, Base.column, Base.row));
    }
    case 8:
    case 9:
        return CellValue::makeRangeRef(anyPlainRange(choices));
    case 10:
        return anyPlainSheetRange(choices, TagSheetCellRef);
    case 11:
        return anyPlainSheetRange(choices, TagSheetRangeRef);
    default:
        return CellValue::makeNumber(anyNumber(choices));
    }
}

// --- The document

void putNumber(Sheet& sheet, int column, int row, double number)
{
    Cell cell;
    cell.value = CellValue::makeNumber(number);
    sheet.setCell(column, row, cell);
}

void putText(Sheet& sheet, int column, int row, std::u16string_view text)
{
    Cell cell;
    makeTextValue(cell.value, text);
    sheet.setCell(column, row, cell);
}

// A table with headings, as searches and databases want one, and a column of every kind.
void fillSheet(Sheet& sheet)
{
    const char16_t* headings[] = {u"name", u"amount", u"day"};
    for (int column = 0; column < 3; ++column)
        putText(sheet, column, 0, headings[column]);
    for (int row = 1; row < 6; ++row) {
        putText(sheet, 0, row, row % 2 == 0 ? u"abc" : u"name");
        putNumber(sheet, 1, row, row * 2.5);
        Cell day;
        day.value = CellValue::makeDate(36526 + row);
        sheet.setCell(2, row, day);
    }
    const CellValue kinds[] = {CellValue::makeNumber(3),     CellValue::makeLogical(true),
                               CellValue::makeBlank(),       CellValue::makeError(CellErrorNA),
                               CellValue::makeDate(36526.5), CellValue::makeTextIndex(-1)};
    for (int row = 0; row < static_cast<int>(std::size(kinds)); ++row)
        sheet.setCell(4, row, {kinds[row], 0});
    putText(sheet, 4, 8, u">3");
}

void defineName(ByteCodeWriter& code)
{
    workbook->names.append({nullptr, code.finish(), -1});
}

// Names that are sound, deleted, endless, and out of balance.
void defineNames()
{
    ByteCodeWriter code;
    code.emit(OpPushCell, CellRef{1, 0xc001});
    defineName(code);
    code.emit(OpPushRange, RangeRef{0, 0, 6, 2});
    defineName(code);
    workbook->names.append({});
    code.emit(OpPushText, stringPool->addText(u"in a name"));
    code.emit(OpCallName, std::uint16_t{4});
    code.emit(OpConcat);
    defineName(code);
    code.emit(OpCallName, std::uint16_t{3});
    defineName(code);
    defineName(code);
    code.emit(OpPop);
    code.emit(OpCallName, std::uint16_t{6});
    defineName(code);
    code.emit(OpStoreVariable, std::uint16_t{0});
    code.emit(OpPushNumber, 1.0);
    defineName(code);
}

class Document {
public:
    Document()
    {
        fillSheet(*workbook->sheetAt(0));
        fillSheet(*workbook->sheetAt(1));
        defineNames();
        for (int index = 0; index < Variables; ++index)
            workbook->variables.append({});
    }

private:
    FuzzMachine machine_;
};

// --- Blocks

class BlockMaker {
public:
    explicit BlockMaker(Choices& choices) : choices_(choices) {}

    // The pool index of the block.
    std::int32_t make()
    {
        for (int count = 1 + choices_.byte(); count > 0 && !choices_.atEnd(); --count) {
            landJumps(LandWhenDue);
            if (instructions_ < InstructionsMax)
                emitAny();
        }
        // Most blocks leave one value, as formulas do.
        if (choices_.byte() < 240) {
            for (; depth_ > 1; --depth_)
                emitPlain(OpConcat);
        }
        landJumps(LandAll);
        return code_.finishInPool();
    }

private:
    struct Jump {
        std::uint32_t position;
        OpCode opcode;
        int instructions; // that it still leaps over
    };
    enum Landing { LandWhenDue, LandAll };

    // Lets the jumps that are due lead here.
    void landJumps(Landing landing)
    {
        std::vector<Jump> waiting;
        for (Jump jump : jumps_) {
            if (jump.instructions-- > 0 && landing != LandAll) {
                waiting.push_back(jump);
                continue;
            }
            const int origin = static_cast<int>(jump.position) + jumpOrigin(jump.opcode);
            const auto distance =
                static_cast<std::int16_t>(static_cast<int>(code_.size()) - origin);
            code_.patch(jump.position + 1, &distance, sizeof distance);
        }
        jumps_ = waiting;
    }

    void emitPlain(OpCode opcode)
    {
        code_.emit(opcode);
        ++instructions_;
    }
    template <typename Operand>
    void emit(OpCode opcode, Operand operand)
    {
        code_.emit(opcode, operand);
        ++instructions_;
    }

    void emitAny()
    {
        const int choice = choices_.byte();
        // Operations need operands; now and then they get none.
        if (depth_ < 2 && choice < 250)
            return emitPush();
        if (choice < 90)
            return emitPush();
        if (choice < 160)
            return emitOperator();
        if (choice < 225)
            return emitCall();
        emitOther(choice);
    }

    void emitPush()
    {
        ++depth_;
        switch (choices_.below(16)) {
        case 0:
            return emit(OpPushDate, anyNumber(choices_));
        case 1:
            return emit(OpPushText, anyText(choices_));
        case 2:
            return emit(OpPushError, choices_.word());
        case 3:
            return emit(OpPushLogical, static_cast<std::uint8_t>(choices_.byte()));
        case 4:
            return emit(OpPushInt16, choices_.word());
        case 5:
            return emit(OpPushInt32, choices_.word() * 65537U);
        case 6:
            return emit(OpPushValue, anyValue(choices_));
        case 7:
            return emit(OpPushCell, anyCorner(choices_));
        case 8:
            return emit(OpPushRange, anyRange(choices_));
        case 9:
            return emit(OpPushSheetCell, anySheetImage(choices_, TagSheetCellRef));
        case 10:
            return emit(OpPushSheetRange, anySheetImage(choices_, TagSheetRangeRef));
        case 11:
            return emit(OpCallName, static_cast<std::uint16_t>(
                                        choices_.below(static_cast<int>(workbook->names.size()))));
        case 12:
            return emit(OpLoadVariable, static_cast<std::uint16_t>(choices_.below(Variables)));
        case 13:
            return emitDead();
        default:
            return emit(OpPushNumber, anyNumber(choices_));
        }
    }

    void emitDead()
    {
        switch (choices_.below(4)) {
        case 0:
            return emit(OpBadCell, anyCorner(choices_));
        case 1:
            return emit(OpBadRange, anyRange(choices_));
        case 2:
            return emit(OpBadSheetCell, anySheetImage(choices_, TagSheetCellRef));
        default:
            return emit(OpBadSheetRange, anySheetImage(choices_, TagSheetRangeRef));
        }
    }

    void emitOperator()
    {
        constexpr OpCode operators[] = {OpAdd,     OpSubtract,     OpMultiply, OpDivide,
                                        OpPower,   OpConcat,       OpEqual,    OpLess,
                                        OpGreater, OpGreaterEqual, OpNotEqual, OpLessEqual,
                                        OpNegate,  OpPercent,      OpParen,    OpUnaryPlus};
        const OpCode opcode = operators[choices_.below(static_cast<int>(std::size(operators)))];
        const bool isUnary =
            opcode == OpNegate || opcode == OpPercent || opcode == OpParen || opcode == OpUnaryPlus;
        emitPlain(opcode);
        depth_ -= isUnary ? 0 : 1;
    }

    void emitCall()
    {
        const int row = choices_.below(FormulaRows);
        const FunctionRow& function = FunctionTable[row];
        const int most = std::max<int>(function.minArguments,
                                       std::min<int>(function.maxArguments, ArgumentsMax));
        const int count = function.minArguments + choices_.below(most - function.minArguments + 1);
        while (depth_ < count)
            emitPush();
        const bool isCompiledIf = row == FunctionRowIf && choices_.below(2) != 0;
        code_.emitCall(row, isCompiledIf ? count + CompiledIfMark : count);
        ++instructions_;
        depth_ -= count - 1;
    }

    void emitOther(int choice)
    {
        if (choice < 240) {
            const OpCode opcode = choice % 2 == 0 ? OpJump : OpJumpIfFalse;
            jumps_.push_back({code_.size(), opcode, choices_.below(12)});
            emit(opcode, std::int16_t{0});
            depth_ -= opcode == OpJumpIfFalse ? 1 : 0;
            return;
        }
        --depth_;
        if (choice < 248)
            emit(OpStoreVariable, static_cast<std::uint16_t>(choices_.below(Variables)));
        else
            emitPlain(OpPop);
    }

    Choices& choices_;
    ByteCodeWriter code_;
    std::vector<Jump> jumps_;
    int depth_ = 0;
    int instructions_ = 0;
};

// --- Running

// What every text of the document is owned by, all together.
struct Ownership {
    int texts = 0;
    long owners = 0;

    bool operator==(const Ownership&) const = default;
};

Ownership ownership()
{
    Ownership found;
    found.texts = stringPool->beginScan();
    for (std::int32_t index = 0; index < stringPool->slotCount(); ++index) {
        if (stringPool->slotIsLive(index))
            found.owners += stringPool->refCount(index);
    }
    stringPool->endScan();
    return found;
}

void requireSoundMachine(const CellValue* stack)
{
    require(machine.stackTop == stack);
    require(machine.machineRunning && machine.machineHealthy && machine.pendingError == 0);
    require(!errorStands());
}

void requireSoundResult(const CellValue& result)
{
    require(result.tag <= TagNumber || result.tag == TagDateTime || result.tag == TagInteger);
    require(result.tag != TagNumber || std::isfinite(result.number()));
    require(result.tag != TagText || result.textIndex() == -1 ||
            stringPool->isLive(result.textIndex()));
}

// Runs a formula twice. Takes over its one owner.
void runFormula(std::int32_t formula)
{
    const CellValue* stack = machine.stackTop;
    FormulaCell* cell = newFormulaCell(Base, formula);
    for (int pass = 0; pass < 2; ++pass) {
        evaluateFormulaCell(*cell);
        requireSoundMachine(stack);
        requireSoundResult(cell->result);
    }
    deleteFormulaCell(cell);
    for (TaskVariable& variable : workbook->variables)
        releaseValue(variable.value);
}

// Such code can also be printed.
void runForeignCode(Choices& choices)
{
    std::uint8_t block[4 + 256] = {};
    const int length = choices.byte() + 1;
    writeOperand(block, static_cast<std::uint32_t>(length));
    for (int byte = 0; byte < length - 1; ++byte)
        block[4 + byte] = static_cast<std::uint8_t>(choices.byte());
    CodeNeeds needs;
    if (!isSoundFormulaCode(block + 4, static_cast<std::uint32_t>(length), needs) ||
        needs.texts > StandingTexts)
        return;
    const std::int32_t formula = formulaPool->add(block, 4 + static_cast<std::size_t>(length), 1);
    byteCodeFromFileForm(formulaPool->code(formula), {});
    require(printCode(formulaPool->code(formula), Base).size() <= PrintedTextMax);
    require(!errorStands() || errorState.code == ErrorTooComplex);
    clearError();
    runFormula(formula);
}

// A function must take its arguments and leave one value, and touch nothing below. The one that
// need not is a sum that meets an error in a cell.
void callFunction(Choices& choices)
{
    const int row = choices.below(FormulaRows);
    const FunctionRow& function = FunctionTable[row];
    if (function.handler == nullptr)
        return;
    const int most = std::min<int>(function.maxArguments, function.minArguments + ArgumentsMax);
    const int count = function.minArguments + choices.below(most - function.minArguments + 1);
    const CellValue* stack = machine.stackTop;
    const CellValue below = CellValue::makeNumber(4711);
    pushRaw(below);
    CellValue* base = machine.stackTop;
    machine.runBase = base;
    machine.base = Base;
    for (int argument = 0; argument < count; ++argument)
        pushRaw(anyValue(choices));
    machine.argumentCount = static_cast<std::uint8_t>(count);
    function.handler();
    require(machine.stackTop == base - 1 || row == RowSum);
    require(machine.machineRunning && machine.machineHealthy);
    require(std::memcmp(base, &below, sizeof below) == 0);
    popMany(static_cast<int>(base - machine.stackTop));
    resetMachine();
    require(machine.stackTop == stack);
    clearError();
}

} // namespace
} // namespace vorn

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const vorn::Document document;
    const vorn::Ownership before = vorn::ownership();
    vorn::Choices choices(data, size);
    while (!choices.atEnd()) {
        const int choice = choices.byte();
        if (choice == vorn::ForeignCode)
            vorn::runForeignCode(choices);
        else if (choice % 4 == 0)
            vorn::runFormula(vorn::BlockMaker(choices).make());
        else
            vorn::callFunction(choices);
        vorn::require(vorn::ownership() == before);
    }
    return 0;
}
