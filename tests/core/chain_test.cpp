#include "core/chain.h"

#include "core/pool.h"
#include "core/sheet.h"
#include "core/workbook.h"
#include "support/cells.h"
#include "support/dice.h"
#include "support/rawcells.h"
#include "support/testplatform.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <numeric>
#include <random>
#include <string>
#include <tuple>
#include <vector>

namespace vorn {
namespace {

std::vector<FormulaCell*> chainOrder()
{
    std::vector<FormulaCell*> order;
    for (FormulaCell* cell = calcChain.first(); cell != nullptr; cell = calcChain.next(cell))
        order.push_back(cell);
    return order;
}

// "A1 C2 B1" for the records along the chain.
std::string chainText()
{
    std::string text;
    for (const FormulaCell* cell : chainOrder()) {
        text += text.empty() ? "" : " ";
        text += static_cast<char>('A' + cell->column);
        text += std::to_string(cell->row + 1);
    }
    return text;
}

// The formula "=first+second+..." of relative references, stored at its place.
FormulaCell* enterReading(int column, int row, const std::vector<CellRef>& cells)
{
    const CellPosition position{static_cast<std::uint16_t>(row), static_cast<std::uint16_t>(column),
                                0};
    ByteCodeWriter writer;
    writer.emit(OpPushNumber, 1.0);
    for (CellRef cell : cells) {
        writer.emit(OpPushCell, relativeTo(position, cell.column, cell.row));
        writer.emit(OpAdd);
    }
    const Cell cell = formulaCell(writer, position);
    workbook->sheetAt(0)->setCell(column, row, cell);
    return cell.value.formula();
}

class Chain : public testing::Test {
protected:
    Sheet& sheet() { return *workbook->sheetAt(0); }

