#include "shell/formulabar.h"

#include "platform/clipboard.h"
#include "platform/platform.h"
#include "shell/commandstate.h"
#include "shell/pointmode.h"

#include <algorithm>

namespace vorn {

namespace {

constexpr int ButtonWidth = 18;
constexpr int ButtonOverlap = 1;
constexpr int QuickEntryWidth = 15;

} // namespace

std::array<Rect, BarButtonCount> barButtonRects(const Rect& strip)
{
    constexpr std::size_t quickEntry = BarButtonCount - 1; // alone at the other end
    std::array<Rect, BarButtonCount> rects;
    int left = strip.left;
    for (std::size_t button = 0; button < quickEntry; ++button) {
        rects[button] = {left, strip.top, left + ButtonWidth, strip.bottom};
        left += ButtonWidth - ButtonOverlap;
    }
    rects[quickEntry] = {strip.right - QuickEntryWidth, strip.top, strip.right, strip.bottom};
    return rects;
}

void FormulaBar::move(const Rect& strip)
{
    const std::array<Rect, BarButtonCount> rects = barButtonRects(strip);
    for (std::size_t button = 0; button < rects.size(); ++button)
        buttons[button].rect = rects[button];
    const int left = rects[BarButtonCount - 2].right;
    rect = {left, strip.top, std::max(left, rects.back().left), strip.bottom};
}

void FormulaBar::startEditing()
{
    editing = true;
    enableButtons(true);
    refreshCommandState();
}

void FormulaBar::stopEditing()
{
    editing = false;
    enableButtons(false);
    refreshCommandState();
}

void FormulaBar::abandon()
{
    editing = false;
    caretMode = true;
    enableButtons(false);
    line.setText({});
}

void FormulaBar::show(std::u16string_view text)
{
    if (line.text() != text)
        line.setText(text);
}

void FormulaBar::undo()
{
    leavePointMode();
    line.undo();
}

void FormulaBar::cut()
{
    leavePointMode();
    copy();
    line.clear();
}

void FormulaBar::copy()
{
    if (line.hasSelection())
        platform.clipboard->putText(line.selectedText());
}

void FormulaBar::paste()
{
    leavePointMode();
    line.paste(platform.clipboard->text());
}

void FormulaBar::clear()
{
    leavePointMode();
    line.clear();
}

// The other two may be pressed at any time.
void FormulaBar::enableButtons(bool enabled)
{
    for (BarButton& button : buttons) {
        if (button.id == CommandCommit || button.id == CommandCancel)
            button.enabled = enabled;
    }
}

} // namespace vorn
