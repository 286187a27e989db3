#include "support/rawcells.h"

#include "core/formulacell.h"
#include "core/pool.h"

namespace vorn {
namespace {

Cell cellWith(const CellValue& value, int style)
{
    Cell cell;
    cell.value = value;
    cell.style = static_cast<std::int16_t>(style);
    return cell;
}

} // namespace

CellValue textValue(std::u16string_view text)
{
    CellValue value;
    makeTextValue(value, text);
    return value;
}

Cell blankCell(int style)
{
    return cellWith({}, style);
}
Cell numberCell(double number, int style)
{
    return cellWith(CellValue::makeNumber(number), style);
}
Cell dateCell(double serial, int style)
{
    return cellWith(CellValue::makeDate(serial), style);
}
Cell logicalCell(bool logical, int style)
{
    return cellWith(CellValue::makeLogical(logical), style);
}
Cell errorCell(int error, int style)
{
    return cellWith(CellValue::makeError(error), style);
}
Cell textCell(std::u16string_view text, int style)
{
    return cellWith(textValue(text), style);
}

Cell formulaCell(ByteCodeWriter& writer, CellPosition position, int style)
{
    return cellWith(CellValue::makeFormula(newFormulaCell(position, writer.finishInPool())), style);
}

Cell constantFormula(double number, CellPosition position, int style)
{
    ByteCodeWriter writer;
    writer.emit(OpPushNumber, number);
    return formulaCell(writer, position, style);
}

CellRef relativeTo(CellPosition base, int column, int row)
{
    const int columns = (column - base.column) & 0xff;
    return {static_cast<std::uint16_t>(row - base.row),
            static_cast<std::uint16_t>(columns | ColumnRelative | RowRelative)};
}

} // namespace vorn
