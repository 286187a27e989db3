// Saving and opening native files, beside writing and reading the same bytes with one plain call:
// megabytes a second, and how many times as long as the plain copy it takes.

#include "core/error.h"
#include "core/workbook.h"
#include "files/native.h"
#include "files/stream.h"
#include "formula/bytecode.h"
#include "platform/files.h"
#include "platform/platform.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <ctime>
#include <filesystem>
#include <memory>
#include <random>
#include <string>

namespace vorn {
namespace {

constexpr int TableRows = 16000;
constexpr int MixedColumns = 50;
constexpr int FormulaColumns = 20;

using Random = std::mt19937;

int below(Random& random, unsigned limit)
{
    return static_cast<int>(static_cast<unsigned>(random()) % limit);
}

CellValue wordValue(Random& random)
{
    char16_t word[12];
    const int length = 3 + below(random, 10);
    for (int index = 0; index < length; ++index)
        word[index] = static_cast<char16_t>(u'a' + below(random, 26));
    CellValue value;
    makeTextValue(value, {word, static_cast<std::size_t>(length)});
    return value;
}

// As tables are: whole numbers, amounts, words, and now and then something else.
Cell mixedCell(Random& random)
{
    Cell cell;
    const int kind = below(random, 16);
    if (kind == 1)
        cell.value = CellValue::makeDate(30000 + below(random, 10000));
    else if (kind == 2)
        cell.value = CellValue::makeLogical(below(random, 2) == 0);
    else if (kind <= 7)
        cell.value = CellValue::makeNumber(below(random, 1'000'000));
    else if (kind <= 10)
        cell.value = CellValue::makeNumber(below(random, 100'000'000) / 100.0);
    else
        cell.value = wordValue(random);
    return kind == 0 ? Cell{} : cell;
}

void fillMixed()
{
    Random random(1);
    for (int row = 0; row < TableRows; ++row) {
        for (int column = 0; column < MixedColumns; ++column)
            workbook->currentSheet->setCell(column, row, mixedCell(random));
    }
}

// =A1*2+B1 and so on, each with code of its own, as typed formulas have.
void fillFormulas()
{
    for (int row = 0; row < TableRows; ++row) {
        for (int column = 0; column < FormulaColumns; ++column) {
            ByteCodeWriter writer;
            writer.emit(OpPushCell, CellRef{0, RowRelative});
            writer.emit(OpPushNumber, 2.0);
            writer.emit(OpMultiply);
            writer.emit(OpPushCell, CellRef{0, RowRelative | 1});
            writer.emit(OpAdd);
            const CellPosition place{static_cast<std::uint16_t>(row),
                                     static_cast<std::uint16_t>(column + 2), 0};
            FormulaCell* formula = newFormulaCell(place, writer.finishInPool());
            formula->result = CellValue::makeNumber(row * column);
            Cell cell;
            cell.value = CellValue::makeFormula(formula);
            workbook->currentSheet->setCell(column + 2, row, cell);
        }
    }
}

// Seconds that the processor has worked for the program: neighbours on the machine do not count.
double workedSeconds()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

// A file in the folder for temporary ones, for as long as the object lives.
class BenchFile {
public:
    ~BenchFile()
    {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }

    std::u16string path() const { return path_.u16string(); }

    bool write(const void* bytes, std::size_t size) const
    {
        const std::unique_ptr<File> file = platform.files->create(path());
        return file != nullptr && file->write(bytes, size);
    }

