// From a path to a document: which reader a file gets, and the order of steps around it.
//
// Errors: the sticky code. An open is not transactional: the document that stood before is gone,
//         and after a failure a new one of three sheets stands in its place. The code is left set,
//         for the end of the message to show.
#pragma once

#include "core/workbook.h"

#include <string>
#include <string_view>

namespace vorn {

// The kinds of files, told by the text behind a path's last dot, without case.
enum DocumentKind : int {
    DocumentNative = 0, // anything that is none of the others
    DocumentText = 1,
    DocumentPocketExcel = 2,
    DocumentExcel = 3,
};

DocumentKind documentKind(std::u16string_view path);

// Characters that a path may have.
constexpr int PathMax = 260;
bool isPathTooLong(std::u16string_view path);

// Replaces the document by what the file holds.
void OpenDocument(std::u16string_view path);

// Is there a file of this name? The question is put by creating it, so a name that was free has an
// empty file from then on.
bool fileExists(std::u16string_view path);

// What the window is called: the name of the document's file without its folder, or "Vorn".
std::u16string documentTitle();

} // namespace vorn
