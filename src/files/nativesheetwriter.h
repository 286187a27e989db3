// One sheet in a native file: its view, its columns, its rows with their cells, and its filter.
#pragma once

#include "files/transfer.h"

namespace vorn {

class RecordWriter;
class Sheet;

// Writes the sheet's records. The numbers of styles, texts and formulas stand.
void writeSheet(RecordWriter& records, Sheet& sheet, const TransferContext& context);

} // namespace vorn
