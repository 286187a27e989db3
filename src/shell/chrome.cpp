#include "shell/chrome.h"

#include "core/workbook.h"
#include "platform/canvas.h"
#include "resources/icons.h"
#include "shell/application.h"
#include "shell/chromeareas.h"
#include "shell/commands.h"
#include "shell/flatbutton.h"
#include "shell/look.h"
#include "shell/pointmode.h"

namespace vorn {

namespace {

int iconOf(int button)
{
    switch (button) {
    case CommandCancel:
        return IconCancel;
    case CommandCommit:
        return IconCommit;
    case CommandFunctionButton:
        return IconFunction;
    default:
        return IconQuickEntry;
    }
}

bool isHeld(ChromePart part)
{
    return application->chrome.held == part && application->chrome.inside;
}

FormulaBarLook formulaBarLook(const Rect& strip)
{
    FormulaBarLook look;
    look.strip = strip;
    if (strip.isEmpty())
        return look;
    const auto places = barButtonRects(strip);
    for (std::size_t place = 0; place < places.size(); ++place) {
        const BarButton& button = application->formulaBar.buttons[place];
        BarButtonLook& seen = look.buttons[place];
        seen.area = sharedArea(places[place], strip);
        seen.icon = iconOf(button.id);
        seen.enabled = button.enabled;
        seen.pressed = isHeld(ChromePart::BarButton) && application->chrome.heldPart == button.id;
    }
    return look;
}

// Null where there is none. In a strip that is too narrow for all the last one lies on top.
const BarButton* barButtonAt(int x, int y)
{
    const FormulaBarLook look = formulaBarLook(chromeAreas().formulaBar);
    for (std::size_t place = look.buttons.size(); place-- > 0;) {
        if (look.buttons[place].area.contains(x, y))
            return &application->formulaBar.buttons[place];
    }
    return nullptr;
}

ChromePart partOf(BarDirection direction)
{
    return direction == BarDirection::Across ? ChromePart::HorizontalBar : ChromePart::VerticalBar;
}

BarDirection directionOf(ChromePart bar)
{
    return bar == ChromePart::HorizontalBar ? BarDirection::Across : BarDirection::Down;
}

Rect areaOf(BarDirection direction)
{
    const ChromeAreas areas = chromeAreas();
    return direction == BarDirection::Across ? areas.horizontalBar : areas.verticalBar;
}

ScrollBar currentBar(BarDirection direction)
{
    return {direction, areaOf(direction), scrollReach(direction)};
}

ScrollBarLook scrollBarLook(BarDirection direction)
{
    ScrollBarLook look;
    look.direction = direction;
    look.area = areaOf(direction);
    if (look.area.isEmpty())
        return look;
    look.thumb = currentBar(direction).thumb();
    if (isHeld(partOf(direction)))
        look.pressed = application->chrome.heldPart;
    return look;
}

} // namespace

Chrome currentChrome()
{
    const ChromeAreas areas = chromeAreas();
    Chrome chrome;
    chrome.formulaBar = formulaBarLook(areas.formulaBar);
    chrome.tabs = currentTabsLook();
    chrome.horizontal = scrollBarLook(BarDirection::Across);
    chrome.vertical = scrollBarLook(BarDirection::Down);
    chrome.corner = areas.corner;
    return chrome;
}

// --- Painting

namespace {

void paintBarButton(Canvas& canvas, const BarButtonLook& button)
{
    if (button.area.isEmpty())
        return;
    const PushState state = button.pressed ? PushState::Pressed : PushState::Idle;
    paintButton(canvas, button.area, state);
    canvas.icon(imageArea(button.area.shrunk(1), state), button.icon, button.enabled);
}

// The text stands in a control of its own, in the middle.
void paintFormulaBar(Canvas& canvas, const FormulaBarLook& look)
{
    if (look.strip.isEmpty())
        return;
    paintEditField(canvas, look.strip);
    for (const BarButtonLook& button : look.buttons)
        paintBarButton(canvas, button);
}

void paintFormulaBarChange(Canvas& canvas, const FormulaBarLook& now, const FormulaBarLook& before)
{
    if (now.strip != before.strip) {
        paintFormulaBar(canvas, now);
        return;
    }
    // Neighbours share an edge. In a strip that is too narrow for all of them more is shared, and
    // the later one lies on top.
    constexpr int sharedEdge = 1;
    Rect painted;
    for (std::size_t place = 0; place < now.buttons.size(); ++place) {
        const Rect& area = now.buttons[place].area;
        if (now.buttons[place] == before.buttons[place] &&
            area.intersected(painted).width() <= sharedEdge)
            continue;
        paintBarButton(canvas, now.buttons[place]);
        painted = area;
    }
}

bool meets(const TabsLook& tabs, const Rect& clip)
{
    return tabs.buttons.meets(clip) || tabs.area.meets(clip) || tabs.splitter.meets(clip);
}

} // namespace

void paintChrome(Canvas& canvas, const Chrome& chrome, const Rect& clip)
{
    const Clip only(canvas, clip);
    if (chrome.formulaBar.strip.meets(clip))
        paintFormulaBar(canvas, chrome.formulaBar);
    if (meets(chrome.tabs, clip))
        paintTabs(canvas, chrome.tabs);
    for (const ScrollBarLook* bar : {&chrome.horizontal, &chrome.vertical}) {
        if (bar->area.meets(clip))
            paintScrollBar(canvas, *bar);
    }
    if (chrome.corner.meets(clip))
        canvas.fill(chrome.corner, ColourFace);
}

void paintChromeChanges(Canvas& canvas, const Chrome& now, const Chrome& before)
{
    paintFormulaBarChange(canvas, now.formulaBar, before.formulaBar);
    paintTabsChange(canvas, now.tabs, before.tabs);
    paintScrollBarChange(canvas, now.horizontal, before.horizontal);
    paintScrollBarChange(canvas, now.vertical, before.vertical);
    if (now.corner != before.corner && !now.corner.isEmpty())
        canvas.fill(now.corner, ColourFace);
}

// --- What the user does

namespace {

void hold(ChromePart part, int heldPart)
{
    ChromeState& state = application->chrome;
    state.held = part;
    state.heldPart = heldPart;
    state.inside = true;
    application->markDirty(0);
}

void setInside(bool inside)
{
    ChromeState& state = application->chrome;
    if (inside == state.inside)
        return;
    state.inside = inside;
    application->markDirty(0);
}

void pressBarButton(int x, int y)
{
    const BarButton* button = barButtonAt(x, y);
    if (button != nullptr && button->enabled)
        hold(ChromePart::BarButton, button->id);
}

int tabDirection(int button)
{
    return button == 1 ? -1 : 1;
}

void pressTabButton(int x, int y)
{
    const int button = tabButtonAt(x, y);
    hold(ChromePart::TabButtons, button);
    scrollTabs(tabDirection(button));
}

void pressSplitter(int x)
{
    application->chrome.grip = x - chromeAreas().splitter.left;
    hold(ChromePart::Splitter, 0);
}

// A scroll is something that is done on the grid. If the editor refuses, the pen holds nothing: it
// would be refused again with every move.
void pressScrollBar(BarDirection direction, int x, int y)
{
    if (!yieldToGrid())
        return;
    const ScrollBar bar = currentBar(direction);
    const ScrollPart part = bar.partAt(x, y);
    if (part == ScrollNone)
        return;
    application->chrome.grip = bar.gripAt(x, y);
    hold(partOf(direction), part);
    scrollByPart(direction, part);
}

void dragScrollBar(BarDirection direction, int x, int y, bool rests)
{
    const ChromeState& state = application->chrome;
    const ScrollBar bar = currentBar(direction);
    if (state.heldPart == ScrollThumb) {
        const int position = bar.positionAt(x, y, state.grip);
        const bool across = direction == BarDirection::Across;
        if (position != scrollReach(direction).position)
            scrollViewTo(across ? position : -1, across ? -1 : position);
        return;
    }
    setInside(bar.partAt(x, y) == state.heldPart);
    if (rests && state.inside)
        scrollByPart(direction, static_cast<ScrollPart>(state.heldPart));
}

} // namespace

ChromePart chromePartAt(int x, int y)
{
    if (workbook == nullptr)
        return ChromePart::None;
    const ChromeAreas areas = chromeAreas();
    if (areas.tabButtons.contains(x, y))
        return ChromePart::TabButtons;
    if (areas.tabs.contains(x, y))
        return ChromePart::Tabs;
    if (areas.splitter.contains(x, y))
        return ChromePart::Splitter;
    if (areas.horizontalBar.contains(x, y))
        return ChromePart::HorizontalBar;
    if (areas.verticalBar.contains(x, y))
        return ChromePart::VerticalBar;
    return barButtonAt(x, y) != nullptr ? ChromePart::BarButton : ChromePart::None;
}

void chromePress(int x, int y)
{
    const ChromePart part = chromePartAt(x, y);
    application->chrome.held = ChromePart::None;
    application->chrome.last = {x, y};
    switch (part) {
    case ChromePart::None:
        return;
    case ChromePart::BarButton:
        return pressBarButton(x, y);
    case ChromePart::TabButtons:
        return pressTabButton(x, y);
    case ChromePart::Tabs:
        return selectTab(currentTabs().tabAt(x));
    case ChromePart::Splitter:
        return pressSplitter(x);
    case ChromePart::HorizontalBar:
    case ChromePart::VerticalBar:
        return pressScrollBar(directionOf(part), x, y);
    }
}

void chromeDrag(int x, int y)
{
    ChromeState& state = application->chrome;
    if (workbook == nullptr)
        return;
    const bool rests = state.last == Point{x, y};
    state.last = {x, y};
    switch (state.held) {
    case ChromePart::None:
    case ChromePart::Tabs:
        return;
    case ChromePart::BarButton: {
        const BarButton* button = barButtonAt(x, y);
        return setInside(button != nullptr && button->id == state.heldPart);
    }
    case ChromePart::TabButtons:
        setInside(tabButtonAt(x, y) == state.heldPart);
        if (rests && state.inside)
            scrollTabs(tabDirection(state.heldPart));
        return;
    case ChromePart::Splitter:
        return moveSplitter(x - state.grip);
    case ChromePart::HorizontalBar:
    case ChromePart::VerticalBar:
        return dragScrollBar(directionOf(state.held), x, y, rests);
    }
}

void chromeRelease(int x, int y)
{
    ChromeState& state = application->chrome;
    if (workbook == nullptr || state.held == ChromePart::None) {
        state.held = ChromePart::None;
        return;
    }
    // What is held is let go before its command runs, which may show a dialog or another document.
    const ChromeState former = state;
    state.held = ChromePart::None;
    followVerticalRange();
    application->markDirty(0);
    if (former.held != ChromePart::BarButton)
        return;
    const BarButton* button = barButtonAt(x, y);
    if (button != nullptr && button->id == former.heldPart)
        onCommand(static_cast<std::uint16_t>(button->id));
}

void chromeDoubleTap(int x, int y)
{
    chromePress(x, y);
    chromeRelease(x, y);
}

} // namespace vorn
