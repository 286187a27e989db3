#include "editing/view.h"

namespace vorn {

DocumentView* documentView = nullptr;

void markRepaint()
{
    if (documentView != nullptr)
        documentView->markDirty(DirtyAll);
}

void tellSheetChanged()
{
    if (documentView != nullptr)
        documentView->sheetChanged();
}

void tellActiveCellMoved()
{
    if (documentView != nullptr)
        documentView->activeCellMoved();
}

RepaintLock::RepaintLock()
{
    if (documentView != nullptr)
        documentView->lockRepaint();
}

RepaintLock::~RepaintLock()
{
    if (documentView != nullptr)
        documentView->unlockRepaint();
}

} // namespace vorn
