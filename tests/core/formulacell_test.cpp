#include "core/formulacell.h"

#include "core/chain.h"
#include "core/pool.h"
#include "core/sheet.h"
#include "support/cells.h"
#include "support/dice.h"
#include "support/rawcells.h"
#include "support/refusal.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>
#include <set>
#include <vector>

namespace vorn {
namespace {

class FormulaCellTest : public testing::Test {
protected:
    // A block that does nothing, with one owner.
    static std::int32_t emptyCode()
    {
        ByteCodeWriter writer;
        return writer.finishInPool();
    }

    TestDocument document;
};

TEST_F(FormulaCellTest, beginsBlankAndOffTheChain)
{
    const std::int32_t code = emptyCode();
    FormulaCell* cell = newFormulaCell({5, 6, 2}, code);
    ASSERT_NE(cell, nullptr);
    EXPECT_EQ(cell->result.tag, TagBlank);
    EXPECT_EQ(cell->position(), (CellPosition{5, 6, 2}));
    EXPECT_EQ(cell->formula, code);
    EXPECT_EQ(formulaPool->refCount(code), 1);
    EXPECT_EQ(calcChain.first(), nullptr);
    EXPECT_EQ(CellValue::makeFormula(cell).formula(), cell);
    EXPECT_EQ(CellValue::makeFormula(cell).tag, TagFormula);
    calcChain.remove(cell); // not there: nothing happens
    EXPECT_FALSE(calcChain.needsSort());
    deleteFormulaCell(cell);
    EXPECT_FALSE(formulaPool->isLive(code));
}

TEST_F(FormulaCellTest, keepsItsAddressWhileOthersComeAndGo)
{
    const std::int32_t code = emptyCode();
    Dice random(5);
    std::vector<FormulaCell*> cells;
    std::set<FormulaCell*> places;
    for (int step = 0; step < 20000; ++step) {
        if (!random.oneIn(3) || cells.empty()) {
            const auto row = static_cast<std::uint16_t>(step & LastRow);
            FormulaCell* cell = newFormulaCell({row, 1, 2}, formulaPool->addRef(code));
            ASSERT_TRUE(places.insert(cell).second) << "a place was given twice";
            cell->result = CellValue::makeNumber(step);
            cells.push_back(cell);
        } else {
            const auto index =
                static_cast<std::size_t>(random.below(static_cast<int>(cells.size())));
            FormulaCell* cell = cells[index];
            const double number = cell->result.number();
            ASSERT_EQ(cell->row, static_cast<int>(number) & LastRow);
            ASSERT_EQ(CellValue::makeFormula(cell).formula(), cell);
            places.erase(cell);
            deleteFormulaCell(cell);
            cells[index] = cells.back();
            cells.pop_back();
        }
    }
    EXPECT_EQ(formulaPool->refCount(code), 1 + static_cast<int>(cells.size()));
    for (FormulaCell* cell : cells)
        deleteFormulaCell(cell);
    EXPECT_EQ(formulaPool->refCount(code), 1);
}

TEST_F(FormulaCellTest, leavesTheCodeWithTheCallerWhenMemoryIsShort)
{
    const std::int32_t code = emptyCode();
    bool refusedOne = true;
    for (int refused = 1; refusedOne; ++refused) {
        formulaTable.clear();
        clearError();
        AllocationWatch watch(refused);
        FormulaCell* cell = newFormulaCell({1, 2, 0}, code);
        refusedOne = watch.refused();
        EXPECT_EQ(cell == nullptr, refusedOne);
        EXPECT_EQ(errorState.code, refusedOne ? ErrorMemory : ErrorNone);
        EXPECT_EQ(formulaPool->refCount(code), 1);
        clearError();
        FormulaCell* next = newFormulaCell({1, 2, 0}, code);
        ASSERT_NE(next, nullptr) << "after refusal " << refused;
        EXPECT_EQ(next->formula, code);
        formulaTable.clear();
        EXPECT_LE(watch.liveBlocks(), 0);
    }
}

// --- Clones

TEST_F(FormulaCellTest, clonesAPlainCellWithItsStyle)
{
    const Cell from = textCell(u"shared", 3);
    Cell to;
    EXPECT_TRUE(cloneCell(from, to, {1, 1, 0}, KeepOffChain));
    EXPECT_EQ(describe(to.value), "\"shared\"");
    EXPECT_EQ(to.style, 3);
    EXPECT_EQ(to.value.textIndex(), from.value.textIndex());
    EXPECT_EQ(stringPool->refCount(from.value.textIndex()), 2);
}

TEST_F(FormulaCellTest, clonesAFormulaIntoARecordOfItsOwn)
{
    const Cell from = constantFormula(4, {0, 0, 0}, 2);
    FormulaCell* formula = from.value.formula();
    formula->result = textValue(u"result");
    for (const ChainEntry entry : {KeepOffChain, JoinChain}) {
        Cell to;
        EXPECT_TRUE(cloneCell(from, to, {7, 8, 1}, entry));
        EXPECT_EQ(to.style, 2);
        FormulaCell* clone = to.value.formula();
        EXPECT_NE(clone, formula);
        EXPECT_EQ(clone->position(), (CellPosition{7, 8, 1}));
        EXPECT_EQ(clone->formula, formula->formula);
        EXPECT_EQ(formulaPool->refCount(formula->formula), 2);
        EXPECT_EQ(describe(clone->result), "\"result\"");
        EXPECT_EQ(stringPool->refCount(formula->result.textIndex()), 2);
        EXPECT_EQ(calcChain.first(), entry == JoinChain ? clone : nullptr);
        releaseValue(to.value);
        EXPECT_EQ(formulaPool->refCount(formula->formula), 1);
        EXPECT_EQ(stringPool->refCount(formula->result.textIndex()), 1);
    }
}

TEST_F(FormulaCellTest, clonesABlankWhenMemoryIsShort)
{
    // The records of a chunk are given before another is asked for.
    const Cell from = constantFormula(4, {0, 0, 0}, 2);
    FormulaCell* formula = from.value.formula();
    AllocationWatch watch(1);
    Cell to;
    int clones = 0;
    while (cloneCell(from, to, {1, 1, 0}, JoinChain))
        ++clones;
    EXPECT_TRUE(watch.refused());
    EXPECT_EQ(errorState.code, ErrorMemory);
    EXPECT_EQ(to.value.tag, TagBlank);
    EXPECT_EQ(formulaPool->refCount(formula->formula), 1 + clones);
    int onChain = 0;
    for (FormulaCell* cell = calcChain.first(); cell != nullptr; cell = calcChain.next(cell))
        ++onChain;
    EXPECT_EQ(onChain, clones);
}

} // namespace
} // namespace vorn