    TestDocument document;
};

TEST_F(Chain, isEmptyAtFirst)
{
    EXPECT_EQ(calcChain.first(), nullptr);
    EXPECT_FALSE(calcChain.needsSort());
    calcChain.sort();
    recalculate();
    EXPECT_EQ(calcChain.first(), nullptr);
}

TEST_F(Chain, takesFormulasInTheOrderInWhichTheyAreStored)
{
    enterReading(2, 0, {});
    enterReading(0, 0, {});
    enterReading(1, 0, {});
    EXPECT_EQ(chainText(), "C1 A1 B1");
    EXPECT_TRUE(calcChain.needsSort());
    calcChain.sort();
    EXPECT_EQ(chainText(), "C1 A1 B1");
    EXPECT_FALSE(calcChain.needsSort());
}

TEST_F(Chain, bringsWhatIsReadInFront)
{
    enterReading(0, 0,
                 {
                     {0, 1}
    });
    enterReading(1, 0,
                 {
                     {0, 2}
    });
    enterReading(2, 0, {});
    calcChain.sort();
    EXPECT_EQ(chainText(), "C1 B1 A1");
    EXPECT_FALSE(calcChain.cycleFound());
}

TEST_F(Chain, bringsTheLastReadFirst)
{
    enterReading(1, 0,
                 {
                     {0, 0},
                     {1, 0},
                     {2, 0}
    });
    for (int row = 0; row < 3; ++row)
        enterReading(0, row, {});
    calcChain.sort();
    EXPECT_EQ(chainText(), "A3 A2 A1 B1");
}

TEST_F(Chain, seesThroughRanges)
{
    ByteCodeWriter writer;
    writer.emit(OpPushRange, RangeRef{0, 0, 2, 0});
    sheet().setCell(1, 0, formulaCell(writer, {0, 1, 0}));
    for (int row = 0; row < 3; ++row)
        enterReading(0, row, {});
    calcChain.sort();
    EXPECT_EQ(chainText(), "A3 A2 A1 B1");
}

TEST_F(Chain, leavesAFormulaThatReadsConstantsWhereItIs)
{
    sheet().setCell(5, 5, numberCell(1));
    enterReading(0, 0,
                 {
                     {5, 5},
                     {6, 6}
    });
    enterReading(1, 0, {});
    calcChain.sort();
    EXPECT_EQ(chainText(), "A1 B1");
}

TEST_F(Chain, notesACycleAndGoesOn)
{
    const struct {
        const char* phrase;
        std::vector<std::vector<CellRef>> reads; // of A1, B1, C1
        bool cycle;
        const char* order;
    } cases[] = {
        {"itself",            {{{0, 0}}, {}, {}},               true,  "A1 B1 C1"},
        {"two of each other", {{{0, 1}}, {{0, 0}}, {}},         true,  "A1 B1 C1"},
        {"three in a ring",   {{{0, 1}}, {{0, 2}}, {{0, 0}}},   true,  "A1 C1 B1"},
        {"no cycle",          {{{0, 1}, {0, 2}}, {{0, 2}}, {}}, false, "C1 B1 A1"},
    };
    for (const auto& c : cases) {
        NewDocument(1, FileKindNative);
        for (int column = 0; column < 3; ++column)
            enterReading(column, 0, c.reads[static_cast<std::size_t>(column)]);
        calcChain.sort();
        EXPECT_EQ(calcChain.cycleFound(), c.cycle) << c.phrase;
        EXPECT_EQ(chainText(), c.order) << c.phrase;
    }
}

TEST_F(Chain, doesNotSeeNamesDeadReferencesAndForeignSheets)
{
    const struct {
        const char* phrase;
        void (*write)(ByteCodeWriter&);
    } cases[] = {
        {"a dead cell",
         [](ByteCodeWriter& w) {
             w.emit(OpBadCell, CellRef{0, 1});
         }                                                                                             },
        {"a dead range",
         [](ByteCodeWriter& w) {
             w.emit(OpBadRange, RangeRef{0, 1, 0, 1});
         }                                                                                             },
        {"a value that is a reference",
         [](ByteCodeWriter& w) {
             w.emit(OpPushValue, CellValue::makeCellRef({0, 1}));
         }                                                                                             },
        {"a name",                      [](ByteCodeWriter& w) { w.emit(OpCallName, std::uint16_t{0}); }},
        {"a reversed range",
         [](ByteCodeWriter& w) {
             w.emit(OpPushRange, RangeRef{0, 2, 0, 1});
         }                                                                                             },
        {"another sheet",
         [](ByteCodeWriter& w) {
             const std::uint8_t image[12] = {8, 0, 1, 2, 0, 0, 1, 0};
             w.emit(OpPushSheetCell, readOperand<CellValue>(image));
         }                                                                                             },
        {"a sheet past the end",
         [](ByteCodeWriter& w) {
             const std::uint8_t image[12] = {8, 0, 200, 255, 0, 0, 1, 0};
             w.emit(OpPushSheetCell, readOperand<CellValue>(image));
         }                                                                                             },
    };
    for (const auto& c : cases) {
        NewDocument(3, FileKindNative);
        ByteCodeWriter writer;
        c.write(writer);
        sheet().setCell(0, 0, formulaCell(writer, {0, 0, 0}));
        enterReading(1, 0, {});
        calcChain.sort();
        EXPECT_EQ(chainText(), "A1 B1") << c.phrase;
    }
}

TEST_F(Chain, readsEachSheetOfAPairInEitherOrder)
{
    for (const bool reversed : {false, true}) {
        NewDocument(3, FileKindNative);
        ByteCodeWriter writer;
        std::uint8_t image[12] = {9, 0, 0, 2, 0, 0, 1, 0, 0, 0, 1, 0};
        std::swap(image[2], image[reversed ? 3 : 2]);
        writer.emit(OpPushSheetRange, readOperand<CellValue>(image));
        sheet().setCell(0, 0, formulaCell(writer, {0, 0, 0}));
        for (int index = 0; index < 3; ++index)
            workbook->sheetAt(index)->setCell(
                1, 0, constantFormula(index, {0, 1, static_cast<std::uint16_t>(index)}));
        calcChain.sort();
        std::string order;
        for (const FormulaCell* cell : chainOrder())
            order += std::to_string(cell->sheet) + (cell->column == 0 ? "A " : "B ");
        EXPECT_EQ(order, "2B 1B 0B 0A ");
    }
}

TEST_F(Chain, losesAFormulaWhoseCellIsStoredAnew)
{
    enterReading(0, 0, {});
    enterReading(1, 0, {});
    enterReading(2, 0, {});
    calcChain.sort();
    sheet().setCell(1, 0, numberCell(1));
    EXPECT_EQ(chainText(), "A1 C1");
    EXPECT_TRUE(calcChain.needsSort());
    sheet().setCell(2, 0, Cell{});
    sheet().setCell(0, 0, Cell{});
    EXPECT_EQ(calcChain.first(), nullptr);
    enterReading(0, 0, {});
    enterReading(1, 0, {});
    EXPECT_EQ(chainText(), "A1 B1");
}

TEST_F(Chain, keepsItsOrderWhenCellsMoveOrChangeTheirStyle)
{
    enterReading(0, 0, {});
    enterReading(1, 0,
                 {
                     {0, 0}
    });
    calcChain.sort();
    sheet().swapCells(0, 0, 2, 5);
    sheet().setCellStyle(1, 0, 3);
    Cell rewritten = sheet().cellCopy(1, 0);
    rewritten.style = 4;
    sheet().setCellKeepChain(1, 0, rewritten, false);
    EXPECT_FALSE(calcChain.needsSort());
    EXPECT_EQ(chainText(), "C6 B1");
}

TEST_F(Chain, appendsBehindWhatASortLeftLast)
{
    enterReading(0, 0,
                 {
                     {0, 1}
    });
    enterReading(1, 0,
                 {
                     {0, 0},
                     {0, 2}
    });
    enterReading(2, 0, {});
    calcChain.sort();
    const std::string sorted = chainText();
    enterReading(3, 0, {});
    EXPECT_EQ(chainText(), sorted + " D1");
    sheet().setCell(3, 0, Cell{});
    EXPECT_EQ(chainText(), sorted);
    enterReading(4, 0, {});
    EXPECT_EQ(chainText(), sorted + " E1");
}

TEST_F(Chain, forgetsItsRecordsWithTheDocument)
{
    enterReading(0, 0, {});
    NewDocument(1, FileKindNative);
    EXPECT_EQ(calcChain.first(), nullptr);
    EXPECT_FALSE(calcChain.needsSort());
    enterReading(1, 0, {});
    EXPECT_EQ(chainText(), "B1");
}

// --- Cost. A link that is cut leads a search astray, so whoever finds its way over a chain whose
// other links are cut has looked at nothing but the neighbours.

class CutChain : public testing::TestWithParam<int> {
protected:
    // A chain of `count` formulas in one column; the first reads the last.
    void enter(int count)
    {
        count_ = count;
        for (int index = 0; index < count; ++index) {
            const int row = index & LastRow;
            const int column = index / RowCount;
            std::vector<CellRef> reads;
            if (index == 0)
                reads.push_back({static_cast<std::uint16_t>((count - 1) & LastRow),
                                 static_cast<std::uint16_t>((count - 1) / RowCount)});
            records_.push_back(enterReading(column, row, reads));
        }
    }

