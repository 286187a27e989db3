#include "core/input.h"
#include "core/workbook.h"
#include "editing/view.h"
#include "shell/application.h"
#include "shell/commandhandlers.h"
#include "shell/pagesheet.h"

#include <algorithm>

namespace vorn {

namespace {

constexpr int LeastFullScreenZoom = 25;
constexpr int MostFullScreenZoom = 200;

// What is seen of the active sheet, and the formula bar, which is the program's.
class ViewPage : public DialogModel {
public:
    ViewPage() : DialogModel(127) {}

protected:
    enum { FormulaBar = 1071, Titles = 1026, Gridlines = 1027, Zeros = 1028 };

    void opened() override
    {
        const Sheet& sheet = *workbook->currentSheet;
        showBox(FormulaBar, application->formulaBarVisible);
        showBox(Titles, sheet.showTitles);
        showBox(Gridlines, sheet.showGridlines);
        showBox(Zeros, sheet.showZeros);
    }

    void pressed(int button) override
    {
        Sheet& sheet = *workbook->currentSheet;
        application->formulaBarVisible = isOn(FormulaBar);
        sheet.showTitles = isOn(Titles);
        sheet.showGridlines = isOn(Gridlines);
        sheet.showZeros = isOn(Zeros);
        close(button);
    }
};

class GeneralPage : public DialogModel {
public:
    GeneralPage() : DialogModel(152) {}

protected:
    enum { Move = 1081, ZoomOn = 1091, Zoom = 1019 };

    void opened() override
    {
        select(Move, application->moveAfterEnter);
        showBox(ZoomOn, application->fullScreenZoomOn);
        setText(Zoom, numberText(application->fullScreenZoom, 0, KeepZeros));
    }

    void pressed(int button) override
    {
        application->moveAfterEnter = static_cast<MoveAfterEnter>(selected(Move));
        application->fullScreenZoomOn = isOn(ZoomOn);
        application->fullScreenZoom =
            std::clamp(wholeNumber(Zoom), LeastFullScreenZoom, MostFullScreenZoom);
        close(button);
    }
};

} // namespace

// Flags of the sheet are part of the document. Nobody looks whether one of them was changed, or
// whether the dialog was cancelled: the document counts as modified.
void optionsCommand()
{
    ViewPage view;
    GeneralPage general;
    PageSheet sheet(OptionsForm, {&view, &general}, application->optionsPage);
    runDialog(sheet);
    markRepaint();
    workbook->modified = true;
}

} // namespace vorn
