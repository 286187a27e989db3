// Text with separators, read into the active sheet. The text has no types: each field goes through
// the parser that typed text goes through, so numbers, dates and percents are what they are in this
// locale.
//
// Units:  a field keeps its first 1,000 characters; fields beyond the sheet are dropped.
// Errors: none by the text itself. ErrorMemory ends the reading; what was read until then stays.
#pragma once

#include "files/transfer.h"

namespace vorn {

// Reads to the end of the stream, in the workbook's code page. Fields are set apart by the locale's
// list separator, rows by line feeds. A formula stays the text that it is, and nothing is
// calculated.
void ImportText(const TransferContext& context);

} // namespace vorn
