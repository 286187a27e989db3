// The private heap: pool entries and strings that die with the document. Closing a document
// destroys it whole, so nothing that outlives the workbook may live here, and only plain memory
// does: no destructor will run.
//
// Shape:  blocks are aligned to 8 bytes and keep their address.
// Errors: a refused allocation raises ErrorMemory and gives null.
#pragma once

#include <cstddef>
#include <string_view>

namespace vorn {

// Makes the heap, if there is none.
void createPrivateHeap();

// Frees every block at once.
void destroyPrivateHeap();

void* heapAlloc(std::size_t size);

// Grows or shrinks a block; null means heapAlloc. A refused call leaves the block as it was.
void* heapRealloc(void* block, std::size_t size);

void heapFree(void* block);

// A zero-terminated copy in the private heap; null for an empty text.
char16_t* duplicateString(std::u16string_view text);

// Bytes that the heap holds at present, over all its blocks.
std::size_t heapSize();

} // namespace vorn
