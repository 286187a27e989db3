#include "support/documenttext.h"

#include "core/chain.h"
#include "core/pool.h"
#include "core/workbook.h"
#include "formula/bytecode.h"
#include "support/filedrecords.h"

#include <algorithm>

namespace vorn {
namespace {

std::string number(int value)
{
    return std::to_string(value);
}

std::string flag(const char* name, bool isOn)
{
    return isOn ? std::string(" ") + name : "";
}

// Each unit in hexadecimal if there is anything but plain ASCII.
std::string quoted(std::u16string_view text)
{
    std::string quoted = "'";
    for (const char16_t unit : text) {
        if (unit >= u' ' && unit < 0x7f)
            quoted.push_back(static_cast<char>(unit));
        else
            quoted.append("\\").append(hex16(unit));
    }
    return quoted + "'";
}

std::string quoted(const char16_t* text)
{
    return text == nullptr ? "none" : quoted(std::u16string_view(text));
}

std::string range(const RangeRef& area)
{
    return number(area.firstRow) + "," + number(area.firstColumn) + ":" + number(area.lastRow) +
           "," + number(area.lastColumn);
}

// The places of entries among those that somebody owns.
std::vector<int> ranksOf(const Pool& pool)
{
    std::vector<int> ranks;
    int rank = 0;
    for (std::int32_t index = 0; index < pool.slotCount(); ++index) {
        ranks.push_back(rank);
        rank += pool.isLive(index) && pool.refCount(index) > 0 ? 1 : 0;
    }
    return ranks;
}

class DocumentText {
public:
    std::vector<std::string> lines;

    void describe();

private:
    void add(const std::string& line) { lines.push_back(line); }
    std::string code(const std::uint8_t* code) const;
    std::string text(std::int32_t index) const;
    std::string value(const CellValue& value) const;
    static std::string font(int index);
    static std::string format(int index);
    static std::string styleText(int index);
    const std::string& style(int index) const { return styles_[static_cast<std::size_t>(index)]; }

    void pools();
    void names();
    void tasks();
    void sheet(const Sheet& sheet);
    void columns(const ColumnTable& columns);
    void row(const Sheet& sheet, int row);
    void cell(const Sheet& sheet, int column, int row);
    void filter(const SheetFilter& filter);