    // Cuts all links but those of `record` and those of its neighbours that lead to it.
    void cut(const FormulaCell* record)
    {
        const ChainLink kept = formulaTable.link(record->handle);
        for (FormulaCell* each : records_) {
            ChainLink& link = formulaTable.link(each->handle);
            saved_.push_back(link);
            if (each == record)
                continue;
            link.next = each->handle == kept.previous ? record->handle : NoFormula;
            link.previous = each->handle == kept.next ? record->handle : NoFormula;
        }
    }

    // Puts back what was cut, and answers whether nothing else had changed meanwhile.
    bool mend(const FormulaCell* record, const ChainLink& kept)
    {
        bool untouched = true;
        for (std::size_t index = 0; index < records_.size(); ++index) {
            FormulaCell* each = records_[index];
            ChainLink& link = formulaTable.link(each->handle);
            if (each == record)
                continue;
            if (each->handle != kept.previous) {
                untouched = untouched && link.next == NoFormula;
                link.next = saved_[index].next;
            }
            if (each->handle != kept.next) {
                untouched = untouched && link.previous == NoFormula;
                link.previous = saved_[index].previous;
            }
        }
        return untouched;
    }

    TestDocument document;
    int count_ = 0;
    std::vector<FormulaCell*> records_;
    std::vector<ChainLink> saved_;
};

TEST_P(CutChain, losesARecordByLookingAtItsNeighboursOnly)
{
    enter(GetParam());
    const std::size_t middle = records_.size() / 2;
    FormulaCell* record = records_[middle];
    const ChainLink kept = formulaTable.link(record->handle);
    cut(record);
    calcChain.remove(record);
    EXPECT_TRUE(mend(record, kept));
    std::vector<FormulaCell*> expected = records_;
    expected.erase(expected.begin() + static_cast<long>(middle));
    EXPECT_EQ(chainOrder(), expected);
}

TEST_P(CutChain, takesARecordByLookingAtTheLastOnly)
{
    enter(GetParam());
    FormulaCell* last = records_.back();
    const ChainLink kept = formulaTable.link(last->handle);
    cut(last);
    const Cell cell = constantFormula(0, {0, 200, 0});
    FormulaCell* added = cell.value.formula();
    calcChain.append(added);
    EXPECT_TRUE(mend(last, kept));
    records_.push_back(added);
    EXPECT_EQ(chainOrder(), records_);
    calcChain.remove(added);
    deleteFormulaCell(added);
}

// The first formula reads the last one. With every other link cut, the sort still brings it
// forward, and ends at the first cut that it comes to.
TEST_P(CutChain, bringsARecordForwardByLookingAtItsNeighboursOnly)
{
    enter(GetParam());
    FormulaCell* last = records_.back();
    cut(last);
    calcChain.sort();
    EXPECT_EQ(chainOrder(), (std::vector<FormulaCell*>{last, records_.front()}));
}

INSTANTIATE_TEST_SUITE_P(OfAnyLength, CutChain, testing::Values(10, 100000));

// --- Order, against the plain way to do it: a list linked one way and searched from its start.

struct Reference {
    bool isCell;
    bool namesSheets;
    int firstSheet, lastSheet;
    RangeRef range;
};

struct PlainRecord {
    FormulaCell* cell = nullptr;
    std::vector<Reference> reads;
    PlainRecord* next = nullptr;
    bool scanned = false;
    bool placed = false;
};

class PlainChain {
public:
    bool cycleFound = false;

