#include "core/chain.h"

#include "core/pool.h"
#include "core/sheet.h"
#include "core/workbook.h"
#include "formula/bytecode.h"
#include "formula/machine.h"

#include <algorithm>

namespace vorn {

CalcChain calcChain;

void CalcChain::reset()
{
    *this = CalcChain();
}

void CalcChain::linkBehind(FormulaHandle place, FormulaHandle handle)
{
    const FormulaHandle next = nextOf(place);
    ChainLink& link = formulaTable.link(handle);
    link.previous = place;
    link.next = next;
    previousOf(next) = handle;
    nextOf(place) = handle;
}

void CalcChain::unlink(FormulaHandle handle)
{
    const ChainLink link = formulaTable.link(handle);
    nextOf(link.previous) = link.next;
    previousOf(link.next) = link.previous;
}

void CalcChain::append(const FormulaCell* cell)
{
    linkBehind(last_, cell->handle);
    formulaTable.link(cell->handle).flags = ChainMember;
    needsSort_ = true;
}

void CalcChain::remove(const FormulaCell* cell)
{
    ChainLink& link = formulaTable.link(cell->handle);
    if ((link.flags & ChainMember) == 0)
        return;
    unlink(cell->handle);
    link = {};
    needsSort_ = true;
}

namespace {

// What a formula reads, by the four instructions that the sort looks at. What it reads through a
// name, or through a reference that a function builds, may be calculated after it and show one pass
// later.
struct ReadReference {
    int firstSheet;
    int lastSheet;
    RangeRef range;
    bool isCell;
};

// Finds the next reference at or behind `instruction`, which moves behind it. False at the end.
bool nextReference(const FormulaCell& cell, const std::uint8_t*& instruction, ReadReference& out)
{
    for (; *instruction != OpReturn; instruction = nextInstruction(instruction)) {
        const OpCode opcode = static_cast<OpCode>(*instruction);
        const bool ofSheets = opcode == OpPushSheetCell || opcode == OpPushSheetRange;
        const bool isCell = opcode == OpPushCell || opcode == OpPushSheetCell;
        if (!ofSheets && !isCell && opcode != OpPushRange)
            continue;
        const std::uint8_t* operand = instruction + 1;
        out.firstSheet = ofSheets ? std::min(operand[2], operand[3]) : cell.sheet;
        out.lastSheet = ofSheets ? std::max(operand[2], operand[3]) : cell.sheet;
        operand += ofSheets ? 4 : 0;
        const CellRef first = resolve(readOperand<CellRef>(operand), cell.column, cell.row);
        const CellRef last = isCell ? first
                                    : resolve(readOperand<CellRef>(operand + sizeof(CellRef)),
                                              cell.column, cell.row);
        out.range = {first.row, first.column, last.row, last.column};
        out.isCell = isCell;
        instruction = nextInstruction(instruction);
        return true;
    }
    return false;
}

// What a formula reads, as its link notes it during a sort: no formula at all; one, most often; a
// list of several; or references that include ranges, which are walked when the sort comes to them,
// since they may be long.
constexpr std::uint32_t ReadsNothing = 0;
constexpr std::uint32_t ReadsByWalk = UINT32_MAX;
constexpr std::uint32_t ReadsOne = 0x80000000; // with the handle

// Collects the references of formulas ahead of the sort. The sort jumps between formulas as their
// references lead it; the code of each lies wherever it was entered, and fetching it at that moment
// would wait for memory each time. Collecting goes through the formulas in the order of their
// records.
class ReferenceCollector {
public:
    // Fills `reads` and resets the flags of every link on the chain.
    void collect();

    // The list that starts at a place noted in `reads`, up to NoFormula.
    const FormulaHandle* list(std::uint32_t start) const { return lists_.data() + start; }

private:
    std::uint32_t collectFrom(const FormulaCell& cell);
    std::uint32_t noteReads(const FormulaHandle* handles, std::int32_t count);

