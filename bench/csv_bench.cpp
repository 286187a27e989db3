// The opening of a text file: how many of its bytes a second, and what memory a cell then takes,
// texts and all.

#include "core/workbook.h"
#include "files/openflow.h"

#include <benchmark/benchmark.h>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <malloc.h>
#include <random>
#include <string>

namespace vorn {
namespace {

constexpr int TableRows = 16000;
constexpr int TableColumns = 50;
constexpr int TableCells = TableRows * TableColumns;

using Random = std::mt19937;

// A whole number from 0 up to below `limit`.
unsigned below(Random& random, unsigned limit)
{
    return static_cast<unsigned>(random()) % limit;
}

std::string wholeField(Random& random)
{
    return std::to_string(below(random, 1'000'000));
}

std::string amountField(Random& random)
{
    return wholeField(random) + '.' + std::to_string(10 + below(random, 90));
}

std::string dateField(Random& random)
{
    const std::string month = std::to_string(1 + below(random, 12));
    const std::string day = std::to_string(1 + below(random, 28));
    return month + '/' + day + '/' + std::to_string(1990 + below(random, 40));
}

std::string wordField(Random& random)
{
    std::string word;
    for (unsigned left = 3 + below(random, 10); left != 0; --left)
        word += static_cast<char>('a' + below(random, 26));
    return word;
}

// As tables are: whole numbers, amounts, words, and now and then something else.
std::string mixedField(Random& random)
{
    switch (below(random, 16)) {
    case 0:
        return "";
    case 1:
        return dateField(random);
    case 2:
        return '"' + wordField(random) + ", and so on\"";
    case 3:
        return std::to_string(below(random, 1000)) + '%';
    case 4:
        return below(random, 2) == 0 ? "TRUE" : "FALSE";
    case 5:
    case 6:
    case 7:
    case 8:
        return wholeField(random);
    case 9:
    case 10:
    case 11:
        return amountField(random);
    default:
        return wordField(random);
    }
}

// A file in the folder for temporary ones, for as long as the object lives.
class TableFile {
public:
    explicit TableFile(std::string (*field)(Random&))
        : path_(std::filesystem::temp_directory_path() / "vorn-bench.csv")
    {
        Random random(1);
        std::ofstream stream(path_, std::ios::binary);
        for (int row = 0; row < TableRows; ++row) {
            for (int column = 0; column < TableColumns; ++column)
                stream << field(random) << (column == TableColumns - 1 ? '\n' : ',');
        }
    }
    ~TableFile()
    {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }
    TableFile(const TableFile&) = delete;
    TableFile& operator=(const TableFile&) = delete;

    std::u16string path() const { return path_.u16string(); }
    auto size() const { return static_cast<std::int64_t>(std::filesystem::file_size(path_)); }

private:
    std::filesystem::path path_;
};

std::size_t bytesInUse()
{
    const struct mallinfo2 info = ::mallinfo2();
    return info.uordblks + info.hblkhd;
}

void openText(benchmark::State& state, std::string (*field)(Random&))
{
    const TableFile file(field);
    const std::u16string path = file.path();
    std::size_t used = 0;
    for ([[maybe_unused]] auto round : state) {
        state.PauseTiming();
        NewDocument(1, FileKindNative);
        const std::size_t before = bytesInUse();
        state.ResumeTiming();
        OpenDocument(path);
        state.PauseTiming();
        used = bytesInUse() - before;
        state.ResumeTiming();
    }
    if (workbook->currentSheet->lastRow() != TableRows - 1)
        state.SkipWithError("the file was not read");
    NewDocument(1, FileKindNative);
    state.SetBytesProcessed(state.iterations() * file.size());
    state.counters["cells/s"] = benchmark::Counter(
        static_cast<double>(state.iterations()) * TableCells, benchmark::Counter::kIsRate);
    state.counters["bytes/cell"] = static_cast<double>(used) / TableCells;
}

void openMixedText(benchmark::State& state)
{
    openText(state, mixedField);
}
BENCHMARK(openMixedText)->Unit(benchmark::kMillisecond);

void openNumbers(benchmark::State& state)
{
    openText(state, wholeField);
}
BENCHMARK(openNumbers)->Unit(benchmark::kMillisecond);

void openWords(benchmark::State& state)
{
    openText(state, wordField);
}
BENCHMARK(openWords)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace vorn