    void append(FormulaCell* cell, std::vector<Reference> reads)
    {
        auto record = std::make_unique<PlainRecord>();
        record->cell = cell;
        record->reads = std::move(reads);
        tail_->next = record.get();
        tail_ = record.get();
        places_[placeOf(*cell)] = record.get();
        records_.push_back(std::move(record));
    }

    void remove(FormulaCell* cell)
    {
        PlainRecord* before = &anchor_;
        while (before->next->cell != cell)
            before = before->next;
        if (tail_ == before->next)
            tail_ = before;
        before->next = before->next->next;
        places_.erase(placeOf(*cell));
    }

    void sort()
    {
        cycleFound = false;
        for (PlainRecord* record = anchor_.next; record != nullptr; record = record->next)
            record->scanned = record->placed = false;
        placedEnd_ = &anchor_;
        PlainRecord* cursor = anchor_.next;
        while (cursor != nullptr) {
            if (cursor->scanned) {
                cursor->placed = true;
                placedEnd_ = cursor;
                cursor = cursor->next;
                continue;
            }
            cursor->scanned = true;
            for (const Reference& reference : cursor->reads)
                scan(*cursor, reference);
            if (placedEnd_->next == cursor) {
                cursor->placed = true;
                placedEnd_ = cursor;
            }
            cursor = placedEnd_->next;
        }
        tail_ = placedEnd_;
    }

    std::vector<FormulaCell*> order() const
    {
        std::vector<FormulaCell*> cells;
        for (const PlainRecord* record = anchor_.next; record != nullptr; record = record->next)
            cells.push_back(record->cell);
        return cells;
    }

private:
    struct Place {
        int sheet, row, column;

        bool operator<(const Place& other) const
        {
            return std::tie(sheet, row, column) < std::tie(other.sheet, other.row, other.column);
        }
    };
    static Place placeOf(const FormulaCell& cell) { return {cell.sheet, cell.row, cell.column}; }

    // Sheet by sheet, row by row, from the left.
    void scan(const PlainRecord& reader, const Reference& reference)
    {
        const int first = reference.namesSheets ? reference.firstSheet : reader.cell->sheet;
        const int last = reference.namesSheets ? reference.lastSheet : reader.cell->sheet;
        for (const auto& [place, record] : places_) {
            if (place.sheet >= first && place.sheet <= last &&
                reference.range.contains(place.column, place.row))
                moveBefore(record);
        }
    }

