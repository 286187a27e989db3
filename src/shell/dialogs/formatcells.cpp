#include "editing/format.h"
#include "shell/application.h"
#include "shell/commandhandlers.h"
#include "shell/dialogs/formatpages.h"
#include "shell/pagesheet.h"

namespace vorn {

void formatCellsCommand()
{
    FormatRequest before = readFormatRequest();
    FormatRequest request = before;
    FormatPage format(before, request);
    AlignmentPage alignment(request);
    FontPage font(request);
    BorderPage border(request);
    ProtectPage protect(request);
    PageSheet sheet(FormatCellsForm, {&format, &alignment, &font, &border, &protect},
                    application->formatCellsPage);
    if (runDialog(sheet))
        applyFormatRequest(before, request);
}

} // namespace vorn
