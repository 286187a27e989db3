#include "shell/cellpaint.h"

#include "platform/canvas.h"
#include "shell/look.h"

namespace vorn {

void paintPanes(Canvas& canvas, const GridView& view, const Rect& clip)
{
    for (const Pane& pane : view.panes())
        canvas.fill(pane.rect.intersected(clip), ColourWhite);
}

} // namespace vorn
