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

    // The zoom that full-screen mode has put in force, 0 for none. A sheet at that zoom is saved
    // with the one that it will come back to.
    int fullScreenZoom = 0;
};

} // namespace vorn