    void moveBefore(PlainRecord* record)
    {
        if (record->placed)
            return;
        if (record->scanned)
            cycleFound = true;
        PlainRecord* before = placedEnd_;
        while (before->next != nullptr && before->next != record)
            before = before->next;
        if (before->next == nullptr)
            return;
        before->next = record->next;
        record->next = placedEnd_->next;
        placedEnd_->next = record;
    }

    PlainRecord anchor_;
    PlainRecord* tail_ = &anchor_;
    PlainRecord* placedEnd_ = &anchor_;
    std::map<Place, PlainRecord*> places_;
    std::vector<std::unique_ptr<PlainRecord>> records_;
};

// A workbook of random formulas, entered both ways.
class RandomGraph {
public:
    RandomGraph(Dice& random, int sheets, int columns, int rows)
        : random_(random), sheets_(sheets), columns_(columns), rows_(rows)
    {
    }

    PlainChain plain;

    // Stores a formula, or a constant, in a random cell.
    void enterAnywhere(int formulasInTen, int readsMost)
    {
        const CellPosition position{below(rows_), below(columns_), below(sheets_)};
        Sheet& sheet = *workbook->sheetAt(position.sheet);
        leave(position);
        if (below(10) >= formulasInTen) {
            sheet.setCell(position.column, position.row, numberCell(1));
            return;
        }
        ByteCodeWriter writer;
        std::vector<Reference> reads;
        for (int count = below(readsMost + 1); count > 0; --count)
            reads.push_back(writeReference(writer, position));
        const Cell cell = formulaCell(writer, position);
        sheet.setCell(position.column, position.row, cell);
        plain.append(cell.value.formula(), std::move(reads));
    }

    void clearAnywhere()
    {
        const CellPosition position{below(rows_), below(columns_), below(sheets_)};
        leave(position);
        workbook->sheetAt(position.sheet)->setCell(position.column, position.row, Cell{});
    }

private:
    std::uint16_t below(int limit) { return static_cast<std::uint16_t>(random_.below(limit)); }

    void leave(CellPosition position)
    {
        const Cell cell =
            workbook->sheetAt(position.sheet)->cellCopy(position.column, position.row);
        if (cell.value.tag == TagFormula)
            plain.remove(cell.value.formula());
    }

    // A corner as byte code holds it, each part relative or not.
    CellRef stored(CellPosition base, CellRef plainCell)
    {
        const CellRef relative = relativeTo(base, plainCell.column, plainCell.row);
        CellRef corner = plainCell;
        if (below(2) == 0) {
            corner.row = relative.row;
            corner.column |= RowRelative;
        }
        if (below(2) == 0)
            corner.column = static_cast<std::uint16_t>((corner.column & RowRelative) |
                                                       (relative.column & 0xff) | ColumnRelative);
        return corner;
    }

    Reference writeReference(ByteCodeWriter& writer, CellPosition base)
    {
        Reference reference{};
        reference.isCell = below(3) != 0;
        reference.namesSheets = below(3) == 0;
        const CellRef first{below(rows_), below(columns_)};
        CellRef last = first;
        if (!reference.isCell) // now and then the wrong way round: nothing is read then
            last = {below(rows_), below(columns_)};
        reference.range = {first.row, first.column, last.row, last.column};
        const CellRef storedFirst = stored(base, first);
        const CellRef storedLast = stored(base, last);
        const RangeRef storedRange{storedFirst.row, storedFirst.column, storedLast.row,
                                   storedLast.column};
        if (!reference.namesSheets) {
            if (reference.isCell)
                writer.emit(OpPushCell, storedFirst);
            else
                writer.emit(OpPushRange, storedRange);
            return reference;
        }
        // Up to one sheet too far.
        const auto [least, most] = std::minmax({below(sheets_ + 1), below(sheets_ + 1)});
        reference.firstSheet = least;
        reference.lastSheet = most;
        CellValue image;
        image.firstSheet = static_cast<std::uint8_t>(least);
        image.lastSheet = static_cast<std::uint8_t>(most);
        if (reference.isCell)
            image.put(TagSheetCellRef, storedFirst);
        else
            image.put(TagSheetRangeRef, storedRange);
        writer.emit(reference.isCell ? OpPushSheetCell : OpPushSheetRange, image);
        return reference;
    }

