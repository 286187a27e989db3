#include "shell/chrome.h"

#include "platform/canvas.h"
#include "shell/cursor.h"
#include "shell/look.h"

namespace vorn {

Chrome currentChrome()
{
    const GridLayout areas = currentLayout();
    Chrome chrome;
    chrome.formulaBar.strip = areas.formulaBar;
    chrome.tabs.buttons = areas.tabButtons;
    chrome.tabs.area = areas.tabArea;
    chrome.tabs.splitter = areas.tabSplitter;
    chrome.horizontal.area = areas.horizontalBar;
    chrome.vertical.area = areas.verticalBar;
    return chrome;
}

void paintChrome(Canvas& canvas, const Chrome& chrome, const Rect& clip)
{
    canvas.fill(chrome.vertical.area.intersected(clip), ColourTrack);
}

void paintChromeChanges(Canvas&, const Chrome&, const Chrome&) {}

ChromePart chromePartAt(int, int)
{
    return ChromePart::None;
}

void chromePress(int, int) {}
void chromeDrag(int, int) {}
void chromeRelease(int, int) {}
void chromeDoubleTap(int, int) {}
void scrollBy(int, int) {}
void scrollViewTo(int, int) {}
void showCurrentTab() {}
void selectTab(int) {}

} // namespace vorn
