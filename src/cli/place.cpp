#include "cli/place.h"

#include "core/error.h"
#include "core/workbook.h"
#include "formula/references.h"
#include "platform/textrules.h"

namespace vorn::cli {

bool readPlace(std::u16string_view text, Place& out)
{
    CellValue reference;
    if (!parseReferenceText(text, reference)) {
        clearError();
        return false;
    }
    out.first =
        reference.tag == TagSheetCellRef ? reference.cellRef() : reference.rangeRef().first();
    out.second = reference.tag == TagSheetCellRef ? out.first : reference.rangeRef().last();
    const bool sheetNamed =
        reference.firstSheet != NoFirstSheet || reference.lastSheet != NoLastSheet;
    out.sheet = sheetNamed ? workbook->sheetAt(reference.firstSheet) : workbook->currentSheet;
    return out.sheet != nullptr;
}

Sheet* readSheet(std::u16string_view text)
{
    const int index = workbook->findSheet(text);
    if (index >= 0)
        return workbook->sheetAt(index);
    return workbook->sheetAt(readNumber(text, workbook->sheets.size()) - 1);
}

std::u16string_view takeReference(std::u16string_view& text)
{
    std::size_t end = 0;
    bool quoted = false;
    for (; end < text.size() && (quoted || text[end] != u' '); ++end)
        quoted = quoted != (text[end] == u'\'');
    const std::u16string_view reference = text.substr(0, end);
    text.remove_prefix(end < text.size() ? end + 1 : end);
    return reference;
}

std::u16string_view takeWord(std::u16string_view& text)
{
    const std::size_t end = text.find(u' ');
    const std::u16string_view word = text.substr(0, end);
    text.remove_prefix(end == std::u16string_view::npos ? text.size() : end + 1);
    return word;
}

int readNumber(std::u16string_view text, int most)
{
    int number = 0;
    for (char16_t unit : text) {
        if (!isAsciiDigit(unit))
            return 0;
        number = number * 10 + (unit - u'0');
        if (number > most)
            return 0;
    }
    return number;
}

} // namespace vorn::cli