    Dice& random_;
    int sheets_, columns_, rows_;
};

void expectSameSort(RandomGraph& graph, int round)
{
    const bool sorts = calcChain.needsSort();
    ASSERT_EQ(chainOrder(), graph.plain.order()) << "before the sort, round " << round;
    calcChain.sort();
    if (sorts)
        graph.plain.sort();
    ASSERT_EQ(chainOrder(), graph.plain.order()) << "after the sort, round " << round;
    ASSERT_EQ(calcChain.cycleFound(), graph.plain.cycleFound) << "round " << round;
    ASSERT_FALSE(calcChain.needsSort());
    for (const FormulaCell* cell : chainOrder())
        ASSERT_EQ(formulaTable.link(cell->handle).flags,
                  std::uint32_t{ChainMember | ChainScanned | ChainPlaced});
}

TEST_F(Chain, isInTheOrderOfThePlainAlgorithmOnThousandsOfGraphs)
{
    Dice random(1606);
    int cycles = 0;
    int orders = 0;
    for (int round = 0; round < 3000; ++round) {
        NewDocument(1 + round % 4, FileKindNative);
        const int side = 2 + round % 7;
        RandomGraph graph(random, 1 + round % 4, side, side);
        const int readsMost = round % 5;
        for (int step = 0; step < 4; ++step) {
            for (int count = 0; count < side * side; ++count)
                graph.enterAnywhere(8, readsMost);
            ASSERT_NO_FATAL_FAILURE(expectSameSort(graph, round));
            cycles += calcChain.cycleFound() ? 1 : 0;
            ++orders;
            for (int count = random.below(6); count > 0; --count)
                graph.clearAnywhere();
            ASSERT_NO_FATAL_FAILURE(expectSameSort(graph, round));
        }
    }
    // The graphs are of both kinds.
    EXPECT_GT(cycles, orders / 10);
    EXPECT_LT(cycles, orders * 9 / 10);
}

TEST_F(Chain, isInTheOrderOfThePlainAlgorithmOnLargeGraphs)
{
    Dice random(6061);
    for (int round = 0; round < 6; ++round) {
        NewDocument(3, FileKindNative);
        RandomGraph graph(random, 3, 25, 25);
        for (int count = 0; count < 2500; ++count)
            graph.enterAnywhere(9, 1 + round % 2);
        ASSERT_NO_FATAL_FAILURE(expectSameSort(graph, round));
        for (int count = 0; count < 300; ++count)
            graph.clearAnywhere();
        for (int count = 0; count < 300; ++count)
            graph.enterAnywhere(5, 3);
        ASSERT_NO_FATAL_FAILURE(expectSameSort(graph, round));
    }
}

// More single references in one formula than a sort collects, and none at all.
TEST_F(Chain, readsAnyNumberOfReferences)
{
    for (int count : {0, 1, 2, 63, 64, 65, 1000}) {
        NewDocument(1, FileKindNative);
        std::vector<CellRef> reads;
        reads.reserve(static_cast<std::size_t>(count));
        for (int row = 0; row < count; ++row)
            reads.push_back({static_cast<std::uint16_t>(row), 1});
        FormulaCell* reader = enterReading(0, 0, reads);
        std::vector<FormulaCell*> expected{reader};
        for (int row = 0; row < count; ++row)
            expected.insert(expected.begin(), enterReading(1, row, {}));
        calcChain.sort();
        EXPECT_EQ(chainOrder(), expected) << count;
    }
}

// Each formula reads the one before it: there is one right order, however they were entered. With a
// search of the chain for each reference this would take days.
TEST_F(Chain, isSortedInLongChainsEnteredInAnyOrder)
{
    constexpr int count = 100000;
    for (const int way : {0, 1, 2}) {
        NewDocument(1, FileKindNative);
        std::vector<int> entered(count);
        std::iota(entered.begin(), entered.end(), 0);
        if (way == 1)
            std::reverse(entered.begin(), entered.end());
        if (way == 2)
            std::shuffle(entered.begin(), entered.end(), std::mt19937(3));
        for (int index : entered) {
            std::vector<CellRef> reads;
            if (index > 0)
                reads.push_back({static_cast<std::uint16_t>((index - 1) & LastRow),
                                 static_cast<std::uint16_t>((index - 1) / RowCount)});
            enterReading(index / RowCount, index & LastRow, reads);
        }
        calcChain.sort();
        int expected = 0;
        for (const FormulaCell* cell : chainOrder()) {
            ASSERT_EQ(cell->column * RowCount + cell->row, expected) << way;
            ++expected;
        }
        EXPECT_EQ(expected, count);
        EXPECT_FALSE(calcChain.cycleFound());
    }
}

// --- Recalculation

double resultAt(int column, int row)
{
    return workbook->sheetAt(0)->valueOf(column, row).number();
}

TEST_F(Chain, calculatesEachFormulaOnceBehindWhatItReads)
{
    enterReading(0, 0,
                 {
                     {0, 1}
    });
    enterReading(1, 0,
                 {
                     {0, 2}
    });
    enterReading(2, 0,
                 {
                     {5, 5}
    });
    sheet().setCell(5, 5, numberCell(10));
    recalculate();
    EXPECT_EQ(resultAt(2, 0), 11);
    EXPECT_EQ(resultAt(1, 0), 12);
    EXPECT_EQ(resultAt(0, 0), 13);
    sheet().setCell(5, 5, numberCell(20));
    EXPECT_FALSE(calcChain.needsSort());
    recalculate();
    EXPECT_EQ(resultAt(0, 0), 23);
}

TEST_F(Chain, changesACycleWithEveryPass)
{
    enterReading(0, 0,
                 {
                     {0, 0}
    });
    recalculate();
    EXPECT_EQ(resultAt(0, 0), 1);
    recalculate();
    EXPECT_EQ(resultAt(0, 0), 2);

    enterReading(3, 0,
                 {
                     {0, 4}
    });
    enterReading(4, 0,
                 {
                     {0, 3}
    });
    recalculate();
    const double first = resultAt(3, 0);
    const double second = resultAt(4, 0);
    recalculate();
    EXPECT_EQ(resultAt(3, 0), first + 2);
    EXPECT_EQ(resultAt(4, 0), second + 2);
}

TEST_F(Chain, leavesTheStickyErrorAsItWas)
{
    ByteCodeWriter writer;
    writer.emit(OpPushNumber, 1.0);
    writer.emit(OpPushNumber, 0.0);
    writer.emit(OpDivide);
    sheet().setCell(0, 0, formulaCell(writer, {0, 0, 0}));
    for (int code : {int{ErrorNone}, int{ErrorFileRead}}) {
        errorState = {code, 77, 0};
        recalculate();
        EXPECT_EQ(errorState.code, code);
        EXPECT_EQ(errorState.reserved, 77);
        EXPECT_EQ(errorState.showMessages, 0);
        EXPECT_EQ(describe(sheet().valueOf(0, 0)), "!!Div0");
    }
    errorState = {};
}

// A text that is no number makes the input parser wipe the sticky error on its way.
TEST_F(Chain, keepsTheStickyErrorWhateverAFormulaDoes)
{
    ByteCodeWriter writer;
    writer.emit(OpPushText, stringPool->addText(u"1e999"));
    writer.emit(OpPushNumber, 1.0);
    writer.emit(OpAdd);
    sheet().setCell(0, 0, formulaCell(writer, {0, 0, 0}));
    raiseError(ErrorFileRead);
    recalculate();
    EXPECT_EQ(errorState.code, ErrorFileRead);
    EXPECT_EQ(describe(sheet().valueOf(0, 0)), "!!Val");
}

TEST_F(Chain, showsWhatANameReadsOnePassLate)
{
    // B1 reads A1 by name and stands before it, so it sees A1 as of the pass before.
    ByteCodeWriter definition;
    definition.emit(OpPushCell, CellRef{0, 0});
    ASSERT_TRUE(workbook->names.append({nullptr, definition.finish(), -1}));
    ByteCodeWriter writer;
    writer.emit(OpCallName, std::uint16_t{0});
    sheet().setCell(1, 0, formulaCell(writer, {0, 1, 0}));
    enterReading(0, 0,
                 {
                     {9, 9}
    });
    recalculate();
    EXPECT_EQ(describe(sheet().valueOf(1, 0)), "blank");
    recalculate();
    EXPECT_EQ(describe(sheet().valueOf(1, 0)), "1");
}

} // namespace
} // namespace vorn
