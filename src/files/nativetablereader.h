// The reader of fonts, formats and styles of a native file. Files older than version 3 count on
// formats that every document of their time had and number some of them otherwise.
//
// Errors: ErrorMemory, sticky, also for a table longer than its indices reach.
#pragma once

#include "core/style.h"
#include "files/recordcursor.h"
#include "numfmt/catalogue.h"

namespace vorn {

class NativeTableReader {
public:
    // Makes the formats that a file of an old version does not hold.
    void beginLegacy();

    void readFont(RecordCursor record);
    void readStyle(RecordCursor record);
    void readNumberFormat(RecordCursor record);
    void readDateFormat(RecordCursor record);

    // Fills what is missing of the tables of a workbook, when all records have been read, and sees
    // to it that no style names a font or a format that is not there.
    void finish();

private:
    void storeFormat(NumberFormat format);
    void migrate(CellStyle& style) const;

    bool legacy_ = false;
    int formats_ = 0; // format records read so far
    int lastDateFormat_ = LastBuiltInFormat;
};

} // namespace vorn