    GrowArray<FormulaHandle> lists_;
};

// A formula with more single references than this is walked like one with ranges.
constexpr std::int32_t CollectedMax = 64;

FormulaHandle formulaAt(const ReadReference& reference)
{
    const Sheet* sheet = workbook->sheetAt(reference.firstSheet);
    if (sheet == nullptr)
        return NoFormula;
    const Cell* cell = sheet->cellAt(reference.range.firstColumn, reference.range.firstRow);
    return cell != nullptr && cell->value.tag == TagFormula ? cell->value.get<FormulaHandle>()
                                                            : NoFormula;
}

std::uint32_t ReferenceCollector::noteReads(const FormulaHandle* handles, std::int32_t count)
{
    if (count == 0)
        return ReadsNothing;
    if (count == 1)
        return ReadsOne | handles[0];
    // Place 0 is kept free, because it would read as nothing.
    const std::int32_t start = std::max(lists_.size(), 1);
    if (!lists_.resize(start + count + 1))
        return ReadsByWalk;
    std::copy(handles, handles + count, lists_.data() + start);
    lists_[start + count] = NoFormula;
    return static_cast<std::uint32_t>(start);
}

std::uint32_t ReferenceCollector::collectFrom(const FormulaCell& cell)
{
    FormulaHandle handles[CollectedMax];
    std::int32_t count = 0;
    const std::uint8_t* instruction = formulaPool->code(cell.formula);
    ReadReference reference;
    while (nextReference(cell, instruction, reference)) {
        if (!reference.isCell || reference.firstSheet != reference.lastSheet)
            return ReadsByWalk;
        const FormulaHandle handle = formulaAt(reference);
        if (handle == NoFormula)
            continue;
        if (count == CollectedMax)
            return ReadsByWalk;
        handles[count++] = handle;
    }
    return noteReads(handles, count);
}

void ReferenceCollector::collect()
{
    const ErrorState errors = errorState;
    const FormulaHandle end = formulaTable.handleEnd();
    for (FormulaHandle handle = 1; handle < end; ++handle) {
        ChainLink& link = formulaTable.link(handle);
        if ((link.flags & ChainMember) == 0)
            continue;
        link.flags = ChainMember;
        link.reads = collectFrom(*formulaTable.at(handle));
    }
    // Where memory is short for a list the references are walked: nothing failed.
    errorState = errors;
}

} // namespace

// The cursor is always the record behind placedEnd_. A record comes under it twice: first its
// references are followed, which brings what it reads in front of it; when the cursor has worked
// its way through those, the record is placed.
void CalcChain::sort()
{
    if (!needsSort_)
        return;
    cycleFound_ = false;
    ReferenceCollector references;
    references.collect();
    placedEnd_ = NoFormula;
    while (nextOf(placedEnd_) != NoFormula) {
        const FormulaHandle cursor = nextOf(placedEnd_);
        ChainLink& link = formulaTable.link(cursor);
        if ((link.flags & ChainScanned) == 0) {
            link.flags |= ChainScanned;
            if (link.reads == ReadsByWalk) {
                scanReferences(*formulaTable.at(cursor));
            } else if ((link.reads & ReadsOne) != 0) {
                moveBefore(link.reads & ~ReadsOne);
            } else if (link.reads != ReadsNothing) {
                for (const FormulaHandle* read = references.list(link.reads); *read != NoFormula;
                     ++read)
                    moveBefore(*read);
            }
            if (nextOf(placedEnd_) != cursor)
                continue;
        }
        link.flags |= ChainPlaced;
        placedEnd_ = cursor;
    }
    needsSort_ = false;
}

void CalcChain::scanReferences(const FormulaCell& cell)
{
    const std::uint8_t* instruction = formulaPool->code(cell.formula);
    ReadReference reference;
    while (nextReference(cell, instruction, reference))
        scanRange(reference.firstSheet, reference.lastSheet, reference.range);
}

void CalcChain::scanRange(int firstSheet, int lastSheet, const RangeRef& range)
{
    for (int index = firstSheet; index <= lastSheet; ++index) {
        const Sheet* sheet = workbook->sheetAt(index);
        if (sheet == nullptr || !sheet->hasRows())
            continue;
        const int lastRow = std::min<int>(range.lastRow, sheet->lastRow());
        for (int row = range.firstRow; row <= lastRow; ++row) {
            const Row* object = sheet->rowAt(row);
            if (object == nullptr)
                continue;
            const int first = std::max<int>(range.firstColumn, object->firstColumn);
            const int last = std::min<int>(range.lastColumn, object->cells.size() - 1);
            const Cell* cells = object->cells.data();
            for (int column = first; column <= last; ++column) {
                if (cells[column].value.tag == TagFormula)
                    moveBefore(cells[column].value.get<FormulaHandle>());
            }
        }
    }
}

// All placed records stand up to placedEnd_ and all others behind it, so there is no need to look
// for the record on the chain.
void CalcChain::moveBefore(FormulaHandle handle)
{
    const std::uint32_t flags = formulaTable.link(handle).flags;
    if ((flags & ChainMember) == 0 || (flags & ChainPlaced) != 0)
        return;
    if ((flags & ChainScanned) != 0)
        cycleFound_ = true;
    if (nextOf(placedEnd_) == handle)
        return;
    unlink(handle);
    linkBehind(placedEnd_, handle);
}

void recalculate()
{
    const MachineRegisters registers = machine;
    calcChain.sort();
    const ErrorState errors = errorState;
    clearError();
    for (FormulaCell* cell = calcChain.first(); cell != nullptr; cell = calcChain.next(cell))
        evaluateFormulaCell(*cell);
    errorState = errors;
    machine = registers;
}

} // namespace vorn
