#include "support/formatdialogs.h"
#include "support/rawcells.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

class FormatActions : public FormatDialogTest {};

TEST_F(FormatActions, workOnTheSelection)
{
    const struct {
        const char* phrase;
        void (*command)();
        std::u16string_view label;
        bool (*worked)();
    } cases[] = {
        {"bold",         boldCommand,           u"Bold",         [] { return fontAt(1, 1).weight == 700; }           },
        {"italic",       italicCommand,         u"Italic",       [] { return fontAt(1, 1).attributes == FontItalic; }},
        {"underline",    underlineCommand,      u"Underline",    [] { return fontAt(1, 1).underline == 1; }          },
        {"left",         alignLeftCommand,      u"Alignment",
         [] { return styleAt(1, 1).get(StyleHorizontal) == 1; }                                                      },
        {"center",       alignCenterCommand,    u"Alignment",
         [] { return styleAt(1, 1).get(StyleHorizontal) == 2; }                                                      },
        {"right",        alignRightCommand,     u"Alignment",
         [] { return styleAt(1, 1).get(StyleHorizontal) == 3; }                                                      },
        {"hide columns", hideColumnsCommand,    u"Column Width",
         [] { return sheet().columns.columnHidden(2); }                                                              },
        {"show columns", showColumnsCommand,    u"Column Width",
         [] { return !sheet().columns.columnHidden(2); }                                                             },
        {"fit columns",  autofitColumnsCommand, u"Column Width",
         [] { return sheet().columns.columnPixels(1) == 13; }                                                        },
        {"hide rows",    hideRowsCommand,       u"Row Height",   [] { return sheet().rowHidden(2); }                 },
        {"show rows",    showRowsCommand,       u"Row Height",   [] { return !sheet().rowHidden(2); }                },
        {"fit rows",     autofitRowsCommand,    u"Row Height",   [] { return sheet().rowHeight(1) == 255; }          },
    };
    sheet().setCell(1, 1, textCell(u"a"));
    sheet().setRowHeight(1, 700, true);
    select(1, 1, 2, 2);
    for (const auto& c : cases) {
        c.command();
        EXPECT_TRUE(c.worked()) << c.phrase;
        EXPECT_EQ(undoLabel(), c.label) << c.phrase;
    }
}

} // namespace
} // namespace vorn
