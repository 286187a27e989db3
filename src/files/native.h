// The system's own document file, ".vn": a flat sequence of records (docs/formats/native.md). The
// tables of a stream are numbered for the stream, so that it holds only what is in use.
//
// Errors: the sticky code. The writer runs to its end whatever happens and leaves the code. After a
//         failed read the half-built workbook stands, and the caller replaces it.
#pragma once

#include "files/transfer.h"

namespace vorn {

// Writes the whole workbook to context.stream. What is too long for the largest record of the
// format raises ErrorFileWrite.
void saveNative(TransferContext& context);

// Reads a whole workbook from context.stream into a new one without sheets (NewDocument(0, ...)).
// Any bytes may be there: what is damaged ends in ErrorFileRead, where nothing more exact is known,
// and takes no more memory than a sound file of that length could. `length` is the count of bytes
// that the stream holds. The warning of a file from a newer program is shown in the midst of it,
// when the document has no sheet yet.
void loadNative(TransferContext& context, std::uint32_t length);

} // namespace vorn
