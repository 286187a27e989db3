// Names of files: their folder part, and how a name that was typed gets its extension.
//
// Units:  filters of file dialogs are counted from 1. Every dialog is completed by the list of the
//         Save dialog, whatever formats it shows itself: 2 is Pocket Excel, 3 is Excel, and any
//         other number is the system's own format.
#pragma once

#include <string>
#include <string_view>

namespace vorn {

constexpr int FilterNative = 1;
constexpr int FilterPocketExcel = 2;
constexpr int FilterExcel = 3;

// Up to and with the last separator, which is "/" or "\"; empty without one.
std::u16string_view folderOfPath(std::u16string_view path);

// What stands behind it.
std::u16string_view nameOfPath(std::u16string_view path);

// The name with the extension of the filter, unless there is a dot anywhere in it, the folder part
// included. A dot at its very end is taken as the one of the extension.
std::u16string completeName(std::u16string_view name, int filterIndex);

// What the name field of the Save dialog shows once another filter was chosen: the name up to its
// first dot, with the filter's extension.
std::u16string nameForFilter(std::u16string_view shown, int filterIndex);

// The path with two backslashes at its beginning made one.
std::u16string withoutDoubleBackslash(std::u16string_view path);

} // namespace vorn
