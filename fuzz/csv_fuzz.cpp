// Any bytes are a text file. The first byte chooses the code page; reading the rest must end with a
// sheet whose every cell can be shown, and with no error.

#include "core/error.h"
#include "core/workbook.h"
#include "files/csv.h"
#include "files/stream.h"
#include "machine.h"
#include "platform/files.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iterator>

namespace vorn {
namespace {

// The bytes to be read.
class FuzzFile : public File {
public:
    FuzzFile(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

    std::int64_t read(void* data, std::size_t size) override
    {
        const std::size_t left = size_ - place_;
        const std::size_t count = std::min(size, left);
        if (count != 0)
            std::memcpy(data, data_ + place_, count);
        place_ += count;
        return static_cast<std::int64_t>(count);
    }
    bool write(const void*, std::size_t) override { return false; }
    bool seek(std::uint64_t) override { return false; }
    std::int64_t size() override { return static_cast<std::int64_t>(size_); }
    bool reserve(std::uint64_t) override { return false; }
    bool cut(std::uint64_t) override { return false; }
    bool flush() override { return false; }

private:
    const std::uint8_t* data_;
    std::size_t size_;
    std::size_t place_ = 0;
};

constexpr int Pages[] = {65001, 1252, 932, 1200, 437, 54936};

void showEveryCell()
{
    std::size_t length = 0;
    CellIterator cells;
    cells.start(*workbook->currentSheet, {0, 0, LastRow, LastColumn});
    while (cells.nextOccupiedCell() != nullptr)
        length += workbook->currentSheet->cellText(cells.column(), cells.row()).size() +
                  workbook->currentSheet->cellInput(cells.column(), cells.row()).size();
    if (length > SIZE_MAX / 2 || errorStands())
        std::abort();
}

} // namespace
} // namespace vorn

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace vorn;
    static FuzzMachine machine;
    if (size == 0)
        return 0;
    NewDocument(1, FileKindNative);
    workbook->codePage = Pages[data[0] % std::size(Pages)];
    FuzzFile file(data + 1, size - 1);
    FileStream stream(file);
    TransferContext context;
    context.stream = &stream;
    ImportText(context);
    showEveryCell();
    return 0;
}
