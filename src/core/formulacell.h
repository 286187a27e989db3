// The records of formulas. The cell that holds a formula owns its record; the record knows where
// the cell stands, because the cell does not tell, and everything that moves a cell must move this
// with it.
//
// FormulaCell, 28 bytes; it is in no file:
//   offset size meaning
//   0      12   result: the last value computed, never a formula; owns its text
//   12     6    row, column, sheet of the owning cell
//   18     2    unused
//   20     4    FormulaPool index of the code; one reference is owned
//   24     4    handle
//
// Shape:  all records lie in one table and are named by handles of 32 bits: a cell has no room for
//         more, and what the sort of the calculation chain asks of a record (its links) lies dense
//         beside the table, so that following a million references stays in the cache. A record
//         keeps its address. Handle 0 is no record.
// Errors: ErrorMemory, sticky.
#pragma once

#include "core/growarray.h"
#include "core/value.h"

#include <cstdint>

namespace vorn {

struct Cell;

using FormulaHandle = std::uint32_t;
constexpr FormulaHandle NoFormula = 0;

struct FormulaCell {
    CellValue result;
    std::uint16_t row = 0;
    std::uint16_t column = 0;
    std::uint16_t sheet = 0;
    std::uint16_t unused = 0;
    std::int32_t formula = -1;
    FormulaHandle handle = NoFormula;

    CellPosition position() const { return {row, column, sheet}; }
};
static_assert(sizeof(FormulaCell) == 28);
static_assert(offsetof(FormulaCell, row) == 12 && offsetof(FormulaCell, formula) == 20);

enum ChainFlag : std::uint32_t {
    ChainMember = 1,  // on the chain
    ChainScanned = 2, // its references have been followed
    ChainPlaced = 4,  // it and all that it reads stand in their final places
};

// Where a record stands on the calculation chain, and what the sort of the chain notes about it. A
// sort of a large chain jumps about and waits for memory, so all that it asks lies in these 16
// bytes.
struct ChainLink {
    FormulaHandle next = NoFormula;
    FormulaHandle previous = NoFormula;
    std::uint32_t flags = 0;
    std::uint32_t reads = 0; // core/chain.cpp tells; valid during a sort only
};
static_assert(sizeof(ChainLink) == 16);

class FormulaTable {
public:
    FormulaTable() = default;
    ~FormulaTable() { clear(); }
    FormulaTable(const FormulaTable&) = delete;
    FormulaTable& operator=(const FormulaTable&) = delete;

    FormulaCell* at(FormulaHandle handle) const
    {
        return chunks_.data()[handle / ChunkRecords] + handle % ChunkRecords;
    }
    ChainLink& link(FormulaHandle handle) { return links_.data()[handle]; }

    // Handles run from 1 to below this.
    FormulaHandle handleEnd() const { return static_cast<FormulaHandle>(links_.size()); }

    // A record on defaults; null if memory is short.
    FormulaCell* add();

    // Gives the record's place to the next one. It owns nothing any more and is not on the chain.
    void remove(FormulaCell* cell);

    // Frees all records, whatever they own: the document they were of is gone.
    void clear();

private:
    static constexpr FormulaHandle ChunkRecords = 1024;

    // The links are one block, which moves as it grows.
    static constexpr std::int32_t LinksGrowBy = 16 * ChunkRecords;

    bool grow();

    GrowArray<FormulaCell*> chunks_;
    GrowArray<ChainLink> links_{LinksGrowBy}; // of a free record: `next` is the next free one
    FormulaHandle firstFree_ = NoFormula;
    FormulaHandle used_ = 1; // handles that were ever given away, with 0
};

extern FormulaTable formulaTable;

inline FormulaCell* CellValue::formula() const
{
    return formulaTable.at(get<FormulaHandle>());
}

inline CellValue CellValue::makeFormula(const FormulaCell* formula)
{
    return make(TagFormula, formula->handle);
}

// The formula that stands for all imported ones that could not be translated; -1 when there is
// none. Cells that hold it do not own it.
extern std::int32_t placeholderFormula;

// A new record, not on the chain, that takes over one reference to `formula`. Null, with
// ErrorMemory, if memory is short; the reference then stays with the caller.
FormulaCell* newFormulaCell(CellPosition position, std::int32_t formula);

// Releases the result and the formula of a record that is not on the chain, and frees it.
void deleteFormulaCell(FormulaCell* cell);

enum ChainEntry { KeepOffChain, JoinChain };

// Copies a cell with its style to the place `position`, where the caller stores it: a formula gets
// a record of its own over the same code, with a copy of the result. The old content of `to` is not
// released. False, with ErrorMemory and a blank in `to`, if memory is short.
bool cloneCell(const Cell& from, Cell& to, CellPosition position, ChainEntry entry);

} // namespace vorn
