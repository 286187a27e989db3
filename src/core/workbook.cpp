#include "core/workbook.h"

#include "core/chain.h"
#include "core/heap.h"
#include "core/pool.h"
#include "formula/bytecode.h"
#include "formula/machine.h"
#include "numfmt/locale.h"
#include "platform/codepages.h"
#include "platform/platform.h"
#include "platform/textrules.h"

#include <algorithm>
#include <new>

namespace vorn {

Workbook* workbook = nullptr;
void (*beforeCloseDocument)() = nullptr;

const std::uint32_t DefaultPalette[PaletteSize] = {
    0x000000, 0xFFFFFF, 0x0000FF, 0x00FF00, 0xFF0000, 0x00FFFF, 0xFF00FF, 0xFFFF00,
    0x000080, 0x008000, 0x800000, 0x008080, 0x800080, 0x808000, 0xC0C0C0, 0x808080,
    0xFF8080, 0x602080, 0xC0FFFF, 0xE0E0A0, 0x800060, 0x8080FF, 0xC08000, 0xFFC0C0,
    0x800000, 0xFF00FF, 0x00FFFF, 0xFFFF00, 0x800080, 0x000080, 0x808000, 0xFF0000,
    0xFFCC00, 0xFFFF69, 0xCCFFCC, 0x99FFFF, 0xF0CAA6, 0xCC99CC, 0xFF99CC, 0xDDDDDD,
    0xFF6633, 0xCCCC33, 0x339933, 0x339999, 0x336699, 0x666699, 0x996666, 0x969696,
    0xCC3333, 0x666633, 0x003300, 0x003333, 0x003366, 0x663399, 0x993333, 0x424242};

namespace {

bool sameName(std::u16string_view a, std::u16string_view b)
{
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(),
                      [](char16_t x, char16_t y) { return lowerUnit(x) == lowerUnit(y); });
}

template <typename Record>
int findByName(const GrowArray<Record>& table, std::u16string_view name)
{
    for (int index = 0; index < table.size(); ++index) {
        if (table[index].name != nullptr && sameName(table[index].name, name))
            return index;
    }
    return -1;
}

// The index of a record equal to this one, else of a new copy, at most `greatest`; 0, with
// ErrorMemory, where there is no room for one.
template <typename Record>
int findOrAppend(GrowArray<Record>& table, const Record& record, int greatest)
{
    for (int index = 0; index < table.size(); ++index) {
        if (table[index].sameAs(record))
            return index;
    }
    if (table.size() > greatest) {
        raiseError(ErrorMemory);
        return 0;
    }
    return table.append(record) ? table.size() - 1 : 0;
}

} // namespace

Workbook::Workbook() : codePage(platform.codePages->systemPage())
{
    workbook = this;
    resetMachine();
    calcChain.reset();
    std::copy(std::begin(DefaultPalette), std::end(DefaultPalette), palette);
}

Workbook::~Workbook()
{
    for (Task& task : tasks) {
        heapFree(task.name);
        heapFree(task.text);
    }
    for (TaskVariable& variable : variables) {
        heapFree(variable.name);
        releaseValue(variable.value);
    }
    for (DefinedName& name : names) {
        heapFree(name.name);
        if (name.block != nullptr)
            releaseByteCodeReferences(blockCode(name.block));
        heapFree(name.block);
    }
    for (Sheet* sheet : sheets)
        delete sheet;
    for (NumberFormat& format : formats)
        freeFormatStrings(format);
    workbook = nullptr;
}

bool Workbook::initNew(int sheetCount)
{
    if (sheetCount < 1)
        return true;
    for (int count = 0; count < sheetCount; ++count)
        addSheet();
    currentSheet = sheetAt(0);
    buildFormats(formats);
    lastBuiltInFormat = LastBuiltInFormat;
    for (int index = 0; index < DefaultFontCount; ++index)
        fonts.append(defaultFont(index));
    styles.append(defaultStyle());
    return errorState.code != ErrorMemory;
}

std::u16string Workbook::defaultSheetName()
{
    const std::string digits = std::to_string(nextSheetNumber++);
    return u"Sheet" + std::u16string(digits.begin(), digits.end());
}

void Workbook::continueSheetNumbers()
{
    constexpr std::u16string_view Prefix = u"Sheet";
    constexpr std::size_t DigitsMax = 5;
    for (const Sheet* sheet : sheets) {
        const std::u16string_view name = sheet->name();
        if (!name.starts_with(Prefix) || name.size() > Prefix.size() + DigitsMax)
            continue;
        int number = 0;
        for (const char16_t digit : name.substr(Prefix.size()))
            number = isAsciiDigit(digit) && number >= 0 ? number * 10 + (digit - u'0') : -1;
        nextSheetNumber = std::max(nextSheetNumber, number + 1);
    }
}

Task* Workbook::addTask(char16_t* name, char16_t* text)
{
    Task task;
    task.name = name;
    task.text = text;
    return tasks.append(task) ? &tasks[tasks.size() - 1] : nullptr;
}

bool Workbook::anyLocalTask() const
{
    return std::any_of(tasks.begin(), tasks.end(), [](const Task& task) { return !task.global; });
}

Sheet* Workbook::addSheet(std::u16string_view name)
{
    auto* sheet = new (std::nothrow)
        Sheet(sheets.size(), name.empty() ? defaultSheetName() : std::u16string(name));
    if (sheet == nullptr) {
        raiseError(ErrorMemory);
        return nullptr;
    }
    if (!sheets.append(sheet)) {
        delete sheet;
        return nullptr;
    }
    return sheet;
}