    bool read(void* bytes, std::size_t size) const
    {
        const std::unique_ptr<File> file = platform.files->openToRead(path());
        return file != nullptr && file->read(bytes, size) == static_cast<std::int64_t>(size);
    }

private:
    std::filesystem::path path_ = std::filesystem::temp_directory_path() / "vorn-bench.vn";
};

void saveToMemory(MemoryStream& stream)
{
    TransferContext context;
    context.stream = &stream;
    saveNative(context);
}

bool load(const BenchFile& bench)
{
    const std::unique_ptr<File> file = platform.files->openToRead(bench.path());
    if (file == nullptr)
        return false;
    FileStream stream(*file);
    TransferContext context;
    context.stream = &stream;
    loadNative(context, static_cast<std::uint32_t>(file->size()));
    return !errorStands();
}

// The time of plain copies and of what is measured, which take turns, so that both see the same
// machine.
struct Turns {
    double plain = 0;
    double measured = 0;

    void report(benchmark::State& state, std::uint32_t bytes) const
    {
        const double megabytes = static_cast<double>(state.iterations()) * bytes / 1e6;
        state.counters["MB"] = bytes / 1e6;
        state.counters["MB/s"] = megabytes / measured;
        state.counters["plain MB/s"] = megabytes / plain;
        state.counters["times"] = measured / plain;
    }
};

// A document that is filled, and the bytes of its file.
void fillDocument(void (*fill)(), MemoryStream& sample)
{
    NewDocument(1, FileKindNative);
    fill();
    saveToMemory(sample);
}

void saveDocument(benchmark::State& state, void (*fill)())
{
    MemoryStream sample(MemoryStream::GrowsByHalf);
    fillDocument(fill, sample);
    const BenchFile file;
    Turns turns;
    for ([[maybe_unused]] auto round : state) {
        const double start = workedSeconds();
        bool done = file.write(sample.data(), sample.end());
        const double between = workedSeconds();
        MemoryStream stream(MemoryStream::GrowsByHalf);
        saveToMemory(stream);
        done = done && file.write(stream.data(), stream.end());
        const double end = workedSeconds();
        turns.plain += between - start;
        turns.measured += end - between;
        state.SetIterationTime(end - between);
        if (!done || errorStands())
            state.SkipWithError("the document was not saved");
    }
    turns.report(state, sample.end());
    NewDocument(NewDocumentSheets, FileKindNative);
}

// The document that stood before is not a part of it.
void openDocument(benchmark::State& state, void (*fill)())
{
    MemoryStream sample(MemoryStream::GrowsByHalf);
    fillDocument(fill, sample);
    const BenchFile file;
    bool done = file.write(sample.data(), sample.end());
    Turns turns;
    for ([[maybe_unused]] auto round : state) {
        NewDocument(0, FileKindNative);
        const double start = workedSeconds();
        const auto block = std::make_unique_for_overwrite<std::uint8_t[]>(sample.end());
        done = done && file.read(block.get(), sample.end());
        const double between = workedSeconds();
        done = done && load(file);
        const double end = workedSeconds();
        turns.plain += between - start;
        turns.measured += end - between;
        state.SetIterationTime(end - between);
        if (!done)
            state.SkipWithError("the document was not opened");
    }
    turns.report(state, sample.end());
    if (workbook->sheets.size() != 1 || workbook->currentSheet->lastRow() != TableRows - 1)
        state.SkipWithError("the document is not the one that was saved");
    NewDocument(NewDocumentSheets, FileKindNative);
}

void saveMixedCells(benchmark::State& state)
{
    saveDocument(state, fillMixed);
}
BENCHMARK(saveMixedCells)->Unit(benchmark::kMillisecond)->UseManualTime();

void saveFormulas(benchmark::State& state)
{
    saveDocument(state, fillFormulas);
}
BENCHMARK(saveFormulas)->Unit(benchmark::kMillisecond)->UseManualTime();

void openMixedCells(benchmark::State& state)
{
    openDocument(state, fillMixed);
}
BENCHMARK(openMixedCells)->Unit(benchmark::kMillisecond)->UseManualTime();

void openFormulas(benchmark::State& state)
{
    openDocument(state, fillFormulas);
}
BENCHMARK(openFormulas)->Unit(benchmark::kMillisecond)->UseManualTime();

} // namespace
} // namespace vorn
