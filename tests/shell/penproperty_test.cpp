// Any pen, in any mode, leaves a sound state.
#include "shell/pen.h"

#include "shell/commandhandlers.h"
#include "shell/commands.h"
#include "shell/cursor.h"
#include "shell/pointmode.h"
#include "support/dice.h"
#include "support/penhand.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

void checkState(const Session& session)
{
    for (const Sheet* sheet : workbook->sheets) {
        const Selection& selection = sheet->selection;
        const RangeRef& range = selection.range;
        ASSERT_LE(range.firstColumn, range.lastColumn);
        ASSERT_LE(range.firstRow, range.lastRow);
        ASSERT_LE(range.lastColumn, LastColumn);
        ASSERT_LE(range.lastRow, LastRow);
        ASSERT_TRUE(range.contains(selection.activeColumn, selection.activeRow));
        ASSERT_TRUE(range.contains(selection.anchorColumn, selection.anchorRow));
        ASSERT_TRUE(range.contains(selection.cornerColumn, selection.cornerRow));
        ASSERT_TRUE(sheet->leftColumn >= 0 && sheet->leftColumn <= LastColumn);
        ASSERT_TRUE(sheet->topRow >= 0 && sheet->topRow <= LastRow);
    }
    const RangeRef& pointed = session.app.pointSelection.range;
    ASSERT_LE(pointed.firstColumn, pointed.lastColumn);
    ASSERT_LE(pointed.firstRow, pointed.lastRow);
    ASSERT_LE(pointed.lastColumn, LastColumn);
    ASSERT_LE(pointed.lastRow, LastRow);
}

class RandomHand {
public:
    RandomHand(Session& session, unsigned seed) : session_(session), dice_(seed) {}

    void act()
    {
        if (dice_.oneIn(12))
            disturb();
        else
            usePen();
        session_.endMessage();
        application->repaintHints = 0;
    }

private:
    int position(int length)
    {
        if (dice_.oneIn(40))
            return dice_.below(70000) - 35000;
        return dice_.oneIn(6) ? dice_.below(3 * length) - length : dice_.below(length);
    }
    void usePen()
    {
        const Rect& client = session_.app.clientArea;
        const int x = position(client.right);
        const int y = position(dice_.oneIn(4) ? 60 : client.bottom);
        const auto pointer = dice_.oneIn(3) ? Pointer::Finger : Pointer::Pen;
        switch (dice_.below(8)) {
        case 0:
        case 1:
            return penDown(x, y, {.shift = dice_.oneIn(4)}, pointer);
        case 2:
        case 3:
        case 4:
            return penMove(x, y);
        case 5:
            return penUp(x, y);
        case 6:
            return penTimer();
        default:
            pointerShapeAt(x, y);
            if (dice_.oneIn(3))
                doubleTap(x, y);
            else
                penTimer();
            return;
        }
    }
    void disturb()
    {
        static constexpr std::u16string_view texts[] = {u"=1+", u"12", u"=)", u"=Sum("};
        static constexpr int sizes[][2] = {
            {240, 320},
            {1,   1  },
            {800, 600},
            {60,  60 }
        };
        Sheet& sheet = session_.sheet();
        switch (dice_.below(13)) {
        case 0:
            return session_.type(texts[dice_.below(4)]);
        case 1:
            return cancelEdit();
        case 2:
            return onCommand(dice_.oneIn(2) ? CommandUndo : CommandRedo);
        case 3:
            return onCommand(CommandFreezeTitles);
        case 4:
            return onCommand(dice_.oneIn(2) ? CommandHideColumns : CommandHideRows);
        case 5:
            return onCommand(dice_.oneIn(2) ? CommandShowColumns : CommandShowRows);
        case 6:
            sheet.zoom = 10 + dice_.below(291);
            return;
        case 7:
            sheet.protectedSheet = dice_.oneIn(3);
            return;
        case 8: {
            const int size = dice_.below(4);
            return session_.app.resize({0, 0, sizes[size][0], sizes[size][1]});
        }
        case 9:
            session_.app.formulaBarVisible = dice_.oneIn(2);
            return;
        case 10:
            return setFullScreen(dice_.oneIn(4));
        case 11:
            if (yieldToGrid())
                workbook->setCurrentSheet(workbook->sheetAt(dice_.below(3)));
            return;
        default:
            if (dice_.oneIn(20))
                session_.app.newWorkbook();
            return;
        }
    }

    Session& session_;
    Dice dice_;
};

TEST(Pen, survivesAnyHand)
{
    for (unsigned seed = 1; seed <= 4; ++seed) {
        Session session;
        RandomHand hand(session, seed);
        for (int count = 0; count < 1500; ++count) {
            hand.act();
            checkState(session);
            if (testing::Test::HasFatalFailure())
                FAIL() << "seed " << seed << ", act " << count;
        }
    }
}

} // namespace
} // namespace vorn
