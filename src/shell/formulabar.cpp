#include "shell/formulabar.h"

#include "platform/clipboard.h"
#include "platform/platform.h"
#include "shell/commandstate.h"
#include "shell/pointmode.h"

namespace vorn {

namespace {

constexpr int ButtonWidth = 18;
constexpr int ButtonOverlap = 1;
constexpr int QuickEntryWidth = 15;

} // namespace

void FormulaBar::move(const Rect& strip)
{
    int left = strip.left;
    for (BarButton& button : buttons) {
        if (button.id == CommandQuickEntry)
            continue;
        button.rect = {left, strip.top, left + ButtonWidth, strip.bottom};
        left += ButtonWidth - ButtonOverlap;
    }
    const int right = strip.right - QuickEntryWidth;
    buttons.back().rect = {right, strip.top, strip.right, strip.bottom};
    rect = {left + ButtonOverlap, strip.top, right, strip.bottom};
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
