// What the program remembers of its user from one run to the next: fields of the Application and
// the values that the platform's SettingsStore keeps of them.
//
//   name                  type                                  default
//   FmlBar                number  formulaBarVisible             1
//   MvEnter               number  moveAfterEnter                0
//   DFSZoom               number  fullScreenZoomOn              1
//   FSZoom                number  fullScreenZoom, 25 to 200     90
//   CommandBand           bytes   commandBand, exactly 40       none
//   DocDir                text    documentFolder, 99 units      \C_Drive\C_MyDocs\ .
//   RecFile1 to RecFile4  text    recentFiles, 259 units        empty
//   CLst                  text    customLists, 2,999 units      DefaultCustomLists
//   UsedFn                bytes   usedFunctions, exactly 40     Sum, If, Average
//
// Shape:  read once, at the start, and written once, at the Close command.
// Errors: silent. A value that is missing, too long or makes no sense leaves its field on the
//         default; what cannot be written is lost.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vorn {

// The custom lists that came with the program first, then the settings.
void loadSettings();
void saveSettings();

// Characters that the lists may take when they are joined.
constexpr std::size_t CustomListsMax = 2999;

// The lists of a text in which each ends with a semicolon; what stands behind the last is no list.
std::vector<std::u16string> splitCustomLists(std::u16string_view text);

// The reverse. A list that finds no room within CustomListsMax is left out, with all behind it.
std::u16string joinCustomLists(const std::vector<std::u16string>& lists);

} // namespace vorn