namespace {

// What the removal of a sheet does to the sheet pair of one reference. One that named only that
// sheet becomes its dead form, of the same length.
void dropSheetFromReference(std::uint8_t* instruction, int index)
{
    std::uint8_t& first = instruction[3];
    std::uint8_t& last = instruction[4];
    int newFirst = first;
    int newLast = last;
    if (newFirst > index)
        --newFirst;
    if (newLast >= index)
        --newLast;
    if (newFirst > newLast) {
        *instruction = *instruction == OpPushSheetCell ? OpBadSheetCell : OpBadSheetRange;
        return;
    }
    first = static_cast<std::uint8_t>(newFirst);
    last = static_cast<std::uint8_t>(newLast);
}

void dropSheetFromFormulas(int index)
{
    formulaPool->beginScan();
    for (std::int32_t entry = 0; entry < formulaPool->slotCount(); ++entry) {
        if (!formulaPool->slotIsLive(entry))
            continue;
        std::uint8_t* instruction = formulaPool->code(entry);
        for (; *instruction != OpReturn; instruction = nextInstruction(instruction)) {
            if (*instruction == OpPushSheetCell || *instruction == OpPushSheetRange)
                dropSheetFromReference(instruction, index);
        }
    }
    formulaPool->endScan();
}

} // namespace

void Workbook::removeSheet(int index)
{
    if (index < 0 || index >= sheets.size())
        return;
    delete sheets[index];
    sheets.removeAt(index);
    for (int each = index; each < sheets.size(); ++each)
        sheets[each]->index = each;
    for (FormulaCell* cell = calcChain.first(); cell != nullptr; cell = calcChain.next(cell)) {
        if (cell->sheet >= index)
            --cell->sheet;
    }
    dropSheetFromFormulas(index);
    currentSheet = sheetAt(0);
}

bool Workbook::renameSheet(int index, std::u16string_view name)
{
    for (const Sheet* sheet : sheets) {
        if (sheet->index != index && sameName(sheet->name(), name))
            return false;
    }
    if (Sheet* sheet = sheetAt(index))
        sheet->setName(name);
    return true;
}

int Workbook::findSheet(std::u16string_view name) const
{
    for (const Sheet* sheet : sheets) {
        if (sameName(sheet->name(), name))
            return sheet->index;
    }
    return -1;
}

int Workbook::findName(std::u16string_view name) const
{
    return findByName(names, name);
}
int Workbook::findVariable(std::u16string_view name) const
{
    return findByName(variables, name);
}

int Workbook::addFont(const FontRecord& font)
{
    // A style holds its font in 16 bits.
    return findOrAppend(fonts, font, UINT16_MAX);
}

int Workbook::addStyle(const CellStyle& style)
{
    // A cell's style index has 15 bits.
    return findOrAppend(styles, style, INT16_MAX);
}

int Workbook::setFormat(const NumberFormat& record, int index)
{
    if (index == -1) {
        for (int each = 0; each < formats.size(); ++each) {
            if (equalFormats(formats[each], record))
                return each;
        }
        index = formats.size();
    }
    if (index >= formats.size()) {
        const int oldSize = formats.size();
        if (!formats.resize(index + 1))
            return oldSize;
    } else {
        freeFormatStrings(formats[index]);
    }
    formats[index] = record;
    return index;
}

bool Workbook::removeFormat(int index)
{
    if (!isUserFormat(index) || index >= formats.size())
        return false;
    for (CellStyle& style : styles) {
        if (style.format() == index)
            style.set(StyleFormat, FormatIndexGeneral);
        else if (style.format() > index)
            style.set(StyleFormat, style.format() - 1);
    }
    freeFormatStrings(formats[index]);
    formats.removeAt(index);
    return true;
}

void Workbook::normaliseFonts()
{
    if (fonts.size() == 0) {
        for (int index = 0; index < DefaultFontCount; ++index)
            fonts.append(defaultFont(index));
    }
    while (fonts.size() > 0 && fonts.size() < DefaultFontCount) {
        if (!fonts.append(fonts[fonts.size() - 1]))
            return;
    }
}

// --- The life of the document

void prepareDocumentCore()
{
    stringPool = new StringPool;
    formulaPool = new FormulaPool;
    createPrivateHeap();
    loadLocale();
    errorState = {};
}

void startDocumentCore()
{
    prepareDocumentCore();
    NewDocument(NewDocumentSheets, FileKindNative);
}

void stopDocumentCore()
{
    if (workbook != nullptr)
        closeDocument();
    delete formulaPool;
    delete stringPool;
    formulaPool = nullptr;
    stringPool = nullptr;
    destroyPrivateHeap();
}

void closeDocument()
{
    if (beforeCloseDocument != nullptr)
        beforeCloseDocument();
    delete workbook;
    if (placeholderFormula != -1) {
        formulaPool->release(placeholderFormula);
        placeholderFormula = -1;
    }
    formulaPool->clear();
    stringPool->clear();
    formulaTable.clear();
    calcChain.reset();
}

void NewDocument(int sheetCount, FileKind kind)
{
    if (workbook != nullptr)
        closeDocument();
    destroyPrivateHeap();
    createPrivateHeap();
    auto* document = new (std::nothrow) Workbook;
    if (document == nullptr) {
        raiseError(ErrorMemory);
        return;
    }
    document->initNew(sheetCount);
    document->fileKind = kind;
}

} // namespace vorn