    const std::vector<int> textRanks_ = ranksOf(*stringPool);
    const std::vector<int> codeRanks_ = ranksOf(*formulaPool);
    std::vector<std::string> styles_;
    int formulas_ = 0;
};

std::string DocumentText::text(std::int32_t index) const
{
    if (index == -1)
        return "no text";
    return "text " + number(textRanks_[static_cast<std::size_t>(index)]) + " " +
           quoted(stringPool->text(index));
}

// Instructions in hexadecimal, with texts as they read.
std::string DocumentText::code(const std::uint8_t* code) const
{
    std::string words;
    for (; *code != OpReturn; code = nextInstruction(code)) {
        words += " " + number(*code);
        if (*code == OpPushText) {
            words += " " + text(readOperand<std::int32_t>(code + 1));
            continue;
        }
        const std::string_view operand(reinterpret_cast<const char*>(code + 1),
                                       static_cast<std::size_t>(operandSize(*code)));
        words += " " + hexOf(operand);
    }
    return words;
}

std::string DocumentText::value(const CellValue& value) const
{
    switch (value.tag) {
    case TagBlank:
        return "blank";
    case TagLogical:
        return value.logical() ? "true" : "false";
    case TagError:
        return "error " + number(value.error());
    case TagText:
        return text(value.textIndex());
    case TagNumber:
        return "number " + hexDouble(value.number());
    case TagDateTime:
        return "date " + hexDouble(value.number());
    default:
        return "tag " + number(value.tag);
    }
}

std::string DocumentText::font(int index)
{
    const FontRecord& font = workbook->fonts[index];
    return "font " + number(font.reserved) + " " + number(font.underline) + " " +
           number(font.attributes) + " " + number(font.height) + " " + number(font.colour) + " " +
           number(font.weight) + " " + number(font.family) + " " + number(font.charset) + " " +
           quoted(font.face());
}

std::string DocumentText::format(int index)
{
    const NumberFormat& format = workbook->formats[index];
    std::string words = "format " + number(index) + " kind " + number(format.kind);
    if (format.kind == FormatNumber)
        words += flag("general", format.general != 0) + " " + number(format.decimals) +
                 flag("percent", format.percent != 0) + flag("thousands", format.thousands != 0) +
                 " " + quoted(format.positivePrefix) + " " + quoted(format.positiveSuffix) + " " +
                 quoted(format.negativePrefix) + " " + quoted(format.negativeSuffix);
    if (format.kind == FormatDate)
        words += " " + quoted(format.datePattern) + " " + quoted(format.timePattern);
    return words;
}

std::string DocumentText::styleText(int index)
{
    const CellStyle& style = workbook->styles[index];
    std::string words = index == 0 ? "style" : "other style";
    for (int word = 0; word < CellStyle::WordCount; ++word) {
        if (word != 1 && word != 2)
            words += " " + hex16(style.words[word]);
    }
    return words + " format " + number(style.format()) + " " + font(style.font());
}

void DocumentText::pools()
{
    for (std::int32_t index = 0; index < stringPool->slotCount(); ++index) {
        if (stringPool->isLive(index) && stringPool->refCount(index) > 0)
            add(text(index) + " owners " + number(stringPool->refCount(index)));
    }
    for (std::int32_t index = 0; index < formulaPool->slotCount(); ++index) {
        if (formulaPool->isLive(index) && formulaPool->refCount(index) > 0)
            add("code" + code(formulaPool->code(index)) + " owners " +
                number(formulaPool->refCount(index)));
    }
}

void DocumentText::names()
{
    for (const DefinedName& name : workbook->names)
        add("name " + quoted(name.name) +
            (name.block == nullptr ? " deleted" : code(blockCode(name.block))));
}

void DocumentText::tasks()
{
    for (const Task& task : workbook->tasks) {
        if (task.global != 0)
            continue;
        const RangeRef area = task.onTapArea.rangeRef();
        const bool isNowhere = task.onTapArea.tag == TagBlank;
        add("task " + quoted(task.name) + " " + quoted(task.text) + " tap " + number(task.onTap) +
            " menu " + number(task.addToMenu) + " area " + number(task.onTapArea.tag) +
            (isNowhere ? ""
                       : " " + number(task.onTapArea.firstSheet) + "-" +
                             number(task.onTapArea.lastSheet) + " " + range(area)));
    }
}

void DocumentText::columns(const ColumnTable& columns)
{
    for (int column = 0; column < columns.size(); ++column) {
        if (columns.attributes(column) == ColumnAttr{})
            continue;
        add("column " + number(column) + " width " + number(columns.columnWidth(column)) +
            " flags " + number(columns.attributes(column).flags) + " " +
            style(columns.columnStyle(column)));
    }
}

void DocumentText::cell(const Sheet& sheet, int column, int row)
{
    const Cell stored = sheet.cellCopy(column, row);
    std::string words = "cell " + number(row) + "," + number(column) + " ";
    if (stored.value.tag == TagFormula) {
        const FormulaCell& formula = *stored.value.formula();
        ++formulas_;
        const bool isAtHome = formula.row == row && formula.column == column &&
                              formula.sheet == sheet.index && formula.handle != NoFormula;
        words += std::string(isAtHome ? "formula " : "stray formula ") +
                 (formula.formula == -1
                      ? "none"
                      : number(codeRanks_[static_cast<std::size_t>(formula.formula)])) +
                 " = ";
    }
    add(words + value(resultOf(stored.value)) + " " + style(sheet.cellStyle(column, row)));
}

void DocumentText::row(const Sheet& sheet, int row)
{
    constexpr int FiledFlags = 1 << 7 | 1 << 8;
    const Row& object = *sheet.rowAt(row);
    const int last = sheet.lastPresentColumn(row);
    if (last < 0 && object.style == 0 && object.height == sheet.defaultRowHeight)
        return;
    add("row " + number(row) + " height " + number(object.height) + " flags " +
        number(object.flags & ~FiledFlags) + " " + style(object.style));
    for (int column = nextPresent(object, -1); column <= last; column = nextPresent(object, column))
        cell(sheet, column, row);
}

void DocumentText::filter(const SheetFilter& filter)
{
    if (!filter.active)
        return;
    add("filter " + range(filter.range));
    for (const FilterColumn& column : filter.columns)
        add("condition " + number(column.kind) + " " + number(column.topCount) + " " +
            number(column.largest) + " " + number(column.operator1) + " " + number(column.both) +
            " " + number(column.operator2) + " " + quoted(column.text1) + " " +
            quoted(column.text2));
}

void DocumentText::sheet(const Sheet& sheet)
{
    const Selection& selection = sheet.selection;
    add("sheet " + number(sheet.index) + " " + quoted(sheet.name()) +
        flag("protected", sheet.protectedSheet) + flag("active", workbook->currentSheet == &sheet));
    add("zoom " + number(sheet.zoom) + flag("gridlines", sheet.showGridlines) +
        flag("titles", sheet.showTitles) + flag("zeros", sheet.showZeros) +
        flag("columns frozen", sheet.titleColumns) + flag("rows frozen", sheet.titleRows) + " " +
        range(sheet.titles) + " scrolled to " + number(sheet.topRow) + "," +
        number(sheet.leftColumn));
    add("selected " + range(selection.range) + " active " + number(selection.activeRow) + "," +
        number(selection.activeColumn));
    columns(sheet.columns);
    for (int row = sheet.nextRow(-1); row < RowCount; row = sheet.nextRow(row))
        this->row(sheet, row);
    filter(sheet.filter);
}

void DocumentText::describe()
{
    for (int index = 0; index < workbook->styles.size(); ++index)
        styles_.push_back(styleText(index));
    add("code page " + number(workbook->codePage) + flag("protected", workbook->protectedWorkbook));
    const bool isUsualPalette = std::equal(std::begin(DefaultPalette), std::end(DefaultPalette),
                                           std::begin(workbook->palette));
    add(isUsualPalette ? "usual palette" : "other palette");
    pools();
    names();
    tasks();
    for (int index = 0; index < std::min<int>(workbook->fonts.size(), DefaultFontCount); ++index)
        add(font(index));
    for (int index = 0; index < workbook->formats.size(); ++index)
        add(format(index));
    add(style(0));
    for (const Sheet* each : workbook->sheets)
        sheet(*each);
    int chained = 0;
    for (const FormulaCell* each = calcChain.first(); each != nullptr; each = calcChain.next(each))
        ++chained;
    add("formulas " + number(formulas_) + " on the chain " + number(chained));
}

} // namespace

std::vector<std::string> describeDocument()
{
    DocumentText text;
    text.describe();
    return text.lines;
}

} // namespace vorn
