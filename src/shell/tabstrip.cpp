#include "shell/tabstrip.h"

#include "core/workbook.h"
#include "platform/canvas.h"
#include "platform/platform.h"
#include "shell/application.h"
#include "shell/chromeareas.h"
#include "shell/commandstate.h"
#include "shell/cursor.h"
#include "shell/flatbutton.h"
#include "shell/look.h"
#include "shell/pointmode.h"
#include "shell/scrolling.h"

#include <algorithm>
#include <array>

namespace vorn {

namespace {

constexpr int WeightPlain = 400;
constexpr int WeightBold = 700;

// A tab is less high than its row, if the row is high enough.
constexpr int FullTabHeight = 12;
constexpr int TabHeightLoss = 3;

int tabHeight(int rowHeight)
{
    return rowHeight > FullTabHeight ? rowHeight - TabHeightLoss : rowHeight;
}

FontLook tabFont(int weight)
{
    FontLook font;
    font.height = TabFontHeight;
    font.weight = weight;
    font.face = u"Tahoma";
    return font;
}

int sheetCount()
{
    return workbook->sheets.size();
}

// How far the next tab begins behind this one. Every name has the room that it takes as the current
// one: tabs don't move when another is tapped.
int tabWidth(int tab)
{
    return platform.textMeasure->textWidth(tabFont(WeightBold), workbook->sheets[tab]->name()) +
           TabSpacing;
}

} // namespace

// --- Where they are

std::vector<TabLook> SheetTabs::seen() const
{
    std::vector<TabLook> tabs;
    int left = area.left;
    for (int tab = firstShown; tab < sheetCount() && left < area.right; ++tab) {
        const int next = left + tabWidth(tab);
        TabLook look;
        look.area = {left, area.top, next + TabSpacing, area.top + tabHeight(area.height())};
        look.text = workbook->sheets[tab]->name();
        look.current = tab == current;
        tabs.push_back(std::move(look));
        left = next;
    }
    return tabs;
}

int SheetTabs::tabAt(int x) const
{
    if (x < area.left || x >= area.right)
        return NoTab;
    // Between two tabs the middle of their slanted sides counts.
    int end = area.left + TabSpacing / 2;
    for (int tab = firstShown; tab < sheetCount() && end < area.right; ++tab) {
        end += tabWidth(tab);
        if (x < end)
            return tab;
    }
    return NoTab;
}

bool SheetTabs::lastFits() const
{
    int right = area.left + TabSpacing;
    for (int tab = firstShown; tab < sheetCount(); ++tab) {
        right += tabWidth(tab);
        if (right > area.right)
            return false;
    }
    return true;
}

int SheetTabs::leastFirstFor(int tab) const
{
    int room = area.width() - TabSpacing - tabWidth(tab);
    int first = tab;
    while (first > 0) {
        room -= tabWidth(first - 1);
        if (room < 0)
            break;
        --first;
    }
    return first;
}

SheetTabs currentTabs()
{
    SheetTabs tabs;
    tabs.area = chromeAreas().tabs;
    tabs.firstShown = std::clamp(application->chrome.firstShown, 0, sheetCount() - 1);
    tabs.current = workbook->currentSheet->index;
    return tabs;
}

namespace {

// Where no tab is seen there is nothing to scroll.
bool canScrollLeft(const SheetTabs& tabs)
{
    return !tabs.area.isEmpty() && tabs.firstShown > 0;
}

bool canScrollRight(const SheetTabs& tabs)
{
    return !tabs.area.isEmpty() && tabs.firstShown < sheetCount() - 1 && !tabs.lastFits();
}

std::array<Rect, 2> halves(const Rect& buttons)
{
    const int middle = buttons.left + buttons.width() / 2;
    return {
        {{buttons.left, buttons.top, middle, buttons.bottom},
         {middle, buttons.top, buttons.right, buttons.bottom}}
    };
}

} // namespace

TabsLook currentTabsLook()
{
    const ChromeState& state = application->chrome;
    const ChromeAreas areas = chromeAreas();
    const SheetTabs tabs = currentTabs();
    TabsLook look;
    look.buttons = areas.tabButtons;
    look.area = areas.tabs;
    look.splitter = areas.splitter;
    look.tabs = tabs.seen();
    look.canScrollLeft = canScrollLeft(tabs);
    look.canScrollRight = canScrollRight(tabs);
    if (state.held == ChromePart::TabButtons && state.inside)
        look.pressed = state.heldPart;
    return look;
}

// --- What moves them

void showCurrentTab()
{
    if (workbook == nullptr || workbook->currentSheet == nullptr)
        return;
    const SheetTabs tabs = currentTabs();
    if (tabs.area.isEmpty())
        return;
    const int first = std::min(tabs.firstShown, tabs.leastFirstFor(sheetCount() - 1));
    application->chrome.firstShown =
        std::min(std::max(first, tabs.leastFirstFor(tabs.current)), tabs.current);
}

void scrollTabs(int direction)
{
    const SheetTabs tabs = currentTabs();
    const bool possible = direction < 0 ? canScrollLeft(tabs) : canScrollRight(tabs);
    if (!possible)
        return;
    application->chrome.firstShown = tabs.firstShown + direction;
    application->markDirty(0);
}

int tabButtonAt(int x, int y)
{
    const std::array<Rect, 2> buttons = halves(chromeAreas().tabButtons);
    if (buttons[0].contains(x, y))
        return 1;
    return buttons[1].contains(x, y) ? 2 : 0;
}

void selectTab(int sheet)
{
    if (workbook == nullptr)
        return;
    Sheet* chosen = workbook->sheetAt(sheet);
    if (chosen == nullptr || chosen == workbook->currentSheet || !yieldToGrid())
        return;
    workbook->setCurrentSheet(chosen);
    application->sheetChanged();
    refreshCommandState();
}

void moveSplitter(int left)
{
    const Rect window = currentLayout().windowArea;
    const int divider = std::max(window.left + TabSplitterLeftMargin,
                                 std::min(left, window.right - TabSplitterRightMargin));
    if (divider == application->tabDivider)
        return;
    application->tabDivider = divider;
    application->tabDividerMoved = true;
    const SheetTabs tabs = currentTabs();
    if (!tabs.area.isEmpty())
        application->chrome.firstShown =
            std::min(tabs.firstShown, tabs.leastFirstFor(sheetCount() - 1));
    application->markDirty(0);
}

// --- The look

namespace {

void paintTab(Canvas& canvas, const TabLook& tab)
{
    const Rect& area = tab.area;
    const Colour inside = tab.current ? ColourTabCurrent : ColourFace;
    const Point outline[] = {
        {area.left,                   area.top       },
        {area.left + TabSpacing,      area.bottom - 1},
        {area.right - 1 - TabSpacing, area.bottom - 1},
        {area.right - 1,              area.top       },
    };
    canvas.polygon(outline, {ColourFaceShadow}, inside);
    // The current tab is one with the sheet above it.
    if (tab.current)
        canvas.fill({area.left + 1, area.top, area.right - 1, area.top + 1}, inside);
    const Rect room = {area.left + TabSpacing / 2, area.top, area.right - TabSpacing / 2,
                       area.bottom};
    canvas.text(room, tab.text, tabFont(tab.current ? WeightBold : WeightPlain), ColourFaceText,
                {TextAcross::Center, TextDown::Middle});
}

void paintStrip(Canvas& canvas, const TabsLook& look)
{
    const Rect& area = look.area;
    if (area.isEmpty())
        return;
    const Clip clip(canvas, area);
    canvas.fill(area, ColourTrack);
    canvas.fill({area.left, area.top, area.right, area.top + 1}, ColourFaceShadow);
    // Each lies over the one on its right, and the current one over both.
    for (auto tab = look.tabs.rbegin(); tab != look.tabs.rend(); ++tab) {
        if (!tab->current)
            paintTab(canvas, *tab);
    }
    for (const TabLook& tab : look.tabs) {
        if (tab.current)
            paintTab(canvas, tab);
    }
}

void paintTabButtons(Canvas& canvas, const TabsLook& look)
{
    const auto stateOf = [&look](int button, bool enabled) {
        if (!enabled)
            return PushState::Disabled;
        return look.pressed == button ? PushState::Pressed : PushState::Idle;
    };
    const std::array<Rect, 2> buttons = halves(look.buttons);
    paintArrowButton(canvas, buttons[0], Arrow::Left, stateOf(1, look.canScrollLeft));
    paintArrowButton(canvas, buttons[1], Arrow::Right, stateOf(2, look.canScrollRight));
}

void paintSplitter(Canvas& canvas, const Rect& area)
{
    if (area.isEmpty())
        return;
    canvas.fill(area, ColourFaceLight);
    canvas.fill({area.left, area.top, area.left + 1, area.bottom}, ColourFaceShadow);
    canvas.fill({area.right - 1, area.top, area.right, area.bottom}, ColourFaceShadow);
}

} // namespace

void paintTabs(Canvas& canvas, const TabsLook& look)
{
    paintTabButtons(canvas, look);
    paintStrip(canvas, look);
    paintSplitter(canvas, look.splitter);
}

void paintTabsChange(Canvas& canvas, const TabsLook& now, const TabsLook& before)
{
    if (now.buttons != before.buttons || now.area != before.area ||
        now.splitter != before.splitter) {
        paintTabs(canvas, now);
        return;
    }
    if (now.canScrollLeft != before.canScrollLeft || now.canScrollRight != before.canScrollRight ||
        now.pressed != before.pressed)
        paintTabButtons(canvas, now);
    if (now.tabs != before.tabs)
        paintStrip(canvas, now);
}

} // namespace vorn
