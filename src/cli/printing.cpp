#include "cli/printing.h"

#include "cli/output.h"
#include "core/value.h"
#include "core/workbook.h"
#include "formula/references.h"

#include <charconv>
#include <cmath>

namespace vorn::cli {

namespace {

constexpr int TwipsPerPoint = 20;

// Digits in front of the point up to which a number is written out.
constexpr int PlainDigits = 17;
constexpr int LeastPlainExponent = -5;

void printValue(Output& out, const CellValue& value)
{
    switch (value.tag) {
    case TagBlank:
        out << "blank";
        break;
    case TagLogical:
        out << "logical " << (value.logical() ? "true" : "false");
        break;
    case TagError:
        out << "error " << value.error() << " " << cellErrorText(value.error());
        break;
    case TagText:
        out << "text " << valueTextPointer(value);
        break;
    case TagNumber:
        out << "number " << numberDigits(value.number());
        break;
    case TagDateTime:
        out << "date " << numberDigits(value.number());
        break;
    default:
        break;
    }
}

template <typename Print>
void forEachCell(Output& out, const RangeRef& range, Print print)
{
    for (int row = range.firstRow; row <= range.lastRow; ++row) {
        for (int column = range.firstColumn; column <= range.lastColumn; ++column) {
            out << cellRefToText(column, row, RelativeForm) << " ";
            print(column, row);
            out.endLine();
        }
    }
}

void printTexts(Output& out, const Sheet& sheet, const RangeRef& range,
                std::u16string (Sheet::*text)(int, int) const)
{
    for (int row = range.firstRow; row <= range.lastRow; ++row) {
        for (int column = range.firstColumn; column <= range.lastColumn; ++column) {
            if (column != range.firstColumn)
                out << "\t";
            out << (sheet.*text)(column, row);
        }
        out.endLine();
    }
}

void printFont(Output& out, const FontRecord& font)
{
    const auto attribute = [&font](FontAttribute bit) {
        return (font.attributes & bit) != 0 ? 1 : 0;
    };
    out << "font=";
    out.quoted(font.face());
    out << " size=" << numberDigits(static_cast<double>(font.height) / TwipsPerPoint)
        << " bold=" << (font.weight == WeightBold ? 1 : 0) << " italic=" << attribute(FontItalic)
        << " underline=" << int{font.underline} << " strikeout=" << attribute(FontStrikeout)
        << " colour=" << int{font.colour};
}

void printStyle(Output& out, const CellStyle& style)
{
    static constexpr struct {
        std::string_view name;
        StyleField field;
    } fields[] = {
        {" fill=",    StyleFill      },
        {" pattern=", StylePattern   },
        {" halign=",  StyleHorizontal},
        {" valign=",  StyleVertical  },
        {" wrap=",    StyleWrap      },
        {" top=",     StyleTopLine   },
        {" left=",    StyleLeftLine  },
        {" bottom=",  StyleBottomLine},
        {" right=",   StyleRightLine },
        {" locked=",  StyleLocked    },
        {" hidden=",  StyleHidden    },
    };
    out << "format=" << style.format() << " ";
    printFont(out, workbook->fonts[style.font()]);
    for (const auto& field : fields)
        out << field.name << style.get(field.field);
}

void printFormat(Output& out, const NumberFormat& format)
{
    const auto field = [&out](std::string_view name, const char16_t* text) {
        out << " " << name << "=";
        out.quoted(formatString(text));
    };
    out << " kind=" << int{format.kind};
    if (format.kind == FormatNumber) {
        out << " general=" << format.general << " decimals=" << int{format.decimals}
            << " percent=" << int{format.percent} << " thousands=" << int{format.thousands};
        field("positivePrefix", format.positivePrefix);
        field("positiveSuffix", format.positiveSuffix);
        field("negativePrefix", format.negativePrefix);
        field("negativeSuffix", format.negativeSuffix);
    } else if (format.kind == FormatDate) {
        field("date", format.datePattern);
        field("time", format.timePattern);
    }
}

} // namespace

void printCells(Output& out, const Sheet& sheet, const RangeRef& range, CellForm form)
{
    switch (form) {
    case CellForm::Text:
        printTexts(out, sheet, range, &Sheet::cellText);
        break;
    case CellForm::Input:
        printTexts(out, sheet, range, &Sheet::cellInput);
        break;
    case CellForm::Value:
        forEachCell(out, range,
                    [&](int column, int row) { printValue(out, sheet.valueOf(column, row)); });
        break;
    }
}

void printStyles(Output& out, const Sheet& sheet, const RangeRef& range)
{
    forEachCell(out, range, [&](int column, int row) {
        printStyle(out, workbook->styles[sheet.cellStyle(column, row)]);
    });
}

void printFormats(Output& out)
{
    for (int index = 0; index < workbook->formats.size(); ++index) {
        out << index;
        printFormat(out, workbook->formats[index]);
        out.endLine();
    }
}

void printRow(Output& out, const Sheet& sheet, int row)
{
    out << "height=" << sheet.rowHeight(row) << " hidden=" << (sheet.rowHidden(row) ? 1 : 0)
        << " custom=" << (sheet.rowHasCustomHeight(row) ? 1 : 0)
        << " style=" << sheet.rowStyle(row);
    out.endLine();
}

void printColumns(Output& out, const Sheet& sheet, const RangeRef& range)
{
    for (int column = range.firstColumn; column <= range.lastColumn; ++column) {
        out << "width=" << sheet.columns.columnWidth(column)
            << " hidden=" << (sheet.columns.columnHidden(column) ? 1 : 0)
            << " style=" << sheet.columns.columnStyle(column);
        out.endLine();
    }
}

void printSheets(Output& out)
{
    for (const Sheet* sheet : workbook->sheets) {
        out << (sheet == workbook->currentSheet ? "*" : " ") << sheet->name();
        out.endLine();
    }
}

void printSelection(Output& out)
{
    const Sheet& sheet = *workbook->currentSheet;
    const Selection& selection = sheet.selection;
    out << sheet.name() << "!" << rangeToText(selection.range, RelativeForm) << " active "
        << cellRefToText(selection.activeColumn, selection.activeRow, RelativeForm);
    out.endLine();
}

void printDocument(Output& out, std::u16string_view title)
{
    out << "path=";
    out.quoted(workbook->path);
    out << " title=";
    out.quoted(title);
    out << " modified=" << (workbook->modified ? 1 : 0) << " kind=" << int{workbook->fileKind}
        << " protected=" << (workbook->protectedWorkbook ? 1 : 0);
    out.endLine();
}

void printRecentFiles(Output& out, std::span<const std::u16string> files)
{
    for (const std::u16string& file : files) {
        if (file.empty())
            continue;
        out << file;
        out.endLine();
    }
}

std::string numberDigits(double number)
{
    if (std::isnan(number))
        return "nan";
    char text[400];
    const auto written = [&text](std::to_chars_result result) {
        return std::string(text, result.ptr);
    };
    std::string digits =
        written(std::to_chars(text, text + sizeof text, number, std::chars_format::scientific));
    const std::size_t exponentAt = digits.find('e');
    if (exponentAt == std::string::npos) // an infinity
        return digits;
    const int exponent = std::stoi(digits.substr(exponentAt + 1));
    if (exponent < LeastPlainExponent + 1 || exponent >= PlainDigits)
        return digits;
    return written(std::to_chars(text, text + sizeof text, number, std::chars_format::fixed));
}

} // namespace vorn::cli
