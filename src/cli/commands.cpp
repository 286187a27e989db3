#include "cli/commands.h"

#include "cli/place.h"
#include "cli/utf8.h"
#include "core/chain.h"
#include "core/error.h"
#include "core/input.h"
#include "core/workbook.h"
#include "files/saveflow.h"
#include "functions/table.h"

#include <cstdio>

namespace vorn::cli {

namespace {

constexpr std::size_t ReadSize = 1 << 16;

// One line on stderr about the sticky error, which is cleared.
void reportError(Output& out, std::string_view about)
{
    std::string line = "error " + std::to_string(errorState.code) + ' ';
    appendUtf8(line, errorText(errorState.code));
    if (!about.empty())
        line += ": " + std::string(about);
    clearError();
    out.error(line);
}

bool evaluateExpression(Script& script, std::string_view expression)
{
    script.app.newWorkbook();
    std::u16string formula = fromUtf8(expression);
    if (!formula.starts_with(u'='))
        formula.insert(0, 1, u'=');
    Cell cell;
    if (!compileCellFormula(cell.value, {}, formula)) {
        reportError(script.out, {});
        return false;
    }
    workbook->currentSheet->setCell(0, 0, cell);
    recalculate();
    script.out << workbook->currentSheet->cellText(0, 0);
    script.out.endLine();
    return true;
}

// From A1 to the last row and the last column that hold anything; false for an empty sheet.
bool usedRange(const Sheet& sheet, RangeRef& out)
{
    const int lastColumn = sheet.lastOccupiedColumnOfSheet();
    int lastRow = sheet.lastRow();
    while (lastRow >= 0 && !sheet.rowHasData(lastRow))
        --lastRow;
    if (lastRow < 0 || lastColumn < 0)
        return false;
    out.set(0, 0, lastColumn + 1, lastRow + 1);
    return true;
}

// All that a stream holds; false if it cannot be read to its end.
bool readAll(std::FILE* file, std::string& out)
{
    char buffer[ReadSize];
    std::size_t count = 0;
    while ((count = std::fread(buffer, 1, sizeof buffer, file)) != 0)
        out.append(buffer, count);
    return std::ferror(file) == 0;
}

bool readFile(const std::string& path, std::string& out)
{
    if (path == "-")
        return readAll(stdin, out);
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (file == nullptr)
        return false;
    const bool complete = readAll(file, out);
    std::fclose(file);
    return complete;
}

void printFunction(Output& out, int row)
{
    const FunctionRow& function = FunctionTable[row];
    out << row << "\t" << function.name << "\t" << int{function.minArguments};
    if (function.maxArguments != function.minArguments)
        out << "-" << int{function.maxArguments};
    out << "\t" << categoryTitle(function.category) << "\t" << function.usage << "\t"
        << function.help;
    out.endLine();
}

} // namespace

int evaluateExpressions(Script& script, const std::vector<std::string>& expressions)
{
    int status = StatusDone;
    for (const std::string& expression : expressions) {
        if (!evaluateExpression(script, expression))
            status = StatusFailed;
    }
    return status;
}

int showFile(Script& script, const ShowRequest& request)
{
    script.app.OpenDocument(fromUtf8(request.file));
    if (errorStands()) {
        reportError(script.out, request.file);
        return StatusFailed;
    }
    if (!request.sheet.empty()) {
        Sheet* sheet = readSheet(fromUtf8(request.sheet));
        if (sheet == nullptr) {
            script.out.error("no sheet: '" + request.sheet + '\'');
            return StatusFailed;
        }
        workbook->setCurrentSheet(sheet);
    }
    Place place;
    place.sheet = workbook->currentSheet;
    RangeRef range;
    if (!request.range.empty()) {
        if (!readPlace(fromUtf8(request.range), place)) {
            script.out.error("no reference: '" + request.range + '\'');
            return StatusWrongCall;
        }
        range = place.range();
    } else if (!usedRange(*place.sheet, range)) {
        return StatusDone;
    }
    printCells(script.out, *place.sheet, range, request.form);
    return StatusDone;
}

int convertFile(Script& script, const ConvertRequest& request)
{
    const auto fail = [&script](const std::string& file) {
        reportError(script.out, file);
        return StatusFailed;
    };
    const std::u16string to = fromUtf8(request.to);
    if (!hasWriter(documentKind(to))) {
        raiseError(ErrorFileCreate);
        return fail(request.to);
    }
    script.app.OpenDocument(fromUtf8(request.from));
    if (errorStands())
        return fail(request.from);
    WriteFile(to);
    return errorStands() ? fail(request.to) : StatusDone;
}

int runScriptFile(Script& script, const std::string& file)
{
    std::string text;
    if (!readFile(file, text)) {
        script.out.error("cannot read the script '" + file + '\'');
        return StatusFailed;
    }
    return runScript(script, file, text) ? StatusDone : StatusWrongCall;
}

int printFunctions(Output& out, const std::string& name)
{
    if (name.empty()) {
        for (int row = 0; row < FirstActionRow; ++row)
            printFunction(out, row);
        return StatusDone;
    }
    const int row = findFunction(fromUtf8(name));
    if (row < 0 || row >= FirstActionRow) {
        out.error("no function: '" + name + '\'');
        return StatusFailed;
    }
    printFunction(out, row);
    return StatusDone;
}

} // namespace vorn::cli
