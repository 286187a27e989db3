#include "shell/windowpaint.h"

#include "core/workbook.h"
#include "shell/application.h"
#include "shell/cellpaint.h"
#include "shell/cursor.h"
#include "shell/entry.h"

namespace vorn {

void paintWindow(Canvas& canvas, const Rect& area)
{
    if (workbook == nullptr)
        return;
    paintPanes(canvas, currentView(), area);
    paintChrome(canvas, currentChrome(), area);
}

void paintChanges(Canvas& canvas)
{
    if (workbook == nullptr || application->repaintLock > 0)
        return;
    paintWindow(canvas, application->clientArea);
    endRepaint();
}

void endRepaint()
{
    if (workbook == nullptr)
        return;
    PaintedWindow& painted = application->painted;
    painted.sheet = workbook->currentSheet;
    painted.areas = currentLayout();
    painted.previousSelection = application->activeSelection();
    painted.pointing = application->pointMode;
    painted.previousLeftColumn = workbook->currentSheet->leftColumn;
    painted.previousTopRow = workbook->currentSheet->topRow;
    painted.chrome = currentChrome();
    application->repaintHints = 0;
    refreshEditor();
}

void forgetPainted()
{
    application->painted = {};
}

} // namespace vorn
