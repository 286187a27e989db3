// The calculation chain: all formulas of all sheets, in the order in which they are calculated.
// There are no dirty marks; what keeps results right is that a formula stands behind those that it
// reads. The order is found by following each formula's references once, whenever formulas came or
// went.
//
// Shape:  linked both ways, so that taking a record off or bringing one forward costs the same in
//         any chain. The links lie in formulaTable, handle 0 being the anchor: the place before the
//         first and behind the last record. The chain owns nothing.
// Errors: none. The sort is faster with some memory for the references that it follows, and does
//         without where that is refused.
#pragma once

#include "core/formulacell.h"

namespace vorn {

class CalcChain {
public:
    // Forgets all records without touching them: the document they were of is gone.
    void reset();

    void append(const FormulaCell* cell);

    // Takes a record off. One that is not on the chain is left alone.
    void remove(const FormulaCell* cell);

    // The first record, null for an empty chain; the one behind another, null behind the last.
    FormulaCell* first() const { return record(first_); }
    FormulaCell* next(const FormulaCell* cell) const
    {
        return record(formulaTable.link(cell->handle).next);
    }

    // Puts each record behind those that it reads, if formulas came or went since the last time.
    void sort();

    bool needsSort() const { return needsSort_; }

    // Did the last sort meet a formula that depends on itself? Nothing acts on it.
    bool cycleFound() const { return cycleFound_; }

private:
    static FormulaCell* record(FormulaHandle handle)
    {
        return handle == NoFormula ? nullptr : formulaTable.at(handle);
    }
    FormulaHandle& nextOf(FormulaHandle handle)
    {
        return handle == NoFormula ? first_ : formulaTable.link(handle).next;
    }
    FormulaHandle& previousOf(FormulaHandle handle)
    {
        return handle == NoFormula ? last_ : formulaTable.link(handle).previous;
    }
    void linkBehind(FormulaHandle place, FormulaHandle handle);
    void unlink(FormulaHandle handle);
    void moveBefore(FormulaHandle handle);
    void scanReferences(const FormulaCell& cell);
    void scanRange(int firstSheet, int lastSheet, const RangeRef& range);

    FormulaHandle first_ = NoFormula;
    FormulaHandle last_ = NoFormula;
    FormulaHandle placedEnd_ = NoFormula;
    bool needsSort_ = false;
    bool cycleFound_ = false;
};

extern CalcChain calcChain;

// Brings the chain in order and evaluates every formula once. Nothing that is raised while
// calculating reaches the sticky error, and a run of the machine that is going on is taken up again
// afterwards.
void recalculate();

} // namespace vorn
