#include "resources/menu.h"

namespace vorn {

namespace {

constexpr MenuRow popUp(int level, std::u16string_view text)
{
    return {level, MenuItem::PopUp, text, 0};
}

constexpr MenuRow entry(int level, std::u16string_view text, int id)
{
    return {level, MenuItem::Entry, text, id};
}

constexpr MenuRow line(int level)
{
    return {level, MenuItem::Separator, u"", 0};
}

constexpr MenuRow MenuRows[] = {
    popUp(0, u"&File"),
    entry(1, u"&New\tCtrl+N", CommandNew),
    line(1),
    entry(1, u"&Open...\tCtrl+O", CommandOpen),
    entry(1, u"&Save\tCtrl+S", CommandSave),
    entry(1, u"Save &As...", CommandSaveAs),
    entry(1, u"&Delete...", CommandDeleteFile),
    popUp(1, u"&Recent Files"),
    entry(2, u"(empty)", CommandNoRecentFiles),
    line(1),
    entry(1, u"&Close\tCtrl+W", CommandClose),

    popUp(0, u"&Edit"),
    entry(1, u"&Undo\tCtrl+Z", CommandUndo),
    entry(1, u"&Redo\tCtrl+Y", CommandRedo),
    line(1),
    entry(1, u"Cu&t\tCtrl+X", CommandCut),
    entry(1, u"&Copy\tCtrl+C", CommandCopy),
    entry(1, u"&Paste\tCtrl+V", CommandPaste),
    entry(1, u"Paste &Special...", CommandPasteSpecial),
    popUp(1, u"Cle&ar"),
    entry(2, u"&All", CommandClearAll),
    entry(2, u"&Contents\tDel", CommandClearContents),
    entry(2, u"&Format", CommandClearFormats),
    popUp(1, u"&Fill"),
    entry(2, u"&Right\tCtrl+R", CommandFillRight),
    entry(2, u"&Down\tCtrl+D", CommandFillDown),
    entry(2, u"&Series...", CommandSeries),
    entry(1, u"&Delete Cells", CommandDeleteCells),

    popUp(0, u"&Insert"),
    entry(1, u"C&ells", CommandInsertCells),
    line(1),
    entry(1, u"&Function...", CommandInsertFunction),
    entry(1, u"&Chart...", CommandChart),
    entry(1, u"&Name...", CommandInsertName),
    entry(1, u"&Define name...", CommandDefineName),

    popUp(0, u"F&ormat"),
    entry(1, u"C&ells...\tCtrl+1", CommandFormatCells),
    line(1),
    popUp(1, u"&Row"),
    entry(2, u"H&eight...", CommandRowHeight),
    entry(2, u"&AutoFit", CommandAutofitRows),
    entry(2, u"&Hide", CommandHideRows),
    entry(2, u"&Unhide", CommandShowRows),
    popUp(1, u"&Column"),
    entry(2, u"&Width...", CommandColumnWidth),
    entry(2, u"&AutoFit", CommandAutofitColumns),
    entry(2, u"&Hide", CommandHideColumns),
    entry(2, u"&Unhide", CommandShowColumns),
    entry(1, u"S&heets...", CommandSheets),
    line(1),
    popUp(1, u"&Zoom"),
    entry(2, u"&70%", CommandZoom70),
    entry(2, u"&80%", CommandZoom80),
    entry(2, u"&90%", CommandZoom90),
    entry(2, u"&100%", CommandZoom100),
    entry(2, u"&Custom...", CommandZoom),
    entry(1, u"F&ull Screen", CommandFullScreen),
    entry(1, u"&Freeze Titles", CommandFreezeTitles),

    popUp(0, u"&Tools"),
    entry(1, u"&Go to...\tCtrl+G", CommandGoTo),
    entry(1, u"&Find...\tCtrl+F", CommandFind),
    entry(1, u"&Replace...\tCtrl+H", CommandReplace),
    entry(1, u"&Sort...", CommandSort),
    entry(1, u"F&ilter", CommandFilter),
    popUp(1, u"&Protection"),
    entry(2, u"Protect &Sheet", CommandProtectSheet),
    entry(2, u"Protect &Workbook", CommandProtectWorkbook),
    line(1),
    entry(1, u"&Options...", CommandOptions),

    popUp(0, u"T&ask"),
    entry(1, u"&Tasks...", CommandTasks),
    line(1),
    entry(1, u"&About...", CommandAbout),
};

constexpr ToolbarSlot Gap = {0, 0, ButtonStyle::Separator, u""};

constexpr ToolbarSlot Slots[] = {
    {CommandNew,         9,  ButtonStyle::Push,  u"New"        },
    {CommandOpen,        10, ButtonStyle::Push,  u"Open"       },
    {CommandSave,        11, ButtonStyle::Push,  u"Save"       },
    Gap,
    {CommandUndo,        0,  ButtonStyle::Push,  u"Undo"       },
    Gap,
    {CommandCut,         1,  ButtonStyle::Push,  u"Cut"        },
    {CommandCopy,        2,  ButtonStyle::Push,  u"Copy"       },
    {CommandPaste,       3,  ButtonStyle::Push,  u"Paste"      },
    Gap,
    {CommandFullScreen,  19, ButtonStyle::Check, u"Full Screen"},
    Gap,
    {CommandFormatCells, 18, ButtonStyle::Push,  u"Format"     },
    Gap,
    {CommandBold,        6,  ButtonStyle::Check, u"Bold"       },
    {CommandItalic,      7,  ButtonStyle::Check, u"Italic"     },
    {CommandUnderline,   8,  ButtonStyle::Check, u"Underline"  },
    Gap,
    {CommandAlignLeft,   12, ButtonStyle::Check, u"Align Left" },
    {CommandAlignCenter, 13, ButtonStyle::Check, u"Center"     },
    {CommandAlignRight,  14, ButtonStyle::Check, u"Align Right"},
    Gap,
    {CommandAutoSum,     4,  ButtonStyle::Push,  u"AutoSum"    },
    {CommandFind,        15, ButtonStyle::Push,  u"Find"       },
    {CommandSort,        16, ButtonStyle::Push,  u"Sort"       },
    {CommandChart,       5,  ButtonStyle::Push,  u"Chart"      },
};

constexpr Accelerator Keys[] = {
    {u'N',      true,  CommandNew          },
    {u'O',      true,  CommandOpen         },
    {u'S',      true,  CommandSave         },
    {u'W',      true,  CommandClose        },
    {u'Z',      true,  CommandUndo         },
    {u'Y',      true,  CommandRedo         },
    {u'X',      true,  CommandCut          },
    {u'C',      true,  CommandCopy         },
    {u'V',      true,  CommandPaste        },
    {u'R',      true,  CommandFillRight    },
    {u'D',      true,  CommandFillDown     },
    {u'1',      true,  CommandFormatCells  },
    {u'G',      true,  CommandGoTo         },
    {u'F',      true,  CommandFind         },
    {u'H',      true,  CommandReplace      },
    {u'A',      true,  CommandSelectAll    },
    {DeleteKey, false, CommandClearContents},
};

} // namespace

const std::span<const MenuRow> MenuBar = MenuRows;
const std::span<const ToolbarSlot> Toolbar = Slots;
const std::span<const Accelerator> Accelerators = Keys;

int acceleratorCommand(char16_t key, bool control)
{
    for (const Accelerator& accelerator : Accelerators) {
        if (accelerator.key == key && accelerator.control == control)
            return accelerator.id;
    }
    return 0;
}

} // namespace vorn
