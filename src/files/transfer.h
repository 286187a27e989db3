// What a reader or writer of a format is told by its caller.
#pragma once

#include <cstdint>

namespace vorn {

class Stream;

struct TransferContext {
    Stream* stream = nullptr;

    // The cell of the active sheet where the first one lands.
    std::uint16_t anchorRow = 0;
    std::uint16_t anchorColumn = 0;
};

} // namespace vorn
