// From a document to a file.
//
// A save loses nothing on its way out: the whole stream is put together in memory, and its room is
// kept free on the disk, before the first byte of the old file is written over. Then the bytes go
// straight over the old ones, and no temporary file appears beside it.
//
// Errors: the sticky code. Whatever fails, the document in memory is as it was. Up to the first
//         byte written over, the old file is too; a write that fails behind that leaves a damaged
//         file.
#pragma once

#include "files/openflow.h"

#include <cstddef>
#include <string_view>

namespace vorn {

// Can files of this kind be written?
bool hasWriter(DocumentKind kind);

// Writes the document to the path, in the format that its name asks for. Neither the document's
// path nor its modified flag is touched. `fullScreenZoom` is the zoom that full-screen mode has put
// in force, 0 for none (files/transfer.h). Of a text file nothing is written, and nothing is said.
// ErrorFileCreate for another kind without a writer, and for a path that cannot be opened to write,
// also after the folder that it names was made.
void WriteFile(std::u16string_view path, int fullScreenZoom = 0);

// The last part of it, for streams that are complete: puts these bytes in the place of what the
// file holds.
void replaceFile(std::u16string_view path, const void* bytes, std::size_t size);

} // namespace vorn
