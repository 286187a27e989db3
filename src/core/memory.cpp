#include "core/memory.h"

#include <cstdlib>

namespace vorn {

BlockResizer blockResizer = resizeBlock;

void* resizeBlock(void* block, std::size_t bytes)
{
    // Platforms disagree on what realloc does for zero bytes, so it is never asked.
    if (bytes != 0)
        return std::realloc(block, bytes);
    std::free(block);
    return nullptr;
}

} // namespace vorn
