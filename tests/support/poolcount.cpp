#include "support/poolcount.h"

#include "core/formulacell.h"
#include "core/pool.h"
#include "core/workbook.h"
#include "editing/undo.h"
#include "formula/bytecode.h"

#include <set>
#include <vector>

namespace vorn {
namespace {

class OwnerCount {
public:
    OwnerCount()
        : texts_(static_cast<std::size_t>(stringPool->slotCount())),
          formulas_(static_cast<std::size_t>(formulaPool->slotCount()))
    {
        for (const Sheet* sheet : workbook->sheets)
            addSheet(*sheet);
        for (const UndoStep& step : undoList.steps) {
            addBlock(step.forward);
            addBlock(step.backward);
        }
        for (const DefinedName& name : workbook->names)
            addBlock(name.block);
        for (const TaskVariable& variable : workbook->variables)
            addValue(variable.value, "a variable");
        if (placeholderFormula != -1)
            addFormula(placeholderFormula, "the placeholder");
        for (std::int32_t index = 0; index < formulaPool->slotCount(); ++index) {
            if (formulaPool->isLive(index))
                addCode(formulaPool->code(index));
        }
    }

    std::string faults()
    {
        compare(*stringPool, texts_, "text ");
        compare(*formulaPool, formulas_, "formula ");
        return faults_;
    }

private:
    void addSheet(const Sheet& sheet)
    {
        CellIterator iterator;
        iterator.start(sheet, {0, 0, LastRow, LastColumn});
        while (const Cell* cell = iterator.nextPresentCell()) {
            addValue(cell->value, "a cell");
            if (cell->value.tag != TagFormula)
                continue;
            const FormulaCell& formula = *cell->value.formula();
            const CellPosition position{static_cast<std::uint16_t>(iterator.row()),
                                        static_cast<std::uint16_t>(iterator.column()),
                                        static_cast<std::uint16_t>(sheet.index)};
            if (formula.position() != position)
                faults_ += "a formula that believes to be elsewhere\n";
            if (!isOnChain(formula))
                faults_ += "a formula off the chain\n";
        }
    }

    static bool isOnChain(const FormulaCell& formula)
    {
        return (formulaTable.link(formula.handle).flags & ChainMember) != 0;
    }

    void addBlock(const std::uint8_t* block)
    {
        if (block != nullptr)
            addCode(blockCode(block));
    }

    void addCode(const std::uint8_t* code)
    {
        for (; *code != OpReturn; code = nextInstruction(code)) {
            if (*code == OpPushText)
                addText(readOperand<std::int32_t>(code + 1), "code");
            if (*code != OpPushValue)
                continue;
            const auto value = readOperand<CellValue>(code + 1);
            addValue(value, "a program");
            if (value.tag == TagFormula && isOnChain(*value.formula()))
                faults_ += "a formula of a program on the chain\n";
        }
    }

    void addValue(const CellValue& value, const char* owner)
    {
        if (value.tag == TagText)
            addText(value.textIndex(), owner);
        if (value.tag != TagFormula)
            return;
        const FormulaCell& formula = *value.formula();
        if (!records_.insert(formula.handle).second)
            faults_ += "a record of a formula with two owners\n";
        addFormula(formula.formula, owner);
        addValue(formula.result, "a result");
    }

    void addText(std::int32_t index, const char* owner)
    {
        add(*stringPool, texts_, index, "text ", owner);
    }
    void addFormula(std::int32_t index, const char* owner)
    {
        // Cells do not own the placeholder.
        if (index != placeholderFormula || *owner == 't')
            add(*formulaPool, formulas_, index, "formula ", owner);
    }

    void add(const Pool& pool, std::vector<int>& owners, std::int32_t index, const char* kind,
             const char* owner)
    {
        if (index == -1)
            return;
        if (!pool.isLive(index))
            faults_ += kind + std::to_string(index) + " is dead, owned by " + owner + '\n';
        else
            ++owners[static_cast<std::size_t>(index)];
    }

    void compare(const Pool& pool, const std::vector<int>& owners, const char* kind)
    {
        for (std::int32_t index = 0; index < pool.slotCount(); ++index) {
            if (!pool.isLive(index))
                continue;
            const int counted = owners[static_cast<std::size_t>(index)];
            if (pool.refCount(index) != counted)
                faults_ += kind + std::to_string(index) + " has " + std::to_string(counted) +
                           " owners and counts " + std::to_string(pool.refCount(index)) + '\n';
        }
    }

    std::vector<int> texts_;
    std::vector<int> formulas_;
    std::set<FormulaHandle> records_;
    std::string faults_;
};

int liveEntries(const Pool& pool)
{
    int count = 0;
    for (std::int32_t index = 0; index < pool.slotCount(); ++index)
        count += pool.isLive(index) ? 1 : 0;
    return count;
}

} // namespace

std::string poolFaults()
{
    return OwnerCount().faults();
}

int liveTexts()
{
    return liveEntries(*stringPool);
}
int liveFormulas()
{
    return liveEntries(*formulaPool);
}

} // namespace vorn
