// A sheet whose columns are 50 pixels wide and whose rows are 20 high, and the operations that
// paint it. A character of its font is 7 wide.
#pragma once

#include "core/workbook.h"
#include "formula/references.h"
#include "platform/headless/recordingcanvas.h"
#include "shell/cellpaint.h"
#include "support/cells.h"

#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace vorn {

class PaintedSheet : public testing::Test {
protected:
    // Five columns and five rows, from A1 on as long as nothing scrolls.
    static constexpr Rect Area = {0, 0, 250, 100};

    PaintedSheet()
    {
        sheet.columns.setDefaultWidth(1826);
        sheet.defaultRowHeight = 300;
    }

    static RangeRef place(std::string_view name)
    {
        const std::size_t colon = name.find(':');
        if (colon != std::string_view::npos)
            return sortedRange(place(name.substr(0, colon)).first(),
                               place(name.substr(colon + 1)).first());
        CellValue value;
        EXPECT_TRUE(parseReferenceText(std::u16string(name.begin(), name.end()), value)) << name;
        return {value.cellRef().row, value.cellRef().column, value.cellRef().row,
                value.cellRef().column};
    }

    // Gives the cells of a range these fields, besides what they have.
    using Fields = std::initializer_list<std::pair<StyleField, int>>;
    void style(std::string_view where, Fields fields)
    {
        const RangeRef range = place(where);
        for (int row = range.firstRow; row <= range.lastRow; ++row) {
            for (int column = range.firstColumn; column <= range.lastColumn; ++column)
                sheet.setCellStyle(column, row, styled(sheet.cellStyle(column, row), fields));
        }
    }
    static int styled(int index, Fields fields)
    {
        CellStyle changed = workbook->styles[index];
        for (const auto& [field, value] : fields)
            changed.set(field, value);
        return workbook->addStyle(changed);
    }

    void freeze(std::string_view titles, bool columns, bool rows)
    {
        sheet.titles = place(titles);
        sheet.titleColumns = columns;
        sheet.titleRows = rows;
    }
    void width(int column, int pixels)
    {
        sheet.columns.setColumnWidth(column, column, (pixels * 73 + 1) / 2);
    }

    // What is painted of a part of the area; all clips have to be taken back.
    RecordingCanvas painted(const Rect& clip = Area) const
    {
        RecordingCanvas canvas;
        paintPanes(canvas, GridView(Area, sheet), clip);
        EXPECT_TRUE(canvas.isBalanced());
        return canvas;
    }

    // Texts without what they mostly have in common: `2,0-48,19 "abc" left bottom`.
    std::vector<std::string> texts(const Rect& clip = Area) const
    {
        std::vector<std::string> found = painted(clip).having("text ");
        for (std::string& text : found) {
            text.erase(0, 5);
            const std::size_t look = text.find(" Tahoma 14 000000");
            if (look != std::string::npos)
                text.erase(look, 17);
        }
        return found;
    }

    Cells cells;
    Sheet& sheet = *workbook->currentSheet;
};

using Lines = std::vector<std::string>;

} // namespace vorn
