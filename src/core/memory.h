// The general allocator, as one function that a test can replace to refuse any single allocation.
// Everything that grows with a document comes through here or through the private heap above it.
#pragma once

#include <cstddef>

namespace vorn {

// Makes `block` (null: a new one) `bytes` long; 0 bytes frees it. Returns null, with the block as
// it was, when memory is short.
using BlockResizer = void* (*)(void* block, std::size_t bytes);

void* resizeBlock(void* block, std::size_t bytes);

// The allocator in force. Only tests set it.
extern BlockResizer blockResizer;

} // namespace vorn
