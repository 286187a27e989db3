// The icons of the program, by the numbers that the toolbar (resources/menu.h) and the formula bar
// know them by.
#pragma once

namespace vorn {

enum Icon : int {
    IconUndo = 0,
    IconCut = 1,
    IconCopy = 2,
    IconPaste = 3,
    IconAutoSum = 4,
    IconChart = 5,
    IconBold = 6,
    IconItalic = 7,
    IconUnderline = 8,
    IconNew = 9,
    IconOpen = 10,
    IconSave = 11,
    IconAlignLeft = 12,
    IconAlignCenter = 13,
    IconAlignRight = 14,
    IconFind = 15,
    IconSort = 16,
    IconFormat = 18,
    IconFullScreen = 19,

    // Of the formula bar.
    IconCommit = 110,
    IconCancel = 111,
    IconQuickEntry = 112,
    IconFunction = 113,

    IconVorn = 128, // of the program itself
};

} // namespace vorn
