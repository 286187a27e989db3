#include "shell/chromeareas.h"

#include "shell/application.h"
#include "shell/cursor.h"

#include <algorithm>

namespace vorn {

Rect sharedArea(const Rect& area, const Rect& other)
{
    const Rect shared = area.intersected(other);
    return shared.isEmpty() ? Rect() : shared;
}

ChromeAreas chromeAreas()
{
    const GridLayout layout = currentLayout();
    const Rect& client = application->clientArea;
    Rect buttons = layout.tabButtons;
    buttons.right = std::min(buttons.right, layout.tabSplitter.left);
    ChromeAreas areas;
    areas.formulaBar = sharedArea(layout.formulaBar, client);
    areas.tabButtons = sharedArea(buttons, client);
    areas.tabs = sharedArea(layout.tabArea, client);
    areas.splitter = sharedArea(layout.tabSplitter, client);
    areas.horizontalBar = sharedArea(layout.horizontalBar, client);
    areas.verticalBar = sharedArea(layout.verticalBar, client);
    areas.corner = sharedArea({layout.gridArea.right, layout.gridArea.bottom,
                               layout.windowArea.right, layout.windowArea.bottom},
                              client);
    return areas;
}

} // namespace vorn
