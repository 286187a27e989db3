#include "core/chain.h"
#include "core/error.h"
#include "core/pool.h"
#include "core/workbook.h"
#include "support/nativefile.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(NativeReader, takesASmallDocument)
{
    const TestDocument document;
    NativeFile file;
    file.addText(u"hello").addFormula("0c:00000000 01:0000000000000040 05 00");
    file.addSheets({u"One", u"Two"}).addTables(2);
    file.add(RecordSheetStart)
        .add(RecordRow, rowFields(2, 1, 4).addText(0, 1).addHole().addFormula(7, 0, 0));
    file.add(RecordSheetStart).add(RecordActiveSheet, Fields().add32(11).add32(0).add32(0));
    ASSERT_EQ(loadBytes(file.ended()), ErrorNone);
    const Sheet& sheet = *workbook->sheetAt(0);
    EXPECT_EQ(workbook->currentSheet, &sheet);
    EXPECT_EQ(workbook->sheets.size(), 2);
    EXPECT_EQ(sheet.cellText(1, 2), u"hello");
    EXPECT_EQ(sheet.cellInput(3, 2), u"=$A$1+2");
    EXPECT_EQ(sheet.valueOf(3, 2).number(), 7);
}

} // namespace
} // namespace vorn
