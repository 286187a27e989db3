#include "core/input.h"
#include "core/workbook.h"
#include "platform/platform.h"
#include "shell/commandhandlers.h"
#include "shell/dialog.h"

namespace vorn {

namespace {

constexpr int Number = 1019;
constexpr int LeastZoom = 25;
constexpr int MostZoom = 200;

class ZoomDialog : public DialogModel {
public:
    ZoomDialog() : DialogModel(138) {}

protected:
    void opened() override
    {
        setText(Number, numberText(workbook->currentSheet->zoom, 0, KeepZeros));
    }

    void pressed(int button) override
    {
        const int zoom = wholeNumber(Number);
        if (zoom < LeastZoom || zoom > MostZoom) {
            platform.userInterface->messageBox(u"Vorn", u"The number must be between 25 and 200.",
                                               BoxButtons::Ok);
            setFocus(Number);
            return;
        }
        setZoomOfAllSheets(zoom);
        close(button);
    }
};

} // namespace

void zoomCommand()
{
    ZoomDialog dialog;
    runDialog(dialog);
}

} // namespace vorn
