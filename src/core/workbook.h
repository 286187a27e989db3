// The open document: the list of sheets, and the tables that they share. There is one at a time,
// reached through one global pointer that the constructor sets and the destructor clears; the
// operations of the core read that pointer and take no workbook argument.
//
// Shape:  owns its sheets and the records of its tables. A sheet's address holds until that sheet
//         is removed; its index changes when one before it is.
// Errors: ErrorMemory, sticky.
#pragma once

#include "core/growarray.h"
#include "core/sheet.h"
#include "core/style.h"
#include "numfmt/catalogue.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace vorn {

constexpr int PaletteSize = 56;
extern const std::uint32_t DefaultPalette[PaletteSize]; // 0x00BBGGRR

// What a document was loaded from.
enum FileKind : int { FileKindNative = 0, FileKindImported = 2 };

constexpr int NewDocumentSheets = 3;
constexpr int SheetIndexMax = 254; // what a reference can reach

// A defined name. The list only grows: a deleted name keeps its row without a block.
struct DefinedName {
    char16_t* name = nullptr;      // private heap
    std::uint8_t* block = nullptr; // private heap; null once deleted
    std::int32_t fileIndex = -1;
};

// A variable of tasks.
struct TaskVariable {
    char16_t* name = nullptr; // private heap
    CellValue value;
};

// A macro of the user. The strings are in the private heap and belong to the record; null is the
// empty text.
struct Task {
    char16_t* name = nullptr;
    char16_t* text = nullptr;
    std::int32_t onTap = 0; // runs when a cell of the area is tapped
    // A sheet range as byte code has it, with the sheets as they were typed.
    CellValue onTapArea;
    std::int32_t addToMenu = 0;
    std::int32_t global = 0; // kept with the settings, and not with the document
};

class Workbook {
public:
    Workbook();
    ~Workbook();
    Workbook(const Workbook&) = delete;
    Workbook& operator=(const Workbook&) = delete;

    int codePage; // of text files and Excel files
    bool protectedWorkbook = false;
    GrowArray<DefinedName> names;
    GrowArray<Task> tasks;
    GrowArray<TaskVariable> variables;
    int currentTask = -1;
    std::u16string path; // empty until saved or opened
    GrowArray<Sheet*> sheets;
    Sheet* currentSheet = nullptr;
    int nextSheetNumber = 1;
    GrowArray<FontRecord> fonts;
    GrowArray<CellStyle> styles;
    GrowArray<NumberFormat> formats;
    std::uint32_t palette[PaletteSize];
    bool modified = false;
    int lastBuiltInFormat = LastBuiltInFormat;
    bool clipboardIsCut = false;
    bool pasteContents = true;
    bool pasteFormats = true;
    bool pasteSkipEmpty = false;
    bool pasteResultsOnly = false;
    FileKind fileKind = FileKindNative;

    // Fills a new workbook with sheets, formats, fonts and the default style. With a count below 1
    // it does nothing, which is how a reader begins. Answers whether that was possible.
    bool initNew(int sheetCount);

    // Appends a sheet; an empty name means the next default one. Null with ErrorMemory.
    Sheet* addSheet(std::u16string_view name = {});

    // Removes one sheet and rewrites what refers to sheets by index, but for names. The first sheet
    // is current then. An index outside does nothing.
    void removeSheet(int index);

    // False if another sheet has the name, without case. An index past the end is only a test.
    bool renameSheet(int index, std::u16string_view name);

    // The first sheet of that name, without case; -1 if there is none.
    int findSheet(std::u16string_view name) const;
    int findName(std::u16string_view name) const;
    int findVariable(std::u16string_view name) const;

    void setCurrentSheet(Sheet* sheet) { currentSheet = sheet; }
    Sheet* sheetAt(int index) const
    {
        return index >= 0 && index < sheets.size() ? sheets[index] : nullptr;
    }

    // Appends a task with its flags clear and no area; it takes over both strings. Null, with
    // ErrorMemory and the strings left to the caller, if memory is short.
    Task* addTask(char16_t* name, char16_t* text);
    bool anyLocalTask() const;

    // "Sheet4" and so on; numbers are never given twice.
    std::u16string defaultSheetName();

    // Makes the numbers go on behind those in the names of sheets that a file brought.
    void continueSheetNumbers();

    // The index of an equal record, or of a new one; 0, with ErrorMemory, where a new one finds no
    // room.
    int addFont(const FontRecord& font);
    int addStyle(const CellStyle& style);

    // With index -1: the index of an equal format, whose strings the caller then still holds, or of
    // a new one. Otherwise stores the record in that place. Strings pass to the table.
    int setFormat(const NumberFormat& record, int index);
    bool isUserFormat(int index) const { return index > lastBuiltInFormat; }

    // Styles with this format get General, those with a higher one move down. False for a built-in.
    bool removeFormat(int index);

    // A loaded workbook may have too few fonts for imported styles: pads the table to six.
    void normaliseFonts();
};

extern Workbook* workbook;

// Pools, private heap, locale, error state, and a new workbook of three sheets: a working document
// without an Application. The Application runs the two halves with its own fields set in between.
void startDocumentCore();
void prepareDocumentCore();

// Frees what prepareDocumentCore made.
void stopDocumentCore();

// Replaces the document: closes the old one, renews the private heap, makes a workbook with
// `sheetCount` sheets (0: a reader fills it) and notes what it comes from.
void NewDocument(int sheetCount, FileKind kind);

// Drops the document with all its values. Whoever holds undo programs lets them go first
// (beforeCloseDocument).
void closeDocument();

// What the shell wants done before the document goes; may be null.
extern void (*beforeCloseDocument)();

} // namespace vorn
