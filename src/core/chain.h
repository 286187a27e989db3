// The calculation chain: all formulas of all sheets, in the order in which they are calculated.
// There are no dirty marks; what keeps results right is that a formula stands behind those that it
// reads. The order is found by following each formula's references once, whenever formulas came or
// went.
//
// Shape:  linked both ways through the formula records, so that taking one off or bringing one
// forward
//         costs the same in any chain. The chain owns nothing.
// Errors: none.
#pragma once

#include "core/formulacell.h"

namespace vorn {

class CalcChain {
public:
    // Forgets all records without touching them: the document they were of is gone.
    void reset();

    void append(FormulaCell* cell);

    // Takes a record off. One that is not on the chain is left alone.
    void remove(FormulaCell* cell);

    // The first record, null for an empty chain; the others follow along `next`.
    FormulaCell* first() const { return anchor_.next; }

    // Puts each record behind those that it reads, if formulas came or went since the last time.
    void sort();

    bool needsSort() const { return needsSort_; }

    // Did the last sort meet a formula that depends on itself? Nothing acts on it.
    bool cycleFound() const { return cycleFound_; }

private:
    void scanReferences(const FormulaCell& cell);
    void scanRange(int firstSheet, int lastSheet, const RangeRef& range);
    void moveBefore(FormulaCell* cell);
    void unlink(FormulaCell* cell);
    void linkBehind(FormulaCell* place, FormulaCell* cell);

    FormulaCell anchor_;
    FormulaCell* tail_ = &anchor_;
    FormulaCell* placedEnd_ = &anchor_;
    bool needsSort_ = false;
    bool cycleFound_ = false;
};

extern CalcChain calcChain;

// Brings the chain in order and evaluates every formula once. Nothing that is raised while
// calculating reaches the sticky error, and a run of the machine that is going on is taken up again
// afterwards.
void recalculate();

} // namespace vorn
